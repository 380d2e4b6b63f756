#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A script written for pywin32; only the line that imports differs there:

    from win32com.client import Dispatch, constants, gencache; from pythoncom import com_error

    PYTHONPATH=build/demo/python samples/pywin32_script.py samples/demo/demo.VLS
"""

import sys

from vlgs.client import Dispatch, com_error, constants, gencache

files = Dispatch("VlGeneralServices.Files")
document = files.RetrieveVLSFile(sys.argv[1])
print(document.FileType == constants.eINI_VLS, document.Count, len(document.Sections))
for section in document.Sections:
    print(section.Name, [key.Name for key in section.Value])
print(document.KeyValue("ODBC", "Driver"), files.ExtractPathDirLevels("C:\\a\\b.txt"))

# Generated classes return what members write to their by-reference parameters.
typed = gencache.EnsureDispatch("VlGeneralServices.Files")
print(typed.ExtractPathVolume("\\\\server\\share\\a\\b.txt", bSkipPathValidation=True))

try:
    document.CreateSection("")
except com_error as error:
    print(error.hresult, error.excepinfo[1], error.excepinfo[5])
try:
    Dispatch("VlGeneralServices.Nothing")
except com_error as error:
    print(error.hresult, error.strerror)
