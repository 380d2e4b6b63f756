"""The command line: what it prints and how it ends."""

import json
import os
import pathlib
import re
import shlex
import subprocess
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]


def vlgs(*words, **variables):
    done = subprocess.run([os.environ["VLGS_TOOL"], *words], capture_output=True, timeout=60,
                          env=os.environ | variables)
    return done.returncode, done.stdout.decode(), done.stderr.decode()


class CommandLineTest(unittest.TestCase):
    def test_calls(self):
        for words, output in (
            (("Restricted.ClassName",), "VlGeneralServices.Restricted\n"),
            (("vlgeneralservices.restricted.CLASSID",), "162\n"),
            (("GUID.IsEqualGUID", "{00000000-0000-0000-0000-000000000001}",
              "sGUID2={00000000-0000-0000-0000-000000000001}"), "True\n"),
            (("Collection.Add", "--", "a=b"), "0\n"),
        ):
            with self.subTest(words=words):
                self.assertEqual(vlgs("call", *words), (0, output, ""))

    def test_json(self):
        for words, type_, value in ((("Restricted.ClassName",), 8, "VlGeneralServices.Restricted"),
                                    (("Restricted.ClassID",), 3, 162), (("Collection.Count",), 3, 0)):
            with self.subTest(words=words):
                status, output, _ = vlgs("call", *words, "--json")
                self.assertEqual(status, 0)
                result = json.loads(output)
                self.assertEqual((result["type"], result["value"]), (type_, value))

    def test_errors(self):
        for words, report in (
            (("Nothing.X",), "error 429: ActiveX component can't create object: Nothing\n"),
            (("Property.Value",), "error 429: ActiveX component can't create object: VlGeneralServices.Property\n"),
            (("Restricted.ClasName",), "error 438: Object doesn't support this property or method: "
                                       "Restricted.ClasName; did you mean ClassName?\n"),
            (("Restricted.ClassName=x",), "error 438: Object doesn't support this property or method: "
                                          "Restricted.ClassName is read-only\n"),
            (("GUID.IsEqualGUID",), "error 449: Argument not optional: sGUID1 of GUID.IsEqualGUID\n"),
        ):
            with self.subTest(words=words):
                self.assertEqual(vlgs("call", *words), (1, "", report))

    def test_settings(self):
        status, output, report = vlgs("call", "Conversion.GetLocaleSetting", "31", VLGS_LOCALE="xx-YY", VLGS_CODEPAGE="x")
        self.assertEqual((status, output), (0, "M/d/yyyy\n"))
        self.assertEqual(report, "vlgs: VLGS_LOCALE=xx-YY is not known here; en-US is used\n"
                                 "vlgs: VLGS_CODEPAGE=x is not known here; code page 1252 is used\n")

    def test_misuse(self):
        for words, hint in (
            ((), "usage"), (("frob",), "frob"), (("call",), "CLASS.MEMBER"), (("call", "Files"), "CLASS.MEMBER"),
            (("call", "--frob"), "--json"), (("call", "GUID.IsEqualGUID", "sGUDI1=x"), "sGUID1"),
            (("call", "GUID.IsEqualGUID", "sGUID1=x", "y"), "last"), (("classes", "x"), "no arguments"),
            (("describe",), "CLASS[.MEMBER]"), (("describe", "Nothing"), "Restricted"),
            (("describe", "GUID.Nothing"), "describe GUID"),
        ):
            with self.subTest(words=words):
                status, output, report = vlgs(*words)
                self.assertEqual((status, output), (2, ""))
                self.assertIn(hint, report)

    def test_descriptions(self):
        self.assertIn("Restricted", vlgs("classes")[1])
        self.assertIn("IsEqualGUID(sGUID1 As String, sGUID2 As String) As Boolean", vlgs("describe", "guid")[1])
        self.assertIn("ClassID As Long", vlgs("describe", "GUID.classid")[1])
        self.assertIn("# GUID", vlgs("describe", "--markdown", "GUID")[1])
        self.assertIn("eInterfaceID_Files", vlgs("describe", "--markdown")[1])
        self.assertIn("interface", vlgs("idl")[1])
        self.assertRegex(vlgs("--version")[1], r"^vlgs 9\.1002\.0\.23$")
        self.assertIn("usage", vlgs("--help")[1])

    def test_the_reference_is_the_committed_one(self):
        pages = {"README.md": vlgs("describe", "--markdown")[1]}
        for line in vlgs("classes")[1].splitlines():
            name = line.split()[0]
            pages[name + ".md"] = vlgs("describe", "--markdown", name)[1]
        committed = {page.name: page.read_text() for page in (ROOT / "docs/reference").glob("*.md")}
        self.assertEqual(sorted(committed), sorted(pages))
        for name, text in pages.items():
            self.assertTrue(committed[name] == text, f"docs/reference/{name} is stale: run scripts/reference.sh")

    def test_examples_print_what_the_reference_says(self):
        examples = []
        for page in (ROOT / "docs/reference").glob("*.md"):
            examples += re.findall(r"^```\n\$ vlgs (.*)\n((?:.*\n)*?)```$", page.read_text(), re.MULTILINE)
        self.assertGreater(len(examples), 10)
        for words, output in examples:
            with self.subTest(words=words):
                self.assertEqual(vlgs(*shlex.split(words)), (0, output, ""))

    def test_a_full_disk_is_reported(self):
        with open("/dev/full", "w") as full:
            done = subprocess.run([os.environ["VLGS_TOOL"], "classes"], stdout=full, stderr=subprocess.PIPE)
        self.assertEqual((done.returncode, done.stderr.decode()), (1, "error 57: Device I/O error\n"))


if __name__ == "__main__":
    unittest.main()
