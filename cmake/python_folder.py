# SPDX-License-Identifier: MIT
"""Prints the folder for Python modules below an installation prefix, relative to it: `python_folder.py /usr/local`.

That is the folder there that this interpreter looks into (the one for all its versions where it has one), or else the one
that an interpreter of the same version with that prefix would."""
import os.path
import site
import sys

prefix = os.path.abspath(sys.argv[1])
own = [path for path in site.getsitepackages() if os.path.commonpath([prefix, path]) == prefix]
usual = os.path.join(prefix, "lib", f"python{sys.version_info[0]}.{sys.version_info[1]}", "site-packages")
print(os.path.relpath(min(own, key=len, default=usual), prefix))
