"""The document of SPDX 2.3 that says what is inside an archive."""

import datetime
import hashlib
import json
import re
import urllib.parse
import uuid


def identifier(*words):
    return "SPDXRef-" + "-".join(re.sub(r"[^A-Za-z0-9.]+", "-", word).strip("-") for word in words)


def licence_reference(name):
    return "LicenseRef-" + re.sub(r"[^A-Za-z0-9.]+", "-", name).strip("-")


def package_url(distribution, package, version, architecture):
    quoted = urllib.parse.quote(version, safe=".-~:")
    return {
        "referenceCategory": "PACKAGE-MANAGER",
        "referenceType": "purl",
        "referenceLocator":
            f"pkg:deb/{distribution}/{urllib.parse.quote(package)}@{quoted}?arch={architecture}",
    }


def file_record(folder, path):
    content = path.read_bytes()
    name = "./" + path.relative_to(folder).as_posix()
    return {
        "fileName": name,
        "SPDXID": identifier("File", name[2:], hashlib.sha1(name.encode()).hexdigest()[:8]),
        "checksums": [
            {"algorithm": "SHA1", "checksumValue": hashlib.sha1(content).hexdigest()},
            {"algorithm": "SHA256", "checksumValue": hashlib.sha256(content).hexdigest()},
        ],
        "licenseConcluded": "NOASSERTION",
        "licenseInfoInFiles": ["NOASSERTION"],
        "copyrightText": "NOASSERTION",
    }


def verification_code(files):
    """As SPDX computes it: over the sums of the files, in their order as text."""
    sums = sorted(record["checksums"][0]["checksumValue"] for record in files)
    return hashlib.sha1("".join(sums).encode()).hexdigest()


def foreign_package(name, version, licence, reference):
    return {
        "name": name,
        "SPDXID": identifier("Package", name, version),
        "versionInfo": version,
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": licence,
        "copyrightText": "NOASSERTION",
        "externalRefs": [reference],
    }


class Document:
    """Filled step by step; `text` is what is written."""

    def __init__(self, name, product, version, owner, terms, files, own_name):
        self.packages, self.relationships, self.licences = {}, [], {}
        self.files = {record["fileName"]: record for record in files}
        self.name, self.owner = name, owner
        own = self.own_licence(product, terms)
        code = verification_code(files)
        self.code = code
        self.product = {
            "name": product,
            "SPDXID": identifier("Package", product),
            "versionInfo": version,
            "packageFileName": name,
            "supplier": f"Organization: {owner}",
            "downloadLocation": "NOASSERTION",
            "filesAnalyzed": True,
            "packageVerificationCode": {
                "packageVerificationCodeValue": code,
                "packageVerificationCodeExcludedFiles": ["./" + own_name],
            },
            "licenseConcluded": "NOASSERTION",
            "licenseInfoFromFiles": ["NOASSERTION"],
            "licenseDeclared": own,
            "copyrightText": terms.split("\n")[0],
        }
        self.relate("SPDXRef-DOCUMENT", "DESCRIBES", self.product["SPDXID"])
        for record in files:
            self.relate(self.product["SPDXID"], "CONTAINS", record["SPDXID"])

    def own_licence(self, name, text):
        reference = licence_reference(name)
        self.licences[reference] = {
            "licenseId": reference, "name": name, "extractedText": text}
        return reference

    def relate(self, one, relation, other):
        self.relationships.append({
            "spdxElementId": one, "relationshipType": relation, "relatedSpdxElement": other})

    def add(self, file_name, relation, package):
        """A package that a file has inside, or asks the system for."""
        self.packages[package["SPDXID"]] = package
        self.relate(self.files[file_name]["SPDXID"], relation, package["SPDXID"])

    def text(self, seconds):
        created = datetime.datetime.fromtimestamp(seconds, datetime.timezone.utc)
        document = {
            "spdxVersion": "SPDX-2.3",
            "dataLicense": "CC0-1.0",
            "SPDXID": "SPDXRef-DOCUMENT",
            "name": self.name,
            # The same files, the same name: an archive that is made again says the same.
            "documentNamespace": f"urn:uuid:{uuid.uuid5(uuid.NAMESPACE_OID, self.name + self.code)}",
            "creationInfo": {
                "created": created.strftime("%Y-%m-%dT%H:%M:%SZ"),
                "creators": ["Tool: KorvixSDK-packaging", f"Organization: {self.owner}"],
            },
            "packages": [self.product] + [self.packages[k] for k in sorted(self.packages)],
            "files": list(self.files.values()),
            "hasExtractedLicensingInfos": [self.licences[k] for k in sorted(self.licences)],
            "relationships": self.relationships,
        }
        return json.dumps(document, indent=1, ensure_ascii=False) + "\n"
