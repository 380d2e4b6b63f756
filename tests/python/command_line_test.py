# SPDX-License-Identifier: MIT
"""The command line: what it prints and how it ends."""

import contextlib
import fcntl
import json
import os
import pathlib
import re
import shlex
import shutil
import struct
import subprocess
import tempfile
import termios
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]


def vlgs(*words, input_="", **variables):
    done = subprocess.run([os.environ["VLGS_TOOL"], *words], capture_output=True, timeout=60,
                          input=input_.encode(), env=os.environ | variables)
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
        demo = str(ROOT / "samples/demo/demo.VLS")
        for words, filter_, output in (
            (("call", "Restricted.ClassName"), ".", '{"type":"String","value":"VlGeneralServices.Restricted"}'),
            (("call", "Collection.Item", "--", "k"), ".", '{"type":"Empty","value":null}'),
            (("call", "Collection.Add", "{", "date:12/31/2009", "currency:1.5", "decimal:-0.25", "}",
              "..Item", "long:1"), "[.type, .lower, .value]", '["Variant()",[0],["2009-12-31T00:00:00",1.5,-0.25]]'),
            (("call", "Conversion.CBln", "True", "false"), ".arguments", '{"bTypedReturn":{"type":"Boolean","value":true}}'),
            (("call", "Files.RetrieveINIFile", demo), "[.class, .value.ODBC.DRIVER]",
             '["VlGeneralServices.INIFile","Microsoft Access Driver (*.mdb)"]'),
            (("ini", "list", demo), "keys_unsorted", '["PROJECT","ODBC"]'),
            (("explain", demo), 'map(select(.name == "PWD").value)', '["********"]'),
            (("version",), ".version", '"9.1002.0.23"'), (("help", "classes"), ".usage", '["vlgs classes [--json]"]'),
            (("help",), '.[] | select(.name == "lock") | .usage[0] | endswith("[--session ID] PATH [-- COMMAND [ARG...]]")', "true"),
            (("classes",), '.[] | select(.name == "Property") | .creatable', "false"),
            (("describe", "Files"), '.members[] | select(.name == "BuildPath") | .kind', '"method"'),
            (("describe", "Conversion.CBln"), "[.type, .parameters[1].byReference, .default]", '["String",true,false]'),
        ):
            with self.subTest(words=words):
                json_ = vlgs(*words[:1], "--json", *words[1:]) if words[0] != "ini" else vlgs(*words, "--json")
                self.assertEqual((json_[0], json_[2]), (0, ""))
                done = subprocess.run(["jq", "-c", filter_], input=json_[1].encode(), capture_output=True, timeout=60)
                # Some of its versions write numbers as they read them.
                self.assertEqual(json.loads(done.stdout or b"null"), json.loads(output), done.stderr)

    def test_errors_keep_secrets(self):
        demo = str(ROOT / "samples/demo/demo.VLS")
        for words in (("Cipher.readEncodedFile", "none"), ("Cipher.encode", "data", "extra"), ("Cipher.decode", "zz", "k", "l"),
                      ("Files.BuildConnectionStringFromPath", "none.VLS", "T", "U"),
                      ("Files.BuildConnectionStringFromPath", demo, "T", "U", "P")):
            for secret in (("hunter2",), ("sPwdd=hunter2",), ("bEncrypted=hunter2",), ("@-", "@-")):
                _, _, error = vlgs("call", *words, *secret, input_="hunter2")
                self.assertNotIn("hunter2", error)

    def test_chains(self):
        with tempfile.TemporaryDirectory() as folder:
            file, text = os.path.join(folder, "a.ini"), os.path.join(folder, "text")
            pathlib.Path(file).write_text("[A]\nx=1\n[B]\ny=2\nz=3\n")
            pathlib.Path(text).write_text("from a file\n")
            for words, output in (
                (("Files.RetrieveINIFile", file, ".Sections", ".Item", "B", ".Value", ".Count"), "2\n"),
                (("Files.RetrieveINIFile", file, ".Section", "long:1", ".Name"), "A\n"),
                (("Files.RetrieveINIFile", file, ".CreateKey", "A", "x", "@" + text, "..CreateKey", "A", "w", "--",
                  "@"), "@\n"),
                (("Files.RetrieveINIFile", file, ".CreateKey", "A", "x", "@" + text, "..Save"), "True\n"),
                (("Files.RetrieveINIFile", file, ".KeyValue", "a", "x"), "from a file\n"),
                (("Buffer.Delimiter=;", ".Delimiter"), ";\n"),
                (("Collection.Add", "[", "Files.RetrieveINIFile", file, "]", "k", "..Item", "k", ".TotalKeyCount"), "3\n"),
                (("Files.RetrieveINIFile", file, ".Section", "eINI_VLS", ".Name"), "A\n"),
            ):
                with self.subTest(words=words):
                    self.assertEqual(vlgs("call", *words), (0, output, ""))

    def test_scripts(self):
        with tempfile.TemporaryDirectory() as folder:
            file, script = os.path.join(folder, "a.ini"), os.path.join(folder, "s.vlgs")
            pathlib.Path(file).write_text("[A]\nx=1\n")
            for lines, output, report in (
                ("f = Files.RetrieveINIFile $1 # opens\n\n_ = f.CreateKey A y 'a \"b\" .z'\nF.Save\n$f.KeyValue A y",
                 'True\na "b" .z\n', ""),
                ("b = Buffer\r\nb.Delimiter=;\r\nb.Delimiter\r\nn = long:2\r\n{ $n 'long:3' }\r\n", ";\n2\nlong:3\n", ""),
                ("c = Collection\nc.Add -- =\nc.Item long:1\nexit\nnever", "0\n=\n", ""),
                ("Conversion.CBln True $typed\ntyped", "1\nTrue\n", ""),
                ("1x = Files\n", "", 'S:1: "1x" is no name'), ("\n'open\n", "", "S:2: a ' is missing"),
                ("n = long:1\nCollection.Add $m\n", "", 'S:2: there is no variable "m"'),
                ("x = @no/file\n", "", "S:1: error 76: Path not found: no/file"),
                ("doc = Files\ndok.ClassID\n", "", "did you mean doc?"),
                ("d = [ Collection ]\nd .Count\n", "0\n", ""),
            ):
                pathlib.Path(script).write_text(lines)
                with self.subTest(lines=lines):
                    status, out, told = vlgs("run", script, file)
                    self.assertEqual((status > 0, out), (bool(report), output))
                    self.assertIn(report.replace("S:", script + ":"), told)
            self.assertEqual(vlgs("run", "-", input_="x" * 20_000_000), (1, "", "-:1: error 7: Out of memory\n"))
            for line, ending in ("exit 3", (3, "", "")), ("exit 256", (2, "", "-:1: exit takes a status from 0 to 255\n")):
                self.assertEqual(vlgs("run", input_=line), ending)
            self.assertEqual(vlgs("run", "--json", input_="'\"\\\t😀'\nx.y"),
                             (2, r'{"type": "String", "value": "\"\\\u0009😀"}' + "\n", '-:2: there is no class or variable "x"\n'))

    def test_errors(self):
        for words, report in (
            (("Property.Value",), "error 429: ActiveX component can't create object: VlGeneralServices.Property\n"),
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
            ((), "usage"), (("frob",), "frob"), (("call",), "CLASS.MEMBER"), (("call", "Files"), "is a class"),
            (("call", "Flies.X"), "did you mean Files?"), (("call", "Restricted.ClasName"), "did you mean ClassName?"),
            (("call", "Buffer.Delimiter=;"), "ends with the command"),
            (("call", "Buffer.Delimiter", ";"), "ends with the command"), (("call", "Flies"), "did you mean Files?"),
            (("call", "Collection.Item", "k", ".Count"), "gives no object"), (("call", "Collection", "..Count"), "no member"),
            (("call", "Collection.Add", "[", "Collection"), '"]"'),
            (("call", "--frob"), "--json"), (("call", "GUID.IsEqualGUID", "sGUDI1=x"), "sGUID1"),
            (("call", "Files.RetrieveINIFile", "sPth=x"), "did you mean sPath?"),
            (("ini", "set", "/none", "A.B=@-", "A.C=@-"), "second @-"),
            (("call", "GUID.IsEqualGUID", "sGUID1=x", "y"), "last"), (("classes", "x"), "no arguments"),
            (("describe",), "CLASS[.MEMBER]"), (("describe", "Flies"), "did you mean Files?"),
            (("describe", "GUID.GenerateGIUD"), "did you mean GenerateGUID?"),
        ):
            with self.subTest(words=words):
                status, output, report = vlgs(*words)
                self.assertEqual((status, output), (2, ""))
                self.assertIn(hint, report)

    def test_documents(self):
        with tempfile.TemporaryDirectory() as folder:
            a, b, odd = (os.path.join(folder, name) for name in ("a.VLS", "b.ini", "odd.ini"))
            pathlib.Path(b).write_bytes(b"[ODBC]\r\nDSN=y\r\n[Caf\xe9]\r\n")
            pathlib.Path(odd).write_text("; note\n[A]\nx=1\nX=2\n")
            for words, input_, result in (
                (("set", a, "ODBC.DSN=x", "ODBC.UID=me=you", "A.B=@-"), "secret\n", (0, "", "")),
                (("get", a, "odbc", "uid"), "", (0, "me=you\n", "")),
                (("get", a, "A"), "", (0, "B=secret\n", "")),
                (("get", a, "A.C", "--default=none"), "", (0, "none\n", "")),
                (("get", a, "ODBC.uid"), "", (0, "me=you\n", "")),
                (("get", a, "OBDC.uid"), "", (1, "", "error 9: There is no section [OBDC]; did you mean ODBC?\n")),
                (("get", a, "OBDC"), "", (1, "", "error 9: There is no section [OBDC]; did you mean ODBC?\n")),
                (("get", a + "x", "A"), "", (1, "", f"error 53: File not found: {a}x\n")),
                (("set", a, "A", "key", "two\nlines"), "", (2, "", "vlgs: names and values in documents are one line\n")),
                (("diff", a, b), "", (1, "-[ODBC] DSN=x\n+[ODBC] DSN=y\n-[ODBC] UID=me=you\n-[A] B=secret\n+[Café]\n", "")),
                (("diff", a, a), "", (0, "", "")),
                (("set", b, "Café", "Größe", "1"), "", (0, "", "")),
                (("tree", b), "", (0, f"{b}\n├── ODBC\n│   └── DSN=y\n└── Café\n    └── Größe=1\n", "")),
                (("delete", b, "odbc"), "", (0, "", "")),
                (("list", b), "", (0, "Café.Größe=1\n", "")),
                (("check", odd), "", (1, f"{odd}:1: neither a section nor a key\n"
                                         f"{odd}:4: key X again; the last one counts\n", "")),
                (("delete", odd, "A.x"), "", (1, "", "error 70: Saving would drop 2 lines of the file, the first one "
                                                        "line 1 (neither a section nor a key); --drop-lines saves without\n")),
                (("delete", "--drop-lines", odd, "a.x"), "", (0, "", "")),
                (("check", odd), "", (0, "", "")),
            ):
                with self.subTest(words=words):
                    status, output, report = vlgs("ini", *words, input_=input_)
                    self.assertEqual((status, output, report.split("usage:")[0]), result)
            several = [subprocess.Popen([os.environ["VLGS_TOOL"], "ini", "set", a, f"N.k{i}=1"]) for i in range(8)]
            self.assertEqual([each.wait(60) for each in several], [0] * 8)
            self.assertEqual(vlgs("ini", "get", a, "N")[1].count("=1\n"), 8)
            self.assertEqual(pathlib.Path(b).read_bytes(), b"\r\n[Caf\xe9]\r\nGr\xf6\xdfe=1\r\n\r\n")

    @unittest.skipIf(os.name == "nt", "it would change the user's own registry")
    def test_registry(self):
        with tempfile.TemporaryDirectory() as folder:
            file, bad, key = os.path.join(folder, "x.reg"), os.path.join(folder, "bad.reg"), r"HKCU\Software\A"
            pathlib.Path(bad).write_text('REGEDIT4\n\n[HKEY_CURRENT_USER\\Z]\n"a"="b"\nfoo\n')
            for words, status, report in (
                (("add", key, "/v", "name", "/d", 'te"x\\t'), 0, ""), (("add", key, "/ve", "/t", "REG_DWORD", "/d", "0x1F"), 0, ""),
                (("add", key + r"\B", "/v", "m", "/t", "REG_MULTI_SZ", "/d", r"a\0b"), 0, ""),
                (("add", key, "/v", "x", "/t", "REG_DWORD", "/d", "x"), 2, "no number"), (("delete", key), 2, "/f for the key"),
                (("add", key, "/v", "x", "/t", "REG_DWROD"), 2, "did you mean REG_DWORD?"),
                (("query", r"HKCU\Sofware\A"), 1, r"no HKEY_CURRENT_USER\Sofware\A; did you mean Software?"),
                (("delete", key, "/v", "nmae"), 1, "did you mean name?"), (("query", "HKEY_CURENT_USER"), 2, "mean HKEY_CURRENT_USER?"),
                (("export", key, file), 0, ""), (("delete", key, "/f"), 0, ""), (("query", key), 1, "no HKEY"),
                (("import", bad), 1, f"error 321: Invalid file format: line 5 is neither a key nor a value: {bad}\n"),
                (("query", r"HKCU\Z"), 1, "no HKEY"), (("import", file), 0, ""),
            ):
                with self.subTest(words=words):
                    done = vlgs("reg", *words, VLGS_REGISTRY=folder)
                    self.assertEqual(done[0], status)
                    self.assertIn(report, done[2])
            full = r"HKEY_CURRENT_USER\Software\A"
            self.assertEqual(
                json.loads(vlgs("reg", "query", key, "/s", "--json", VLGS_REGISTRY=folder)[1]),
                {full: {"name": {"type": "REG_SZ", "value": 'te"x\\t'}, "": {"type": "REG_DWORD", "value": 31}},
                 full + r"\B": {"m": {"type": "REG_MULTI_SZ", "value": ["a", "b"]}}})

    def test_explanations(self):
        project = str(ROOT / "samples/demo/demo.VLS")
        for words, shown in ((), r"\*{8}"), (("--show-secrets",), r"q7#\S+"):
            self.assertRegex(vlgs("explain", *words, project)[1], rf"(?m)^PWD +{shown} +its password$")

    def test_descriptions(self):
        self.assertIn("Restricted", vlgs("classes")[1])
        self.assertIn("IsEqualGUID(sGUID1 As String, sGUID2 As String) As Boolean", vlgs("describe", "guid")[1])
        self.assertIn("ClassID As Long", vlgs("describe", "GUID.classid")[1])
        self.assertIn("# GUID", vlgs("describe", "--markdown", "GUID")[1])
        self.assertIn("eInterfaceID_Files", vlgs("describe", "--markdown")[1])
        self.assertIn("interface", vlgs("idl")[1])
        self.assertRegex(vlgs("--version")[1], r"^vlgs 9\.1002\.0\.23$")
        self.assertIn("usage", vlgs("--help")[1])
        classes = json.loads(vlgs("classes", "--json")[1])
        described = [json.loads(vlgs("describe", "--json", each["name"])[1]) for each in classes]
        given = {member["type"] for each in described for member in each["members"]}
        self.assertEqual([each for each in classes if not each["creatable"] and each["name"] not in given], [])
        self.assertRegex(vlgs("manual")[1], r"(?s)\.SH COMMANDS.*vlgs ini get \[\\-\\-json\].*\.SH CLASSES.*\.B GUID\n")

    def test_completion(self):
        with tempfile.TemporaryDirectory() as folder:
            file, registry = os.path.join(folder, "a.ini"), {"VLGS_REGISTRY": folder}
            pathlib.Path(file).write_text("[My Section]\nSize=1\n[Other]\nx=1\n")
            vlgs("reg", "add", r"HKCU\Software\Demo App", "/v", "Path", **registry)
            for words, names in (
                ("call files.retrievei", "files.RetrieveINIFile"), ("call Files.RetrieveINIFile x .sectionc", ".SectionCount"), ("lock t", "take"),
                ("call Files.RetrieveINIFile sp", "sPath="), ("describe guid.ge", "GUID.GenerateGUID"), ("call re", "RegUtil."),
                ("ini get --j", "--json"), ("reg add K /d", "/d"), ("completion f", "fish"), ("ini get a", ""),
                (f"ini get --default = x {file} 'my", "My Section"), (f"ini delete {file} my\\ section s", "Size"),
                (f"ini set {file} o", "Other."), (f"ini set {file} y=1 OTHER.x=2 other.X", "Other.x="),
                ("reg query hkc", "HKCC\\"), ("reg query 'hkcu\\SOFTWARE\\d", "hkcu\\SOFTWARE\\Demo App"),
                ("reg query 'HKCU\\Software\\Demo App' /v p", "Path"), ("reg add K /v n /t reg_q", "REG_QWORD"), ("ini get /none ", ""),
            ):
                with self.subTest(words=words):  # the words as bash holds them
                    cut = re.findall(r"(?:\\.|'[^']*'?|[^ '\\])+|(?<= )$", "vlgs " + words)
                    script = vlgs("completion", "bash")[1] + "COMP_WORDS=(" + " ".join(map(shlex.quote, cut)) + ")\n"
                    script += f"COMP_CWORD={len(cut) - 1}; _vlgs '{os.environ['VLGS_TOOL']}'; echo \"${{COMPREPLY[0]}}\""
                    done = subprocess.run(["bash", "-c", script], capture_output=True, env=os.environ | registry)
                    self.assertEqual(done.stdout.decode(), names + "\n", done.stderr)
                    plain = [shlex.split(word + "'" * (word.count("'") % 2))[0] if word else "" for word in cut[1:]]
                    if "=" not in plain:
                        for shell in "zsh", "fish":
                            self.assertEqual(vlgs("completion", shell, "--", *plain, **registry)[1].partition("\n")[0], names)
        for shell in "bash", "zsh", "fish":
            if shutil.which(shell):
                done = subprocess.run([shell, "-n"], input=vlgs("completion", shell)[1].encode(), capture_output=True)
                self.assertEqual((done.returncode, done.stderr), (0, b""))

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

    def test_terminals(self):
        def shown(*words, typed=(), **variables):
            master, slave = os.openpty()
            fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, 50, 0, 0))
            done = subprocess.Popen([os.environ["VLGS_TOOL"], *words], stdin=slave, stdout=slave, stderr=slave,
                                    env=os.environ | {"HOME": "/nowhere", "TERM": "dumb"} | variables,
                                    start_new_session=True, preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))
            os.close(slave)
            output, typed = b"", list(typed)
            with contextlib.suppress(OSError), open(master, "rb", buffering=0) as terminal:
                while piece := terminal.read(4096):
                    output += piece
                    if typed and output.endswith(b"vlgs> "):
                        os.write(master, typed.pop(0).encode())
            return done.wait(60), output.decode().replace("\r\n", "\n")

        self.assertIn("\x1b[1;34mODBC\x1b[0m", shown("ini", "tree", str(ROOT / "samples/demo/demo.VLS"))[1])
        self.assertNotIn("\x1b", shown("ini", "tree", str(ROOT / "samples/demo/demo.VLS"), NO_COLOR="1")[1])
        self.assertLessEqual(max(map(len, shown("classes")[1].splitlines())), 50)
        status, output = shown("run", typed=("f = Flies\n", "f = Fil\t\n", "\3", "f.ClassI\t\n", "f.Cla\3", "exit\n"))
        self.assertEqual(status, 0)  # an interrupt ends the line that is typed, and nothing else
        self.assertRegex(output, r"(?s)did you mean Files\?.*ClassID \n\d+\n.*exit")

    def test_a_full_disk_is_reported(self):
        with open("/dev/full", "w") as full:
            done = subprocess.run([os.environ["VLGS_TOOL"], "classes"], stdout=full, stderr=subprocess.PIPE)
        self.assertEqual((done.returncode, done.stderr.decode()), (1, "error 57: Device I/O error\n"))


if __name__ == "__main__":
    unittest.main()
