"""The rules of SPDX 2.3 for the fields of a document, as far as a document of ours has them."""

import hashlib
import re

IDENTIFIER = r"SPDXRef-[A-Za-z0-9.-]+"
# Of the list of SPDX the ones that are used here; others stand in the document itself.
LICENCES = {"curl", "MIT", "BSD-3-Clause", "GPL-3.0-or-later WITH GCC-exception-3.1"}
SUMS = {"SHA1": (hashlib.sha1, 40), "SHA256": (hashlib.sha256, 64)}
RELATIONS = {"DESCRIBES", "CONTAINS", "STATIC_LINK", "DYNAMIC_LINK"}


class Rules:
    """`problems` says what is wrong with the document of an unpacked archive."""

    def __init__(self, document, folder, own_name):
        self.document, self.folder, self.own_name, self.problems = document, folder, own_name, []
        self.own_licences = {e.get("licenseId") for e in document["hasExtractedLicensingInfos"]}
        self.check_document()
        for package in document["packages"]:
            self.check_package(package)
        for record in document["files"]:
            self.check_file(record)
        self.check_names_of_files()
        self.check_licences()
        self.check_relationships()

    def expect(self, holds, problem):
        if not holds:
            self.problems.append(problem)

    def expect_form(self, record, field, form):
        value = record.get(field)
        self.expect(isinstance(value, str) and re.fullmatch(form, value, re.S),
                    f"{record.get('SPDXID')}: {field} is {value!r}")

    def check_document(self):
        self.expect_form(self.document, "spdxVersion", r"SPDX-2\.3")
        self.expect_form(self.document, "dataLicense", r"CC0-1\.0")
        self.expect_form(self.document, "SPDXID", "SPDXRef-DOCUMENT")
        self.expect_form(self.document, "name", r"[^\n]+")
        self.expect_form(self.document, "documentNamespace", r"[a-z][a-z0-9+.-]*:[^#\s]+")
        created = self.document["creationInfo"]
        self.expect_form(created, "created", r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ")
        self.expect(created["creators"], "nobody made it")
        for creator in created["creators"]:
            self.expect(re.fullmatch(r"(Tool: \S+|Organization: .+|Person: .+)", creator), creator)
        records = self.document["packages"] + self.document["files"]
        self.identifiers = [r["SPDXID"] for r in records] + ["SPDXRef-DOCUMENT"]
        self.expect(len(self.identifiers) == len(set(self.identifiers)), "identifiers come twice")

    def check_licence_field(self, record, field, *values):
        for value in values:
            known = value in LICENCES | self.own_licences | {"NOASSERTION", "NONE"}
            self.expect(known, f"{record['SPDXID']}: {field} is {value!r}")

    def check_package(self, package):
        self.expect_form(package, "SPDXID", IDENTIFIER)
        self.expect_form(package, "name", r"[^\n]+")
        self.expect_form(package, "versionInfo", r"\d[^\n]*")
        self.expect_form(package, "downloadLocation", r"NOASSERTION|NONE|[a-z+]+://\S+")
        self.expect_form(package, "copyrightText", r".+")
        for field in ("licenseConcluded", "licenseDeclared"):
            self.check_licence_field(package, field, package.get(field))
        if package["filesAnalyzed"]:
            self.check_sum_of_sums(package["packageVerificationCode"])
            self.check_licence_field(package, "licenseInfoFromFiles",
                                     *package["licenseInfoFromFiles"])
        else:
            for field in ("packageVerificationCode", "licenseInfoFromFiles"):
                self.expect(field not in package, f"{package['SPDXID']} has {field}")
        for reference in package.get("externalRefs", []):
            self.expect_form(reference, "referenceCategory", "PACKAGE-MANAGER")
            self.expect_form(reference, "referenceType", "purl")
            self.expect_form(reference, "referenceLocator",
                             r"pkg:deb/[a-z]+/[a-zA-Z0-9.%-]+@[A-Za-z0-9.%~:-]+\?arch=[a-z0-9]+")

    def check_sum_of_sums(self, code):
        sums = sorted(hashlib.sha1(path.read_bytes()).hexdigest() for path in self.files())
        self.expect(code["packageVerificationCodeValue"] ==
                    hashlib.sha1("".join(sums).encode()).hexdigest(), "the verification code")
        self.expect(code["packageVerificationCodeExcludedFiles"] == ["./" + self.own_name],
                    "files without a sum")

    def files(self):
        return [path for path in self.folder.rglob("*")
                if path.is_file() and not path.is_symlink() and path.name != self.own_name]

    def check_file(self, record):
        self.expect_form(record, "SPDXID", IDENTIFIER)
        self.expect_form(record, "fileName", r"\./\S.*")
        self.expect_form(record, "copyrightText", r".+")
        self.check_licence_field(record, "licenseConcluded", record.get("licenseConcluded"))
        self.check_licence_field(record, "licenseInfoInFiles", *record["licenseInfoInFiles"])
        path = self.folder / record["fileName"]
        content = path.read_bytes() if path.is_file() else b""
        self.expect({s["algorithm"] for s in record["checksums"]} == set(SUMS),
                    f"{record['fileName']}: other sums")
        for entry in record["checksums"]:
            function, length = SUMS[entry["algorithm"]]
            self.expect(len(entry["checksumValue"]) == length and
                        entry["checksumValue"] == function(content).hexdigest(),
                        f"{record['fileName']}: {entry['algorithm']}")

    def check_names_of_files(self):
        said = sorted(record["fileName"] for record in self.document["files"])
        there = sorted("./" + p.relative_to(self.folder).as_posix() for p in self.files())
        self.expect(said == there, f"files: {sorted(set(said) ^ set(there))}")

    def check_licences(self):
        for entry in self.document["hasExtractedLicensingInfos"]:
            self.expect_form(entry, "licenseId", r"LicenseRef-[A-Za-z0-9.-]+")
            self.expect_form(entry, "name", r"[^\n]+")
            self.expect_form(entry, "extractedText", r".*\S.*")

    def check_relationships(self):
        known = set(self.identifiers)
        for relation in self.document["relationships"]:
            ends = {relation["spdxElementId"], relation["relatedSpdxElement"]}
            self.expect(ends <= known, f"a relationship to what is not there: {ends - known}")
            self.expect(relation["relationshipType"] in RELATIONS, relation["relationshipType"])
        described = [r for r in self.document["relationships"] if r["relationshipType"] == "DESCRIBES"]
        self.expect(len(described) == 1, "it describes not one package")
