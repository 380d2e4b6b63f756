#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Reads many settings files on a pool of threads. Objects stay on the thread that made them, so each worker has
its own; between threads go paths and plain values.

    PYTHONPATH=build/demo/python samples/worker_pool.py samples/demo/demo.VLS samples/demo/server.VLL
"""

import concurrent.futures
import sys
import threading

import vlgs

worker = threading.local()


def prepare():
    worker.files = vlgs.Dispatch("VlGeneralServices.Files")


def connection(path):
    return path, worker.files.BuildConnectionStringFromPath(path).split(";")[0]


def main(paths):
    with concurrent.futures.ThreadPoolExecutor(4, initializer=prepare) as pool:
        for path, driver in pool.map(connection, paths):
            print(path, driver)


if __name__ == "__main__":
    main(sys.argv[1:])
