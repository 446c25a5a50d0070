#!/usr/bin/env python3
"""bill_of_materials.py VERSION DATE SYSTEM PROCESSOR BILL NOTICES: what of others is inside the built files.

Writes an SPDX 2.3 document with the versions of the packages that the build takes it from, and the notices of those packages.
"""
import json
import subprocess
import sys
import uuid
from pathlib import Path

PROGRAM = ["korihost"]
EVERYTHING = ["korihvui.dll", "korihost", "wlanapi.dll"]
# What it is, its licence, the package with its files ({cpu}: as the compiler's packages spell it), and what contains it.
WINDOWS = [
    ("GCC run-time library (libstdc++, libgcc)", "GPL-3.0-or-later WITH GCC-exception-3.1", "g++-mingw-w64-{cpu}-posix", EVERYTHING),
    ("winpthreads", "MIT AND BSD-3-Clause", "mingw-w64-{cpu}-dev", EVERYTHING),
    ("mingw-w64 run-time", "ZPL-2.1", "mingw-w64-{cpu}-dev", EVERYTHING),
]
HEADERS = [
    ("CLI11", "BSD-3-Clause", "libcli11-dev", PROGRAM),
    ("JSON for Modern C++", "MIT", "nlohmann-json3-dev", ["korihost", "wlanapi.dll"]),
    ("dtl", "BSD-3-Clause", "libdtl-dev", PROGRAM),
]
NATIVE = [("UTF8-CPP", "BSL-1.0", "libutfcpp-dev", ["libplatform.so"])]


def version_of(package):
    found = subprocess.run(["dpkg-query", "-W", "-f=${Version}", package], capture_output=True, text=True, check=True)
    return found.stdout


def main(version, date, system, processor, bill, notices):
    windows = system == "Windows"
    cpu = "x86-64" if processor == "AMD64" else "i686"
    parts = (WINDOWS if windows else NATIVE) + HEADERS
    product = {"name": "korihvui", "SPDXID": "SPDXRef-korihvui", "versionInfo": version, "supplier": "Organization: Korvane",
               "downloadLocation": "NOASSERTION", "filesAnalyzed": False, "licenseConcluded": "NONE",
               "licenseDeclared": "NONE", "copyrightText": f"Copyright (C) {date[:4]} Korvane"}
    packages, relations, told = [product], [("SPDXRef-DOCUMENT", "DESCRIBES", product["SPDXID"])], {}
    for number, (name, licence, package, files) in enumerate(parts, 1):
        package = package.format(cpu=cpu)
        identifier = f"SPDXRef-part-{number}"
        packages.append({"name": name, "SPDXID": identifier, "versionInfo": version_of(package),
                         "downloadLocation": "NOASSERTION", "filesAnalyzed": False, "licenseConcluded": licence,
                         "licenseDeclared": licence, "copyrightText": "NOASSERTION",
                         "sourceInfo": f"Debian package {package}", "comment": "Contained in " + ", ".join(files)})
        relations.append((product["SPDXID"], "CONTAINS", identifier))
        told.setdefault(package, []).append(name)
    document = {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT", "name": f"korihvui-{version}",
        "creationInfo": {"created": f"{date}T00:00:00Z", "creators": ["Organization: Korvane"]}, "packages": packages,
        "relationships": [dict(zip(("spdxElementId", "relationshipType", "relatedSpdxElement"), row)) for row in relations],
    }
    # Another content is another document.
    content = json.dumps(document, sort_keys=True) + system + processor
    document["documentNamespace"] = f"urn:uuid:{uuid.uuid5(uuid.NAMESPACE_OID, content)}"
    Path(bill).write_text(json.dumps(document, indent=2) + "\n")
    with open(notices, "w", encoding="utf-8") as out:
        for package, names in told.items():
            text = Path(f"/usr/share/doc/{package}/copyright").read_text(encoding="utf-8")
            out.write(f"{'=' * 100}\n{', '.join(names)}\n{'=' * 100}\n\n{text}\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
