#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Changes a key of a project's settings file under a lock of the project; where somebody else has the project, shows
who, and reads only.

    PYTHONPATH=build/demo/python samples/guarded_edit.py samples/demo/demo.VLS settings.ini Window Width 1024
"""

import contextlib
import sys

import vlgs

LOCKED = {vlgs.constants.eMsg_CannotGetExclusiveLockX, vlgs.constants.eMsg_CannotGetReadWriteLockX}


@contextlib.contextmanager
def project_lock(path, kind=vlgs.constants.eUserLock_ReadWrite):
    """Holds a lock of a project for the length of a `with`; gives its kind, which is read-only when it is somebody
    else's."""
    tools = vlgs.Dispatch("VlGeneralServices.CorvaTools")
    granted = vlgs.ByRef(kind)
    try:
        lock = tools.InitiateLock2(path, kind, vlgs.Missing, granted)
    except vlgs.Error as error:
        if error.code not in LOCKED:
            raise
        print(error.description, file=sys.stderr)
        fallback = kind | vlgs.constants.eUserLock_FallbackToReadOnly
        lock = tools.InitiateLock2(path, fallback, vlgs.Missing, granted)
    try:
        yield granted.value
    finally:
        del lock  # the last reference ends the lock


def main(project, path, section, key, value):
    files = vlgs.Dispatch("VlGeneralServices.Files")
    with project_lock(project) as kind:
        try:
            document = files.RetrieveINIFile(path)
        except vlgs.Error:
            document = files.CreateINIFile(path)
        if kind != vlgs.constants.eUserLock_ReadOnly:
            document.CreateKey(section, key, value)
            document.Save()
        print(f"{section}.{key} = {document.KeyValue(section, key)}")


if __name__ == "__main__":
    if len(sys.argv) != 6:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except vlgs.Error as error:
        sys.exit(f"error {error.number} {error.source}: {error.description}")
