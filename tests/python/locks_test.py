# SPDX-License-Identifier: MIT
"""Locks from the shell and from Python: who has one is seen by everybody else."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import vlgs

TOOL = os.environ["VLGS_TOOL"]
SAMPLE = pathlib.Path(__file__).resolve().parents[2] / "samples/guarded_edit.py"


class LocksTest(unittest.TestCase):
    def setUp(self):
        os.environ["LANGUAGE"] = "en"
        self.work = tempfile.TemporaryDirectory()
        self.addCleanup(self.work.cleanup)
        self.folder = pathlib.Path(self.work.name)
        self.path = str(self.folder / "project.VLS")

    def tool(self, *words):
        return subprocess.run([TOOL, "lock", *words], capture_output=True, text=True, timeout=60)

    def held(self):
        return json.loads(self.tool("status", "--json", str(self.folder)).stdout)

    def test_a_lock_that_is_left_behind_lasts_until_it_is_released(self):
        taken = self.tool("take", "--exclusive", "--session", "night build", "--json", self.path)
        access, file = json.loads(taken.stdout).values()
        try:
            self.assertEqual((access, file[-13:]), ("Exclusive", "exclusive.~sr"))
            (self.folder / "rwleft.~sr").write_text("[User]\n")
            self.assertEqual([(lock["state"], lock["access"], lock["session"], lock["file"].split("\\")[-1]) for lock in self.held()],
                             [("live", "Exclusive", "night build", file[-13:]), ("stale", "", "", "rwleft.~sr")])
            self.assertEqual(self.tool("status", str(self.folder)).stdout.count("\n"), 1)
            refused = self.tool("take", self.path)
            self.assertEqual(refused.returncode, 1)
            self.assertIn("session night build", refused.stderr)
            self.assertEqual(self.tool("take", "--fallback", self.path, "--", "sh", "-c",
                                       "echo $VLGS_LOCK_ACCESS; exit 3").returncode, 3)
        finally:
            released = self.tool("release", file)
        self.assertEqual(released.returncode, 0, released.stderr)
        self.assertEqual(os.listdir(self.folder), [])
        self.assertIn("error 53", self.tool("release", file).stderr)

    def test_a_lock_lasts_as_long_as_a_command(self):
        guid = "{11111111-5B0B-4B52-9E0B-2C1F0C5A7EAF}"
        inner = f'echo $VLGS_LOCK_ACCESS; "{TOOL}" lock take --document {guid} "{self.path}" -- true; exit 7'
        done = self.tool("take", "--document", guid.lower(), self.path, "--", "sh", "-c", inner)
        self.assertEqual((done.returncode, done.stdout), (7, "ReadWrite\n"))
        self.assertIn("error -2147209948", done.stderr)
        self.assertEqual(os.listdir(self.folder), [])
        self.assertEqual(self.tool("take", self.path, "--", "no such command").returncode, 127)

    def test_misuse_is_told(self):
        for words in ([], ["keep"], ["take"], ["take", self.path, "other"], ["take", "--document"], ["status"],
                      ["take", "--exclusive", "--read-only", self.path], ["take", self.path, "--"], ["release"],
                      ["take", "--json", self.path, "--", "true"],
                      ["take", "--shared", self.path], ["take", str(self.folder)]):
            self.assertEqual(self.tool(*words).returncode, 2, words)
        for words in (["take"], ["status"], ["status", "--json"], ["release"]):
            self.assertEqual(self.tool(*words, str(self.folder / "none/project.VLS")).returncode, 1, words)

    def test_the_sample_edits_alone_and_reads_otherwise(self):
        settings = str(self.folder / "settings.ini")

        def edit(value):
            return subprocess.run([sys.executable, SAMPLE, self.path, settings, "Window", "Width", value],
                                  capture_output=True, text=True, timeout=60)

        self.assertEqual(edit("1024").stdout, "Window.Width = 1024\n")
        tools = vlgs.Dispatch("VlGeneralServices.CorvaTools")
        lock = tools.InitiateLock(self.path, vlgs.constants.eUserLock_Exclusive)
        refused = edit("1")
        self.assertEqual(refused.stdout, "Window.Width = 1024\n", refused.stderr)
        self.assertIn(lock.KeyValue("User", "SessionID"), refused.stderr)


if __name__ == "__main__":
    unittest.main()
