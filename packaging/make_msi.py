#!/usr/bin/env python3
"""make_msi.py FOLDER x64|x86 VERSION DATE MSI: the Windows Installer package of what `cmake --install` put into FOLDER.

The module and its language files go to the system folder, where the module's search for its language looks; everything else but
the simulator goes to Program Files. The registration stands in the package's own registry table, with the values that the module
would write: an installer that called the module for it could not uninstall when that call fails. The same FOLDER gives the same
bytes.
"""
import hashlib
import os
import re
import subprocess
import sys
import tempfile
import uuid
import xml.etree.ElementTree as xml
from datetime import datetime, timezone
from pathlib import Path

# These never change: by them a later version finds what it replaces.
UPGRADE_CODES = {"x64": "8D5A2C4E-6B1F-4E0A-9C37-52F4D1A86B90", "x86": "C1B7E630-2F94-4D58-8A6B-0E93D75FA412"}
CLASS = r"CLSID\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}"
NAME = "Korvane WLAN IHV Extension UI"
MODULE = "korihvui.dll"


def run(*command):
    """A tool that has something to say has not done what was wanted: it leaves out what it does not know."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode or done.stdout.strip():
        sys.exit(f"make_msi: {command[0]} says: {done.stdout}")


class Package:
    def __init__(self, folder, architecture, version):
        self.folder, self.version, self.is_x64 = Path(folder), version, architecture == "x64"
        self.code = uuid.UUID(UPGRADE_CODES[architecture])
        self.files = {}  # the identifier of each installed file, and the file
        self.components = []
        self.root = xml.Element("Wix", xmlns="http://schemas.microsoft.com/wix/2006/wi")

    def guid(self, name):
        return str(uuid.uuid5(self.code, name)).upper()

    def identify(self, kind, path):
        """An identifier as the installer takes it: 72 characters at most, of few kinds."""
        place = str(path.relative_to(self.folder))
        return f"{kind}.{hashlib.sha256(place.encode()).hexdigest()[:16]}." + re.sub(r"[^A-Za-z0-9.]", "_", path.name)[:40]

    def name_of(self, path):
        """The file's name, with one for the eyes of old programs before it where it is longer than 8 and 3 characters."""
        if re.fullmatch(r"[A-Za-z0-9_-]{1,8}(\.[A-Za-z0-9_-]{1,3})?", path.name):
            return path.name
        return hashlib.sha256(path.name.encode()).hexdigest()[:8].upper() + path.suffix[:4].upper() + "|" + path.name

    def component(self, parent, identifier):
        made = xml.SubElement(parent, "Component", Id=identifier, Guid=self.guid(identifier))
        if self.is_x64:
            made.set("Win64", "yes")
        self.components.append(identifier)
        return made

    def add_file(self, parent, path):
        identifier = self.identify("file", path)
        component = self.component(parent, "of" + identifier)
        xml.SubElement(component, "File", Id=identifier, Name=self.name_of(path), Source=str(path), KeyPath="yes")
        self.files[identifier] = path
        return component

    def folder_below(self, parent, path):
        return xml.SubElement(parent, "Directory", Id=self.identify("folder", path), Name=self.name_of(path))

    def add_folder(self, parent, path):
        """The folder's files and those of the folders in it."""
        for entry in sorted(path.iterdir()):
            if entry.is_dir():
                self.add_folder(self.folder_below(parent, entry), entry)
            else:
                self.add_file(parent, entry)

    def describe(self):
        product = xml.SubElement(self.root, "Product", Id=self.guid("version " + self.version), Name=NAME, Language="1033",
                                 Version=self.version, Manufacturer="Korvane", UpgradeCode=str(self.code).upper())
        xml.SubElement(product, "Package", InstallerVersion="500", Compressed="yes", InstallScope="perMachine",
                       Manufacturer="Korvane", Languages="1033")
        xml.SubElement(product, "Property", Id="ARPNOMODIFY", Value="1")  # there is nothing to choose
        xml.SubElement(product, "MajorUpgrade", DowngradeErrorMessage="A newer version is installed already.")
        if not self.is_x64:
            condition = xml.SubElement(product, "Condition", Message="This Windows has 64 bits: install the x64 package.")
            condition.text = "NOT VersionNT64"
        xml.SubElement(product, "Media", Id="1", Cabinet="korihvui.cab", EmbedCab="yes")
        target = xml.SubElement(product, "Directory", Id="TARGETDIR", Name="SourceDir")
        system = xml.SubElement(target, "Directory", Id="System64Folder" if self.is_x64 else "SystemFolder")
        programs = xml.SubElement(target, "Directory", Id="ProgramFiles64Folder" if self.is_x64 else "ProgramFilesFolder")
        maker = xml.SubElement(programs, "Directory", Id="Maker", Name="Korvane")
        # What the package has made it takes away, unless something else lies in it then.
        component = self.component(maker, "ofMaker")
        xml.SubElement(component, "CreateFolder")
        xml.SubElement(component, "RemoveFolder", Id="EmptyMaker", On="uninstall")
        own = xml.SubElement(maker, "Directory", Id="INSTALLDIR", Name="korihvui")
        module = self.add_file(system, self.folder / MODULE)
        for key, name, value in [(CLASS, None, NAME), (CLASS + r"\InprocServer32", None, f"[#{module.get('Id')[2:]}]"),
                                 (CLASS + r"\InprocServer32", "ThreadingModel", "Both")]:
            entry = xml.SubElement(module, "RegistryValue", Root="HKCR", Key=key, Type="string", Value=value)
            if name:
                entry.set("Name", name)
        for entry in sorted(self.folder.iterdir()):
            if entry.name in (MODULE, "simulated"):
                continue
            if (entry / f"{MODULE}.mui").exists():
                self.add_folder(self.folder_below(system, entry), entry)
            elif entry.is_dir():
                self.add_folder(self.folder_below(own, entry), entry)
            else:
                self.add_file(own, entry)
        feature = xml.SubElement(product, "Feature", Id="Complete", Title=NAME, Level="1")
        for identifier in self.components:
            xml.SubElement(feature, "ComponentRef", Id=identifier)

    def write(self, msi, released):
        moment = datetime.fromisoformat(released).replace(tzinfo=timezone.utc).timestamp()
        for path in self.files.values():
            os.utime(path, (moment, moment))  # it stands in the cabinet
        # Another content is another package to the installer.
        content = hashlib.sha256(xml.tostring(self.root))
        for path in self.files.values():
            content.update(path.read_bytes())
        with tempfile.TemporaryDirectory() as scratch:
            source, summary = Path(scratch) / "korihvui.wxs", Path(scratch) / "_SummaryInformation.idt"
            xml.ElementTree(self.root).write(source, encoding="utf-8", xml_declaration=True)
            run("wixl", "-a", "x64" if self.is_x64 else "x86", "-o", msi, str(source))
            # The summary that wixl writes has the present time and a number made by chance.
            own = {"9": f"{{{self.guid(content.hexdigest())}}}", "12": released.replace("-", "/") + " 00:00:00"}
            own["13"] = own["12"]
            rows = [row.split("\t") for row in table_of(msi, "_SummaryInformation").splitlines()]
            summary.write_text("".join(f"{row[0]}\t{own.get(row[0], row[-1])}\r\n" for row in rows))
            run("msibuild", msi, "-i", str(summary))
        # Within the transaction: an upgrade that fails gives the older version back.
        queries = ["UPDATE `InstallExecuteSequence` SET `Sequence` = 1501 WHERE `Action` = 'RemoveExistingProducts'"]
        for identifier, path in self.files.items():
            if path.suffix in (".dll", ".exe", ".mui"):
                queries += [f"UPDATE `File` SET `Version` = '{self.version}.0', `Language` = '{language_of(path)}' "
                            f"WHERE `File` = '{identifier}'",
                            f"DELETE FROM `MsiFileHash` WHERE `File_` = '{identifier}'"]  # for files without a version
        run("msibuild", msi, "-q", *queries)


def table_of(msi, name):
    return subprocess.run(["msiinfo", "export", msi, name], stdout=subprocess.PIPE, check=True).stdout.decode()


def language_of(path):
    """The language of the file's resources, as their table has it."""
    table = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", str(path)], stdout=subprocess.PIPE, text=True, check=True).stdout
    languages = {int(number, 16) for number in re.findall(r"Language Table.*?\n.*?Entry: ID: (0x[0-9a-f]+)", table)}
    return max(languages - {0}, default=1033)


if __name__ == "__main__":
    arguments = sys.argv[1:]
    if not re.fullmatch(r"\d+\.\d+\.\d+", arguments[2]):
        sys.exit(f"make_msi: {arguments[2]}: of a version the installer compares three numbers")
    package = Package(*arguments[:3])
    package.describe()
    package.write(arguments[4], arguments[3])
