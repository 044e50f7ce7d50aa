"""What code of others is inside the programs and libraries of an archive, as the linker and the
compiler say, and where this machine keeps the terms of it."""

import dataclasses
import os
import re
import subprocess
from pathlib import Path


class Unknown(Exception):
    """Something that nobody could put a name or terms to: no archive is made."""


@dataclasses.dataclass(frozen=True)
class Kind:
    """Code that comes under one name: the packages that bring it, or a file of theirs."""

    name: str
    licence: str  # an expression of SPDX's, or empty where only the text itself will do
    phrase: str  # stands in the text of the terms
    packages: str
    files: str = ".*"


# The first that fits. Packages are the distribution's; libcurl for Windows has none.
KINDS = [
    Kind("libcurl", "curl", "COPYRIGHT AND PERMISSION NOTICE", r"curl"),
    Kind("GCC runtime libraries (libstdc++, libgcc)", "GPL-3.0-or-later WITH GCC-exception-3.1",
         "GCC RUNTIME LIBRARY EXCEPTION", r"lib(gcc|stdc\+\+)-\d+-dev|(gcc|g\+\+)-.*"),
    Kind("winpthreads", "", "winpthreads", r"mingw-w64-.*", r"lib(win)?pthread\.a|pthread.*\.h"),
    Kind("MinGW-w64 runtime", "", "mingw-w64-crt", r"mingw-w64-.*"),
    Kind("GNU C library (start of a library or program)", "", "GNU C Library", r"libc6-dev",
         r".*\.[ao]"),
    Kind("nlohmann/json", "MIT", "Expat", r"nlohmann-json3-dev"),
    Kind("CLI11", "BSD-3-Clause", "BSD-3-clause", r"libcli11-dev"),
]
# Their headers declare and define constants; what they declare stays in libraries of the system.
DECLARATIONS_ONLY = {"libc6-dev", "linux-libc-dev", "libcurl4-openssl-dev", "libssl-dev", "uuid-dev"}


@dataclasses.dataclass(frozen=True)
class Component:
    kind: Kind
    package: str
    version: str
    terms: Path


def order(component):
    """The same in every run."""
    return component.kind.name, component.package, component.version


def output(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True,
                          env={**os.environ, "LC_ALL": "C.UTF-8"}).stdout


def linked_files(link_map):
    """(file, member or None) of everything that has bytes in what the linker made."""
    section = re.compile(r"^(?: \S+)?\s+0x([0-9a-f]+)\s+0x([0-9a-f]+) (\S.*?)(?:\(([^()]+)\))?$")
    found = set()
    if not link_map.is_file():
        raise Unknown(f"the linker left no {link_map}")
    for line in link_map.read_text(errors="replace").splitlines():
        match = section.match(line)
        if match and int(match[1], 16) and int(match[2], 16):
            found.add((match[3], match[4]))
    return {(name, member) for name, member in found if re.search(r"\.(o|obj|a|res)$", name)}


def compiled_from(build, ninja):
    """Each object of the build with the files that its compiler read."""
    objects, files = {}, None
    for line in output(ninja, "-C", str(build), "-t", "deps").splitlines():
        if line.startswith("    "):
            files.add(line.strip())
        elif ": #deps" in line:
            files = objects.setdefault(line.split(": #deps")[0], set())
    return objects


def owners_of(paths):
    """The package of the distribution that brought each file."""
    # Where /lib is a link to /usr/lib, a package may know its file by either name.
    names = {str(path): path for path in paths}
    names.update({str(path)[4:]: path for path in paths if str(path).startswith("/usr/lib")})
    answer = subprocess.run(["dpkg", "-S", *names], stdout=subprocess.PIPE, text=True,
                            stderr=subprocess.DEVNULL).stdout if names else ""
    owners = {}
    for line in answer.splitlines():
        package, _, name = line.partition(": ")
        if name in names and not package.startswith("diversion"):
            owners[names[name]] = package.split(",")[0].split(":")[0]
    return owners


def installed_version(package):
    return output("dpkg-query", "-W", "-f=${Version}", package).split("\n")[0]


class Machine:
    """The build and the machine that it was made on."""

    def __init__(self, build, sources, ninja, terms):
        self.build, self.own = build, [build.resolve(), sources.resolve()]
        self.terms = terms
        self.objects = compiled_from(build, ninja)

    def is_own(self, path):
        return any(path.is_relative_to(folder) for folder in self.own)

    def headers_of(self, name, member):
        """What an object of the build was compiled from; of a static library's, that of the member."""
        if member is None:
            return self.objects.get(name, set())
        folder, _, file = name.rpartition("/")
        target = re.sub(r"^lib(.*)\.a$", r"\1", file)
        start = f"{folder}/CMakeFiles/{target}.dir/"
        found = [files for object_name, files in self.objects.items()
                 if object_name.startswith(start) and object_name.endswith("/" + member)]
        found += [self.objects[start + member]] if start + member in self.objects else []
        if not found:
            raise Unknown(f"nothing is known of {member} in {name}")
        return set().union(*found)

    def files_in(self, link_map):
        """Every file of others from which something may have come into the program."""
        files = set()
        for name, member in linked_files(link_map):
            path = (self.build / name).resolve()
            if self.is_own(path):
                headers = {(self.build / h).resolve() for h in self.headers_of(name, member)}
                files |= {header for header in headers if not self.is_own(header)}
            else:
                files.add(path)
        if not files:
            raise Unknown(f"{link_map} names nothing of others, not even the compiler's runtime")
        return files

    def components_in(self, link_map):
        files = self.files_in(link_map)
        owners = owners_of(files)
        found = {self.component_of(file, owners.get(file)) for file in files} - {None}
        # Packages that come from one source may each have a copy of its terms.
        return set({(c.kind, c.version, c.terms.read_bytes()): c
                    for c in sorted(found, key=lambda c: c.package)}.values())

    def component_of(self, file, package):
        if package is None:
            return built_libcurl(file)
        kind = kind_of(file, package)
        if kind is None and package in DECLARATIONS_ONLY:
            return None
        if kind is None:
            raise Unknown(f"{file} of the package {package} is in the archive, and nobody has said "
                          "under which terms")
        # Packages of one source share a folder there.
        terms = (self.terms / package / "copyright").resolve()
        return checked(Component(kind, terms.parent.name, installed_version(package), terms))


def kind_of(file, package):
    for kind in KINDS:
        if re.fullmatch(kind.packages, package) and re.fullmatch(kind.files, file.name):
            return kind
    return None


def built_libcurl(file):
    """libcurl for Windows, which scripts/lib/windows-curl built from the distribution's sources."""
    for folder in file.parents:
        if (folder / "lib/libcurl.a").is_file() and (folder / "VERSION").is_file():
            version = (folder / "VERSION").read_text().strip()
            return checked(Component(KINDS[0], "curl", version, folder / "COPYING"))
    raise Unknown(f"no package of this machine brought {file}")


def checked(component):
    if not component.terms.is_file():
        raise Unknown(f"{component.kind.name}: its terms are not in {component.terms}")
    if component.kind.phrase not in component.terms.read_text(errors="replace"):
        raise Unknown(f"{component.terms} does not say \"{component.kind.phrase}\"")
    return component


def needed_packages(program):
    """(package, version) of the libraries of the system that a Linux program asks for."""
    loaded = dict(re.findall(r"^\s*(\S+) => (/\S+)", output("ldd", str(program)), re.M))
    needed = re.findall(r"\(NEEDED\).*\[(.*)\]", output("readelf", "-d", str(program)))
    paths = {Path(loaded[name]) for name in needed if name in loaded}
    if len(paths) != len(needed):
        raise Unknown(f"{program} needs {needed}, and this machine has {sorted(loaded)}")
    owners = owners_of(paths | {path.resolve() for path in paths})
    packages = {owners[p] if p in owners else owners[p.resolve()] for p in paths}
    return {(package, installed_version(package)) for package in packages}
