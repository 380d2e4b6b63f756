# SPDX-License-Identifier: MIT
"""Where the shared library is."""

import os

# With the number of the binary interface: the name without it belongs to the development files.
FILE_NAME = "libVlGeneralServices.so.9"


def _library_folders(prefix):
    yield os.path.join(prefix, "lib")
    yield os.path.join(prefix, "lib64")
    try:
        names = sorted(os.listdir(os.path.join(prefix, "lib")))
    except OSError:
        return
    for name in names:
        if "-linux-" in name:
            yield os.path.join(prefix, "lib", name)


def candidates():
    """The files to try, best first."""
    chosen = os.environ.get("VLGS_LIBRARY")
    if chosen:
        return [chosen]
    # A wheel has it in the module's own folder.
    module = os.path.dirname(os.path.abspath(__file__))
    found = [path for path in [os.path.join(module, FILE_NAME)] if os.path.exists(path)]
    # The build tree and the installed tree both hold "python" beside (or some levels below the parent of)
    # "lib".
    folder = os.path.dirname(module)
    for _ in range(4):
        folder = os.path.dirname(folder)
        for place in _library_folders(folder):
            path = os.path.join(place, FILE_NAME)
            if os.path.exists(path):
                found.append(path)
    return found + [FILE_NAME]


def load(open_library):
    """What `open_library` makes of the first file that it can open."""
    failure = None
    for path in candidates():
        try:
            return open_library(path)
        except OSError as error:
            failure = failure or error
    raise ImportError(
        f"{FILE_NAME} was not found or cannot be loaded ({failure}); VLGS_LIBRARY can name the file"
    )
