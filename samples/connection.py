#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Turns a project file into its connection string and converts a date, through late-bound dispatch.

    PYTHONPATH=build/demo/python samples/connection.py samples/demo/demo.VLS "Saturday, March 07, 2009"
"""

import sys

import vlgs


def main(path, date):
    files = vlgs.Dispatch("VlGeneralServices.Files")
    for pair in files.BuildConnectionStringFromPath(path).split(";")[:-1]:
        print(pair)

    conversion = vlgs.Dispatch("VlGeneralServices.Conversion")
    day = vlgs.ByRef(vlgs.Empty)
    print(conversion.CUniversalDate(date, dtTypedReturn=day), "is", day.value.strftime("%A"))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except vlgs.Error as error:
        sys.exit(f"error {error.number} {error.source}: {error.description}")
