# SPDX-License-Identifier: MIT
"""The Python module: values in both directions, members, collections, errors, threads, events."""

import copy
import ctypes
import datetime
import decimal
import errno
import gc
import math
import os
import pathlib
import pickle
import pydoc
import re
import signal
import subprocess
import sys
import tempfile
import threading
import unittest
import unittest.mock
import uuid

import vlgs
import vlgs._objects

_testbed = ctypes.CDLL(os.environ["VLGS_TESTBED"])
_testbed.vlgs_test_bed.restype = ctypes.c_void_p

D = decimal.Decimal


def test_bed():
    return vlgs._objects.wrap(_testbed.vlgs_test_bed())


class Case(unittest.TestCase):
    def setUp(self):
        self.bed = test_bed()

    def assertRaisesNumber(self, number, action, *arguments, **named):
        with self.assertRaises(vlgs.Error) as raised:
            action(*arguments, **named)
        self.assertEqual(raised.exception.number, number)
        return raised.exception


class ValueTest(Case):
    def test_values_come_back_as_they_went(self):
        moment = datetime.datetime
        for value in (
            True, False, 0, -1, 2**31 - 1, -(2**31), 2.5, -0.0, math.inf, 1e300, "", "text", "Größe €",
            "a\0b\r\n", "\U0001f600", "\ud800", "x\udfff\udc80y", "z" * 300, "ä" * 200, b"", b"\0\xff", None,
            vlgs.Empty, vlgs.Null, vlgs.Missing, [], ["a", 1, None], [[1], ["x", []]], D("1.10"), D(0),
            D(2**96 - 1), D(-(2**96) + 1).scaleb(-28), D("-0.5"),
            moment(1899, 12, 30), moment(1899, 12, 29, 6), moment(1899, 12, 28, 23, 59, 59, 999999),
            moment(2024, 2, 29, 12, 34, 56, 789012), moment(1, 1, 1), moment(9999, 12, 31, 23, 59, 59),
        ):
            with self.subTest(value=value):
                result = self.bed.Echo(value) if value is not vlgs.Missing else self.bed.Echo([value])[0]
                self.assertEqual(result, value)
                if not isinstance(value, list):
                    self.assertIs(type(result), type(value))

    def test_not_a_number_comes_back(self):
        self.assertTrue(math.isnan(self.bed.Echo(math.nan)))

    def test_other_types_take_the_nearest_form(self):
        for value, result in (
            (2**31, float(2**31)), (-(2**31) - 1, float(-(2**31) - 1)), ((1, 2), [1, 2]), (bytearray(b"x"), b"x"),
            (datetime.date(2000, 1, 1), datetime.datetime(2000, 1, 1)),
            (datetime.time(6), datetime.datetime(1899, 12, 30, 6)),
            (pathlib.PurePosixPath("/a"), "/a"), (uuid.UUID(int=10), "{00000000-0000-0000-0000-00000000000A}"),
            (range(3), [0, 1, 2]), ({1}, [1]),
            (datetime.datetime(2009, 3, 7, tzinfo=datetime.timezone.utc),
             datetime.datetime(2009, 3, 7, tzinfo=datetime.timezone.utc).astimezone().replace(tzinfo=None)),
            (D("0." + "3" * 40), D("0." + "3" * 28)), (D("1e20"), D(10**20)), (D("1e-40"), D(0)),
        ):
            with self.subTest(value=value):
                self.assertEqual(self.bed.Echo(value), result)

    def test_values_without_a_form_are_refused(self):
        for value, number in ((10**400, 6), (D("1e30"), 6), (D("inf"), 6), (D("nan"), 13)):
            with self.subTest(value=value):
                self.assertRaisesNumber(number, self.bed.Echo, value)
        for value in (object(), 1j):
            self.assertRaises(TypeError, self.bed.Echo, value)
        self.assertRaises(ValueError, self.bed.Echo, datetime.time(6, tzinfo=datetime.timezone.utc))

    def test_typed_values(self):
        V = vlgs.Variant
        for value, result in (
            (V(2, 5), 5), (V(17, 255), 255), (V(3, "7"), 7), (V(4, 0.5), 0.5), (V(5, 3), 3.0), (V(8, 5), "5"),
            (V(11, 2), True), (V(6, D("1.25")), D("1.25")), (V(6, D("922337203685477.5807")),) * 2,
            (V(7, 1.5), datetime.datetime(1899, 12, 31, 12)), (V(7, -1.25), datetime.datetime(1899, 12, 29, 6)),
            (V(7, 1.99999999999999), datetime.datetime(1900, 1, 1)), (V(14, 5), D(5)), (V(0), vlgs.Empty),
            (V(1), vlgs.Null), (V(9), None), (V(10, 5), V(10, 5)), (V(10, -2147352572), vlgs.Missing),
            (V(7, 1e9), V(7, 1e9)), (V(12, "x"), "x"),
        ):
            with self.subTest(value=value):
                got = self.bed.Echo([value])[0]
                if isinstance(result, V) and result.code == 6:
                    result = result.value
                self.assertEqual(got, result)
        for value, number in ((V(2, 40000), 6), (V(17, -1), 6), (V(3, "x"), 13), (V(9, 1), 13), (V(6, 1e30), 6),
                              (V(6, D(10**16)), 6), (V(99, 1), 13), (V(0x2000 + 99, []), 13)):
            with self.subTest(value=value):
                self.assertRaisesNumber(number, self.bed.Echo, value)

    def test_singletons_stay_single_and_false(self):
        for value in (vlgs.Empty, vlgs.Null, vlgs.Missing):
            self.assertFalse(value)
            self.assertIs(copy.deepcopy(value), value)
            self.assertIs(self.bed.Echo([value])[0], value)

    def test_records(self):
        result = self.bed.Echo(vlgs.Record("UDTlocaleSETTINGS", SDECIMAL=",", sTime=5))
        self.assertEqual((result.sDecimal, result.stime, result.sDate), (",", "5", ""))
        result.sdecimal = "."
        self.assertEqual(self.bed.Echo(result), result)
        self.assertNotEqual(self.bed.Echo(vlgs.Record("udtLocaleSettings")), result)
        self.assertEqual(vlgs.Dispatch("VlGeneralServices.Conversion").GetLocaleSettings().sDecimal, ".")
        self.assertRaises(AttributeError, lambda: result.sThird)
        self.assertRaisesNumber(13, self.bed.Record, result)
        self.assertRaisesNumber(13, self.bed.Echo, vlgs.Record("udtLocaleSettings", sThird=""))
        self.assertRaisesNumber(13, self.bed.Echo, vlgs.Record("udtOther"))


class ArrayTest(Case):
    def test_bounds_and_items_come_back(self):
        A = vlgs.Array
        for array, lower, upper, dimensions, vartype in (
            (A(["a", "b"], lower=1), 1, 2, 1, 0x200C), (A([], lower=-3), -3, -4, 1, 0x200C),
            (A([[1, 2, 3], [4, 5, 6]], lower=(1, 0)), (1, 0), (2, 2), 2, 0x200C),
            (A([[[1], [2]], [[3], [4]], [[5], [6]]], (0, 1, 2)), (0, 1, 2), (2, 2, 2), 3, 0x200C),
            (A(["x"], vartype=8), 0, 0, 1, 0x2008), (A([1.5], vartype=0x2005), 0, 0, 1, 0x2005),
            (A([[1, 2]], (0, 0), 17), (0, 0), (0, 1), 2, 0x2011),
        ):
            with self.subTest(array=array):
                result = self.bed.Echo(array)
                self.assertEqual(result, array)
                self.assertEqual(result, [list(row) if isinstance(row, list) else row for row in array])
                self.assertEqual((result.lower, result.upper), (lower, upper))
                self.assertEqual((result.dimensions, result.vartype), (dimensions, vartype))
                self.assertEqual(copy.deepcopy(result).lower, lower)

    def test_element_types_convert_their_items(self):
        self.assertEqual(self.bed.Echo(vlgs.Variant(0x2008, [1, True])), ["1", "True"])
        self.assertEqual(self.bed.Echo(vlgs.Variant(0x2002, ["5"])), [5])
        self.assertEqual(self.bed.Echo(vlgs.Variant(0x200B, [2, 0])), [True, False])
        self.assertEqual(self.bed.Echo(vlgs.Variant(0x2011, [1, 2])), b"\1\2")
        self.assertEqual(self.bed.Echo(vlgs.Variant(0x2009, [self.bed])), [self.bed])
        self.assertRaisesNumber(13, self.bed.Echo, vlgs.Variant(0x2003, ["x"]))

    def test_an_array_without_dimensions(self):
        result = self.bed.Echo(vlgs.Variant(0x2008, None))
        self.assertEqual((result, result.dimensions, result.vartype, result.upper), ([], 0, 0x2008, -1))
        self.assertEqual(self.bed.Echo(result).dimensions, 0)

    def test_rows_of_unequal_length_are_refused(self):
        self.assertRaises(ValueError, vlgs.Array, [[1, 2], [3]], (0, 0))

    def test_many_items(self):
        items = [str(i) for i in range(10_001)]
        self.assertEqual(self.bed.Echo(items), items)


class MemberTest(Case):
    def test_names_ignore_case(self):
        self.assertEqual(self.bed.ECHO(VVALUE=5), 5)
        self.bed.nUMBER = "17"
        self.assertEqual(self.bed.number, 17)

    def test_arguments(self):
        self.assertEqual(self.bed.Typed(1, 2, 3, True, "x"), "1,2,3,True,x")
        self.assertEqual(self.bed.Optionals(vlgs.Missing, ld=3, sB="y"), "a=7;b=y;c=missing;d=3")
        for number, arguments, named in ((449, (), {}), (450, (1, 2), {}), (448, (), {"x": 1}),
                                         (450, (1,), {"vValue": 1})):
            self.assertRaisesNumber(number, self.bed.Echo, *arguments, **named)

    def test_arguments_by_reference(self):
        number, text, other = vlgs.ByRef(4), vlgs.ByRef("a"), vlgs.ByRef()
        self.bed.Change(number, vAny=other, sText=text)
        self.assertEqual((number.value, text.value, other.value), (8, "a!", ["a!"]))

    def test_properties_with_parameters(self):
        self.bed.Item[1] = "one"
        self.bed[2] = self.bed
        self.assertEqual((self.bed.Item(1), self.bed(1), self.bed[1], self.bed.item[1]), ("one",) * 4)
        self.assertEqual(self.bed[2], self.bed)
        self.assertEqual(len(self.bed), 2)
        self.assertEqual([item if isinstance(item, str) else type(item).__name__ for item in self.bed],
                         ["one", "TestBed"])
        self.assertIn("one", self.bed)
        self.assertRaisesNumber(9, self.bed, 5)

    def test_collections_of_the_run_time(self):
        items = vlgs.Dispatch("VlGeneralServices.General").ParseDelimitedString("a,b", ",")
        self.assertEqual((list(items), len(items), items.Count, items[2]), (["A", "B"], 2, 2, "B"))
        keyed = vlgs.Dispatch("scripting.dictionary")
        keyed["x"] = 1
        self.assertEqual((list(keyed), len(keyed), keyed.Count, keyed["x"]), (["x"], 1, 1, 1))

    def test_objects(self):
        other = self.bed.Create()
        self.assertIsNone(self.bed.Other)
        self.bed.Other = other
        self.assertEqual(self.bed.Other, other)
        self.assertEqual(len({self.bed.Other, other, self.bed}), 2)
        self.assertNotEqual(self.bed, other)
        self.assertNotEqual(self.bed, 1)
        self.bed.Other = None
        self.assertIsNone(self.bed.Other)
        self.assertTrue(other)
        self.assertRaises(TypeError, vlgs.Object)

    def test_errors(self):
        error = self.assertRaisesNumber(-2147209996, self.bed.Fail, -2147209996, "A.B", "x\0\r\ny\ud800")
        self.assertEqual((error.source, error.description), ("A.B", "x\0\r\ny\ud800"))
        self.assertEqual(pickle.loads(pickle.dumps(vlgs.Error(5, "s", "d"))).args, (5, "s", "d"))
        self.assertEqual(self.assertRaisesNumber(7, self.bed.FailOutOfMemory).description, "Out of memory")
        self.assertRaisesNumber(438, lambda: self.bed.Nothing)
        self.assertRaisesNumber(438, getattr, self.bed, "Count\0")
        self.assertRaisesNumber(448, self.bed.Echo, **{"vValue\0": 1})
        self.assertRaisesNumber(438, setattr, self.bed, "Nothing", 1)
        self.assertRaisesNumber(438, setattr, self.bed, "Count", 1)
        self.assertFalse(hasattr(self.bed, "Nothing"))
        with self.assertRaisesRegex(vlgs.Error, "did you mean VlGeneralServices.Files"):
            vlgs.Dispatch("VlGeneralServices.Filse")
        for name in ("VlGeneralServices.Nothing", "", "Nothing", "VlGeneralServices.Property", "VlGeneralServices.Files\0x"):
            self.assertRaisesNumber(429, vlgs.Dispatch, name)

    def test_errors_are_of_the_class_that_their_number_says(self):
        files = vlgs.Dispatch("VlGeneralServices.Files")
        for kind, number in ((TypeError, 13), (OverflowError, 6), (FileNotFoundError, 53), (PermissionError, 70),
                             (KeyError, 457), (IndexError, 9), (MemoryError, 7), (ValueError, None)):
            with self.subTest(number=number):
                if number is None:
                    self.assertFalse(issubclass(type(vlgs._errors.error_of(5)), kind))
                else:
                    error = pickle.loads(pickle.dumps(self.assertRaisesNumber(number, self.bed.Fail, number, "s", "d")))
                    self.assertIsInstance(error, kind)
                    self.assertEqual((error.number, error.source, error.code), (number, "s", number))
        with self.assertRaises(FileNotFoundError) as raised:
            files.ExtractPathVolume("C:\\no\\such")
        self.assertEqual(raised.exception.code, vlgs.constants.eMsg_ErrorPathIsBad)
        with self.assertRaises(FileNotFoundError) as raised:
            files.RetrieveINIFile("/no/such/file")
        self.assertEqual(raised.exception.errno, errno.ENOENT)
        with self.assertRaisesRegex(AttributeError, "CreateKye of INIFile; did you mean CreateKey") as raised:
            files.CreateINIFile("a").CreateKye
        self.assertEqual((raised.exception.name, type(raised.exception.obj).__name__), ("CreateKye", "INIFile"))

    def test_documents_are_mappings(self):
        files = vlgs.Dispatch("VlGeneralServices.Files")
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "a.ini")
            with files.CreateINIFile(path) as document:
                document["ODBC"] = {"DSN": "Demo", "UID": "me"}
                document["ODBC"]["DSN"] = "Other"
                document["A"] = {"b": "c"}
            with self.assertRaises(ZeroDivisionError), document:
                document["A"]["b"] = 1 / 0
            again = files.RetrieveINIFile(path)
            self.assertEqual({name: dict(section) for name, section in again.items()},
                             {"ODBC": {"DSN": "Other", "UID": "me"}, "A": {"b": "c"}})
            self.assertEqual([section.Name for section in again], ["ODBC", "A"])
            self.assertEqual(("odbc" in again, "X" in again, "dsn" in again["ODBC"]), (True, False, True))
            self.assertEqual(str(again["A"]["b"]), "c")
            self.assertIn(repr(path.name)[1:-1], repr(again))
            self.assertEqual((again["ODBC"].texts(), again.get("X"), again["ODBC"].get("X", 1), {again["A"]["b"]} & {"c"}),
                             ({"DSN": "Other", "UID": "me"}, None, 1, {"c"}))
            self.assertEqual((again["X"], again["ODBC"]["X"], again[9]), (vlgs.Empty,) * 3)
            for read in (lambda: again[-1], lambda: again["ODBC"][-3]):
                self.assertRaises(IndexError, read)
            for keys in {"DSN": "x", "UID": None}, {"DSN": "x", "UID": object()}, {"DSN": "x", "": "y"}:
                with self.assertRaises((TypeError, vlgs.Error)):
                    again["ODBC"] = keys
            self.assertEqual(again["ODBC"].texts(), {"DSN": "Other", "UID": "me"})
            again["ODBC"] = {"DSN": "x"}
            del again["A"], again["ODBC"]["DSN"]
            self.assertEqual((len(again), len(again["ODBC"])), (1, 0))
            gone = again["ODBC"]
            del again["ODBC"]
            with self.assertRaises(KeyError):
                gone["DSN"] = "y"
            with self.assertRaises(KeyError):
                del again["A"]

    def test_names_are_those_of_now(self):
        document = vlgs.Dispatch("VlGeneralServices.Files").CreateINIFile("a.ini")
        document["A"] = {f"k{i}": str(i) for i in range(200)}
        section = document["A"]
        section.keys().clear()  # a list of the caller's own
        self.assertEqual((len(section.keys()), section.texts()["k150"]), (200, "150"))
        del section["k0"]  # and another in its place
        document.CreateKey("A", "new", "x", 1)
        self.assertEqual((section.keys()[:2], section.texts()["new"]), (["new", "k1"], "x"))
        document.DeleteSection("A")
        document["B"] = document["A"] = {"k": ""}
        self.assertEqual((document.keys(), document["A"].keys(), len(section.keys())), (["B", "A"], ["k"], 200))
        items = vlgs.Dispatch("VlGeneralServices.Collection")
        items.Add(section)
        self.assertEqual(vlgs._objects.core.read_each(items, "Name"), ["A"])
        items.Add("no object", "x")
        self.assertRaisesNumber(91, vlgs._objects.core.read_each, items, "Name")

    def test_collections_follow_python(self):
        items = vlgs.Dispatch("VlGeneralServices.Collection")
        for item in "ab":
            items.Add(item, item)
        self.assertEqual(list(reversed(items)), ["b", "a"])
        self.assertRaises(IndexError, lambda: items[-1])
        for item in items:  # another member in place of one: what was there is gone over
            items.Remove(1)
            items.Add(item + "x", item + "x")
        self.assertEqual((item, list(items)), ("b", ["ax", "bx"]))
        with self.assertRaises(RuntimeError):
            for _ in items:
                items.Remove(1)
        for action in (copy.copy, copy.deepcopy, pickle.dumps, type(items).__new__):
            self.assertRaises(TypeError, action, items)
        self.assertEqual(vlgs.Dispatch("VlGeneralServices.General").CopyDictionaryToVariantArray({"a": 1}), [1])

    def test_what_is_no_collection_has_no_length_and_no_members(self):
        guid = vlgs.Dispatch("vlgeneralservices.guid")
        self.assertRaisesNumber(451, iter, guid)
        self.assertRaises(TypeError, list, guid)
        self.assertRaises(TypeError, len, guid)

    def test_objects_tell_about_themselves(self):
        self.assertIn("Echo", dir(self.bed))
        self.assertNotIn("NewEnum", dir(self.bed))
        # Versions of pydoc differ in where they break the lines of a signature.
        text = re.sub(r"[\s|]+", " ", pydoc.plain(pydoc.render_doc(self.bed))).replace("( ", "(")
        self.assertIn("Optionals(self, lA: Long = 7, sB: String = ','", text)
        self.assertIn("A value by its position from 1", text)
        self.assertIn("VlgsTest.TestBed", repr(self.bed))

    def test_a_class_that_is_changed_answers_so_at_once(self):
        def count():
            return self.bed.Count

        self.assertEqual(count(), 0)
        with unittest.mock.patch.object(type(self.bed), "Count", 5):
            self.assertEqual(count(), 5)
        self.assertEqual(count(), 0)

    def test_constants(self):
        self.assertEqual(vlgs.constants.eInterfaceID_Files, 153)
        self.assertEqual(vlgs.constants.EINTERFACEID_files, 153)
        self.assertIn("_eInterfaceID_Buffer", dir(vlgs.constants))
        self.assertRaises(AttributeError, lambda: vlgs.constants.eNothing)


    def test_settings_that_are_not_known_are_told_once(self):
        with unittest.mock.patch.dict(os.environ, VLGS_CODEPAGE="tlhIngan"):
            with self.assertWarnsRegex(RuntimeWarning, "VLGS_CODEPAGE=tlhIngan .* 1252 is used"):
                vlgs.Dispatch("VlGeneralServices.Files")
            vlgs.Dispatch("VlGeneralServices.Files")  # a second warning would fail


class ThreadTest(Case):
    def test_objects_stay_on_their_thread(self):
        found = []

        def use():
            try:
                self.bed.Count
            except vlgs.Error as error:
                found.append(error.number)
            found.append(test_bed().Echo(1))

        thread = threading.Thread(target=use)
        thread.start()
        thread.join()
        self.assertEqual(found, [-2147417842, 1])

    def test_an_object_ends_with_its_last_reference_wherever_that_goes(self):
        ended, idle = threading.Event(), threading.Event()

        def locked(path):
            document = vlgs.Dispatch("VlGeneralServices.Files").CreateINIFile(path)
            document.Save()
            document.Locked = document.DelayedDelete = True
            return document

        def work(holder, path, last):
            holder.append(locked(path))
            idle.set()
            if last:
                ended.wait()  # the thread lives on and never calls again

        with tempfile.TemporaryDirectory() as folder:
            for last in (False, True):
                path, holder = os.path.join(folder, f"{last}.ini"), []
                idle.clear()
                thread = threading.Thread(target=work, args=(holder, path, last))
                thread.start()
                idle.wait()
                if not last:
                    thread.join()
                self.assertTrue(os.path.exists(path))
                holder.clear()
                gc.collect()
                self.assertFalse(os.path.exists(path), f"thread {'idle' if last else 'ended'}")
                ended.set()
                thread.join()

    def test_lists_inside_of_lists_end_where_the_stack_does(self):
        nested, found = [], []
        for _ in range(900):
            nested = [nested]

        def use():
            try:
                found.append(test_bed().Echo(nested))
            except RecursionError:
                found.append(nested)

        # Before 3.11 Python itself overflows such a stack by functions that call each other.
        in_python = vlgs._core.core.__name__ == "vlgs._pure" and sys.version_info < (3, 11)
        size = threading.stack_size(0 if in_python else 256 * 1024)
        thread = threading.Thread(target=use)
        thread.start()
        threading.stack_size(size)
        thread.join()
        use()
        self.assertEqual(len(found), 2)

    def test_threads_that_begin_with_the_same_class_get_the_same(self):
        program = """
import sys, threading, vlgs
sys.setswitchinterval(1e-6)
ready, found = threading.Barrier(12), []
def work():
    ready.wait()
    for name in ("Files", "GUID", "Conversion", "Buffer"):
        made = vlgs.Dispatch("VlGeneralServices." + name)
        found.append((name, type(made), made.ClassID))
threads = [threading.Thread(target=work) for _ in range(12)]
[thread.start() for thread in threads]
[thread.join() for thread in threads]
sys.exit(len(found) != 48 or len(set(found)) != 4)
"""
        for _ in range(4):
            self.assertEqual(subprocess.run([sys.executable, "-c", program]).returncode, 0)

    def test_another_interpreter_leaves_the_first_one_alone(self):
        program = """
import vlgs
try:
    import _interpreters as interpreters
except ImportError:
    import _xxsubinterpreters as interpreters
files = vlgs.Dispatch("VlGeneralServices.Files")
other = interpreters.create()
interpreters.run_string(other, "try: import vlgs; vlgs.Dispatch('VlGeneralServices.GUID').ClassID\\nexcept ImportError: pass")
interpreters.destroy(other)
assert isinstance(files, vlgs.Object) and files.BuildPath
try:
    vlgs.Dispatch("Scripting.Dictionary").NoMember
except vlgs._errors.NoSuchMember:
    print("as before")
"""
        done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stdout), (0, "as before\n"), done.stderr)

    def test_threads_that_still_call_do_not_keep_a_program_from_ending(self):
        program = """
import threading, time, vlgs
def work():
    files = vlgs.Dispatch("VlGeneralServices.Files")
    while True:
        files.ClassName
for _ in range(2):
    threading.Thread(target=work, daemon=True).start()
time.sleep(0.1)
"""
        self.assertEqual(subprocess.run([sys.executable, "-c", program]).returncode, 0)

    def test_objects_dropped_while_their_thread_is_inside_are_released_as_it_leaves(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "a.ini")
            document = vlgs.Dispatch("VlGeneralServices.Files").CreateINIFile(path)
            document.Save()
            document.DelayedDelete = True
            holder, found = [document], []
            del document

            class Handler:  # is called while the thread is inside
                def Told(self, _):
                    thread = threading.Thread(target=holder.clear)
                    thread.start()
                    thread.join()
                    found.append(os.path.exists(path))

            with vlgs.WithEvents(self.bed, Handler):
                self.bed.Tell("now")
            self.assertEqual((found, os.path.exists(path)), ([True], False))


class EventTest(Case):
    def test_handlers_are_told_until_they_are_disconnected(self):
        class Handler:
            def __init__(self):
                self.heard = []

            def OnTold(self, what):
                self.heard.append(what)
                if what == "fail":
                    raise vlgs.Error(11, "handler", "said no")
                if what == "break":
                    raise KeyError("gone")

        with vlgs.WithEvents(self.bed, Handler) as connection:
            self.assertEqual(self.bed.Tell("a"), "a")
            error = self.assertRaisesNumber(11, self.bed.Tell, "fail")
            self.assertEqual((error.source, error.description), ("handler", "said no"))
            self.assertIsInstance(self.assertRaisesNumber(440, self.bed.Tell, "break").__cause__, KeyError)
        self.bed.Tell("b")
        self.assertEqual(connection.handler.heard, ["a", "fail", "break"])

    def test_what_ends_a_program_ends_it_from_a_handler_too(self):
        class Handler:
            def OnTold(self, what):
                if what == "exit":
                    raise SystemExit(3)
                signal.raise_signal(signal.SIGINT)

        with vlgs.WithEvents(self.bed, Handler):
            self.assertRaises(KeyboardInterrupt, self.bed.Tell, "interrupt")
            self.assertRaises(SystemExit, self.bed.Tell, "exit")
            self.assertEqual(self.bed.Count, 0)

    def test_a_handler_may_leave_events_out(self):
        vlgs.WithEvents(self.bed, object())
        self.assertEqual(self.bed.Tell("a"), "a")

    def test_classes_without_events_refuse(self):
        self.assertRaisesNumber(459, vlgs.WithEvents, vlgs.Dispatch("VlGeneralServices.GUID"), object())


if __name__ == "__main__":
    unittest.main()
