#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the description of an installer package, from which wixl makes it.

    installer.py x64|x86 [VERSION] > installer.wxs

It is made in the folder of that word size's files. What registration writes comes from the manifest and the interface definition:
the same as the server writes itself. Identifiers are made of names, so that the same version gives the same package."""
import re
import sys
import uuid
import xml.etree.ElementTree as tree
from pathlib import Path
from xml.sax.saxutils import quoteattr

SOURCE = Path(__file__).resolve().parents[2]
NAMESPACE = "{urn:schemas-microsoft-com:asm.v1}"
OURS = uuid.UUID("5e0a8c52-3f1d-4c8b-9a6e-7b2d41c09f16")  # the type library's: names below it are ours
NEWLINE = "\n" + 8 * " "
DISPATCH_PROXY, DUAL_PROXY = "{00020420-0000-0000-C000-000000000046}", "{00020424-0000-0000-C000-000000000046}"
FILES = {"VlGeneralServices.dll": "Server", "VlComRes.dll": "Texts", "VlGeneralServices.manifest": "Manifest",
         "VlGeneralServices.tlb": "TypeLibrary", "vlgs.exe": "Command", "LICENSE.txt": "Licence", "README.txt": "Readme"}


def identifier(*names):
    return "{" + str(uuid.uuid5(OURS, "/".join(names))).upper() + "}"


def installer_version(version):
    """9.1002.0.23 in the three parts that Windows Installer compares, of which the first two end at 255 and the third at
    65535: minor numbers up to 12799 and revisions up to 999 keep their order."""
    major, minor, _, revision = map(int, version.split("."))
    if minor > 12799 or revision > 999:
        sys.exit(f"{version} cannot be told by three numbers of an installer package")
    return f"{major}.{minor // 50}.{minor % 50 * 1000 + revision}"


def registry(arch):
    """Keys below Software\\Classes with the values of each: (key, name or None, value)."""
    manifest = tree.parse(SOURCE / "typelib" / "VlGeneralServices.manifest").getroot()
    library = next(manifest.iter(NAMESPACE + "typelib")).attrib
    idl = (SOURCE / "typelib" / "VlGeneralServices.idl").read_text(encoding="utf-8")
    title = re.search(r'^\[uuid\([^)]*\), version\([^)]*\), helpstring\("(.*)"\)\]$', idl, re.MULTILINE)[1]
    version = library["version"]
    major = version.split(".")[0]
    for entry in manifest.iter(NAMESPACE + "comClass"):
        name, clsid, help_text = entry.attrib["progid"], entry.attrib["clsid"], entry.attrib["description"]
        for key in (name, f"{name}.{major}"):
            yield key, None, help_text
            yield key + r"\CLSID", None, clsid
        yield name + r"\CurVer", None, f"{name}.{major}"
        path = "CLSID\\" + clsid
        yield path, None, help_text
        yield path + r"\InprocServer32", None, "[#Server]"
        yield path + r"\InprocServer32", "ThreadingModel", entry.attrib["threadingModel"]
        yield path + r"\ProgID", None, name
        yield path + r"\VersionIndependentProgID", None, name
        yield path + r"\TypeLib", None, library["tlbid"]
        yield path + r"\Version", None, version
        yield path + r"\Programmable", None, ""
    interfaces = [(entry.attrib["name"], entry.attrib["iid"], DUAL_PROXY)
                  for entry in manifest.iter(NAMESPACE + "comInterfaceExternalProxyStub")]
    interfaces += [(name, "{" + iid + "}", DISPATCH_PROXY) for iid, name in
                   re.findall(r"\[uuid\(([-0-9A-F]+)\)[^\n]*\]\s*dispinterface (\w+) \{", idl)]
    for name, iid, proxy in interfaces:
        path = "Interface\\" + iid
        yield path, None, name
        yield path + r"\ProxyStubClsid32", None, proxy
        yield path + r"\TypeLib", None, library["tlbid"]
        yield path + r"\TypeLib", "Version", version
    path = f"TypeLib\\{library['tlbid']}\\{version}"
    yield path, None, title
    yield path + r"\FLAGS", None, "0"
    yield path + r"\HELPDIR", None, "[INSTALLFOLDER]"
    yield path + (r"\0\win64" if arch == "x64" else r"\0\win32"), None, "[#Server]"


def rows(arch, kind):
    """The values that programs of both word sizes see ("names"), those of the interfaces, or the others ("classes")."""
    for key, name, value in registry(arch):
        own = "interfaces" if key.startswith("Interface") else "names" if key.startswith("VlGeneral") else "classes"
        if own == kind:
            named = f" Name={quoteattr(name)}" if name else ""
            yield f'<RegistryValue Root="HKCR" Key={quoteattr(key)}{named} Type="string" Value={quoteattr(value)}/>'


def keyed(values):
    """With the mark of the one value by which the installer knows that they are there."""
    first, *others = values
    return NEWLINE.join([first.replace("/>", ' KeyPath="yes"/>'), *others])


def components(arch):
    win64 = ' Win64="yes"' if arch == "x64" else ""
    for name, file_id in FILES.items():
        # Interfaces are called from programs of the other word size, too.
        own = [*rows(arch, "classes"), *(rows(arch, "interfaces") if win64 else [])] if file_id == "Server" else []
        yield f"""<Component Id="C{file_id}" Guid="{identifier(arch, name)}"{win64}>
          <File Id="{file_id}" Name="{name}" Source="{name}" KeyPath="yes"/>
          {NEWLINE.join(own)}
        </Component>"""
    # The same components in both packages: they stay until the second of these goes.
    yield f"""<Component Id="CNames" Guid="{identifier("names of classes")}"{win64}>
          {keyed(rows(arch, "names"))}
        </Component>"""
    yield f"""<Component Id="CInterfaces" Guid="{identifier("interfaces for 32 bit")}">
          {keyed(rows(arch, "interfaces"))}
        </Component>"""


def main(arch, version=None):
    version = version or re.search(r"^project\(.* VERSION ([0-9.]+) ", (SOURCE / "CMakeLists.txt").read_text(), re.MULTILINE)[1]
    bits = {"x64": "64", "x86": "32"}[arch]
    root = {"x64": "ProgramFiles64Folder", "x86": "ProgramFilesFolder"}[arch]
    references = NEWLINE.join(f'<ComponentRef Id="C{name}"/>' for name in [*FILES.values(), "Names", "Interfaces"])
    print(f"""<?xml version="1.0" encoding="utf-8"?>
<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi">
  <Product Id="{identifier(arch, version)}" Name="VlGeneralServices ({bits} bit)" Language="1033" Codepage="1252"
           Version="{installer_version(version)}" Manufacturer="the VlGeneralServices authors"
           UpgradeCode="{identifier(arch, "every version")}">
    <Package InstallerVersion="500" Compressed="yes"
             Description="VlGeneralServices {version}" Manufacturer="the VlGeneralServices authors"/>
    <MajorUpgrade DowngradeErrorMessage="A newer version of VlGeneralServices is installed."/>
    <MediaTemplate EmbedCab="yes"/>
    <Property Id="ALLUSERS" Value="1"/>
    <Directory Id="TARGETDIR" Name="SourceDir">
      <Directory Id="{root}">
        <Directory Id="INSTALLFOLDER" Name="VlGeneralServices">
        {NEWLINE.join(components(arch))}
        </Directory>
      </Directory>
    </Directory>
    <Feature Id="Complete" Level="1" Title="VlGeneralServices">
      {references}
    </Feature>
  </Product>
</Wix>""")


if __name__ == "__main__":
    main(*sys.argv[1:])
