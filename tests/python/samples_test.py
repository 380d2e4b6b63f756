# SPDX-License-Identifier: MIT
"""The samples in Python run, and type checkers know the module."""

import os
import pathlib
import re
import runpy
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROJECT = str(ROOT / "samples/demo/demo.VLS")


def run(*words, **environment):
    return subprocess.run(words, capture_output=True, text=True, timeout=300, cwd=ROOT, env={**os.environ, **environment})


class SamplesTest(unittest.TestCase):
    def test_samples_print_what_they_should(self):
        for words, output in (
            (("connection.py", PROJECT, "12/31/2009"), "2009-12-31 is Thursday"),
            (("worker_pool.py", PROJECT), "demo.VLS DRIVER=Microsoft Access Driver"),
            (("pywin32_script.py", PROJECT), "-2147352567 VlGeneralServices.INIFile.CreateSection -2147209996\n"
                                             "-2147221005 Invalid class string\n"),
        ):
            with self.subTest(sample=words[0]):
                done = run(sys.executable, "samples/" + words[0], *words[1:])
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertIn(output, done.stdout)

    def test_code_of_the_pages_runs(self):
        tour = (ROOT / "README.md").read_text().partition("## From Python")[2]
        script = (ROOT / "docs/pywin32.md").read_text()
        for code, output in (
            (re.search(r"```python\n(.*?)```", tour, re.DOTALL)[1],
             "Window {'Width': '1280', 'Height': '768'}\n-2147209996 VlGeneralServices.INIFile.CreateSection"),
            (re.search(r"(\S.*) # after\n", script)[1] +
             "\nprint(Dispatch('VlGeneralServices.Conversion').IncrementRevisionNumber('1.9'))", "1.0010\n"),
        ):
            with self.subTest(output), tempfile.TemporaryDirectory() as folder:
                done = run(sys.executable, "-c", code.replace("/tmp", folder))
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertIn(output, done.stdout)

    @unittest.skipUnless(os.environ.get("VLGS_TOOL"), "no command line")
    def test_commands_of_the_pages_can_be_given_as_told(self):
        tour = (ROOT / "README.md").read_text().partition("## From a shell")[2].partition("## From C++")[0]
        for text, given, output in (
            ((ROOT / "docs/moving.md").read_text(), "/mnt/projects", r"DBQ=P:\demo\demo"),
            (tour, "/tmp", '"Account": {"Password": "secret"}'),
        ):
            commands = "\n".join(re.findall(r"^```sh\n(.*?)^```$", text, re.DOTALL | re.MULTILINE))
            with self.subTest(output), tempfile.TemporaryDirectory() as folder:
                for name, hive in ("user", "HKEY_CURRENT_USER"), ("machine", "HKEY_LOCAL_MACHINE"):
                    text = f'Windows Registry Editor Version 5.00\r\n\r\n[{hive}\\Software\\Demo]\r\n"Path"="P:\\\\demo"\r\n'
                    pathlib.Path(folder, name + ".reg").write_bytes(text.encode("utf-16"))
                for place in "projects/demo", "samples/demo":
                    shutil.copytree(ROOT / "samples/demo", pathlib.Path(folder, place))
                pathlib.Path(folder, "password.txt").write_text("secret\n")
                there = folder + "/projects" if given == "/mnt/projects" else folder
                tools = os.path.dirname(os.environ["VLGS_TOOL"]) + os.pathsep + os.environ["PATH"]
                done = subprocess.run(["bash", "-euc", commands.replace(given, there)], cwd=folder, capture_output=True,
                                      text=True, timeout=60, env={"PATH": tools, "HOME": folder, "LANG": "C.UTF-8"})
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertIn(output, done.stdout)
                if given == "/tmp":
                    self.assertIn("Data=/srv/new data", pathlib.Path(folder, "settings.ini").read_text())
                else:
                    back = pathlib.Path(folder, "back.reg").read_bytes().decode("utf-16")
                    self.assertIn('[HKEY_CURRENT_USER\\Software\\Demo]\r\n"Path"="P:\\\\demo"', back)

    def test_the_stub_is_the_committed_one(self):
        stubs = runpy.run_path(str(ROOT / "scripts/python_stubs.py"))
        self.assertTrue(stubs["TARGET"].read_text() == stubs["stub"](), "run scripts/reference.sh")

    @unittest.skipUnless(shutil.which("mypy"), "mypy is not installed")
    def test_a_type_checker_accepts_the_samples_and_finds_mistakes(self):
        samples = [str(path) for path in sorted((ROOT / "samples").glob("*.py"))]
        checked = run("mypy", "--check-untyped-defs", "--cache-dir=/dev/null", *samples, MYPYPATH="python")
        self.assertEqual((checked.returncode, checked.stdout.count("error:")), (0, 0), checked.stdout)
        mistakes = 'import vlgs\nf = vlgs.Dispatch("VlGeneralServices.Files")\nf.CreateINIFil("a")\nf.Path("a", 2)\n'
        found = run("mypy", "--cache-dir=/dev/null", "-c", mistakes, MYPYPATH="python")
        self.assertEqual(found.stdout.count("error:"), 2, found.stdout)


if __name__ == "__main__":
    unittest.main()
