# SPDX-License-Identifier: MIT
"""Makes the wheel of the Python module with CMake, a C++ compiler and nothing else: `pip install .` in a clone needs no
network. The module, the shared library with its message texts, and the licences are inside.

Settings for `pip wheel --config-settings NAME=VALUE`: `tree`, a folder that is built already (else build/wheel is
configured and built); `platform`, what the wheel is for (else what this interpreter runs on). SOURCE_DATE_EPOCH is the
time of its files."""
import base64
import hashlib
import os
import re
import shutil
import subprocess
import sys
import sysconfig
import tempfile
import time
import zipfile
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2]
LIBRARY = "libVlGeneralServices.so.9"


class UnsupportedOperation(Exception):
    """What a build front end expects of a backend that makes no source archives."""


def version():
    return re.search(r"^project\(.* VERSION ([0-9.]+) ", (SOURCE / "CMakeLists.txt").read_text(), re.MULTILINE)[1]


def run(*command):
    subprocess.run([str(word) for word in command], check=True)


def build():
    """The build tree, up to date."""
    if not shutil.which("cmake"):
        sys.exit("cmake, a C++20 compiler and make or ninja are needed: apt-get install cmake g++ ninja-build")
    tree = SOURCE / "build" / "wheel"
    generator = ["-G", "Ninja"] if shutil.which("ninja") else []
    run("cmake", "-S", SOURCE, "-B", tree, *generator, "-DCMAKE_BUILD_TYPE=Release", "-DBUILD_SHARED_LIBS=ON",
        f"-DPython3_EXECUTABLE={sys.executable}")
    run("cmake", "--build", tree, "--parallel", os.cpu_count() or 1)
    return tree


def content(tree):
    """The files of the module by their names in the wheel."""
    with tempfile.TemporaryDirectory() as folder:
        for component in ("Library", "Python"):
            run("cmake", "--install", tree, "--prefix", folder, "--component", component, "--strip")
        module = next(Path(folder).rglob("vlgs/__init__.py")).parent
        library = next(path for path in Path(folder).rglob(LIBRARY))
        files = {f"vlgs/{LIBRARY}": library.read_bytes()}
        files.update((f"vlgs/{path.relative_to(module)}", path.read_bytes())
                     for path in module.rglob("*") if path.is_file() and "__pycache__" not in path.parts)
    return files


def metadata():
    readme = (SOURCE / "README.md").read_text(encoding="utf-8")
    return (f"Metadata-Version: 2.1\nName: vlgs\nVersion: {version()}\n"
            "Summary: General services for requirements management: INI documents, connection strings, "
            "locale-aware values\nLicense: MIT\nRequires-Python: >=3.9\nDescription-Content-Type: text/markdown\n"
            f"\n{readme}").encode()


def write_wheel(path, files, information):
    """A wheel is a zip archive with a record of its files' digests."""
    record = "".join(
        f"{name},sha256={base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b'=').decode()},{len(data)}\n"
        for name, data in sorted(files.items())) + f"{information}/RECORD,,\n"
    seconds = max(int(os.environ.get("SOURCE_DATE_EPOCH", 0)), 315532800)  # archives know no time before 1980
    stamp = time.gmtime(seconds)[:6]
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for name, data in [*sorted(files.items()), (f"{information}/RECORD", record.encode())]:
            entry = zipfile.ZipInfo(name, stamp)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o100644 << 16
            archive.writestr(entry, data)


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    settings = config_settings or {}
    tree = Path(settings["tree"]) if "tree" in settings else build()
    platform = settings.get("platform", re.sub(r"[-.]", "_", sysconfig.get_platform()))
    files = content(tree)
    # For every interpreter: one that cannot load the compiled extension inside goes through ctypes.
    tag = f"py3-none-{platform}"
    information = f"vlgs-{version()}.dist-info"
    files[f"{information}/METADATA"] = metadata()
    files[f"{information}/WHEEL"] = (
        f"Wheel-Version: 1.0\nGenerator: VlGeneralServices\nRoot-Is-Purelib: false\nTag: {tag}\n").encode()
    for licence in (SOURCE / "LICENSE", SOURCE / "docs" / "licences" / "unicode.txt"):
        files[f"{information}/licenses/{licence.name}"] = licence.read_bytes()
    name = f"vlgs-{version()}-{tag}.whl"
    write_wheel(Path(wheel_directory) / name, files, information)
    return name


def build_sdist(sdist_directory, config_settings=None):
    raise UnsupportedOperation("scripts/package.sh makes the archive of the sources")
