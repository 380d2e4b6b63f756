' SPDX-License-Identifier: MIT
' Late-bound use by a script engine: what a call gives, what it writes, how it fails.
Option Explicit
Dim failures, checks: failures = 0: checks = 0

Sub Check(what, found, wanted)
    checks = checks + 1
    If VarType(found) = VarType(wanted) Then
        If found = wanted Then Exit Sub
    End If
    failures = failures + 1
    WScript.Echo "FAILED " & what & ": found " & TypeName(found) & " " & found & ", wanted " & TypeName(wanted) & " " & wanted
End Sub

Sub CheckError(what, number, source, description)
    Dim n, s, d: n = Err.Number: s = Err.Source: d = Err.Description: Err.Clear
    Check what & " number", n, CLng(number)
    If source <> "" Then Check what & " source", s, source
    If description <> "" Then Check what & " description", d, description
End Sub

Function Make(name)
    Set Make = CreateObject("VlGeneralServices." & name)
End Function

Dim name, o
For Each name In Array("INIFile", "Property", "ViewProperties", "DDE", "Nothing")
    On Error Resume Next
    Set o = Make(name)
    Check name & " is refused", Err.Number <> 0, True
    On Error Goto 0
Next

Dim list: Set list = Make("Collection")
' A collection: failures are numbers, the enumerator keeps the order
Check "Add", list.Add("one", "a"), CLng(0)
Check "Add the same key", list.Add("two", "A"), CLng(457)
Check "Add before", list.Add("zero", "z", 1), CLng(0)
Check "Count", list.Count, CLng(2)
Check "default member", list("A"), "one"
Check "by position", list.Item(1), "zero"
Dim all, value: all = ""
For Each value In list
    all = all & value & ";"
Next
Check "enumeration", all, "zero;one;"

' Objects keep their identity, the library's and the caller's
Class Local
    Public Number
End Class
Dim mine: Set mine = New Local: mine.Number = 42
list.Add mine, "mine"
Check "a caller's object", list("mine") Is mine, True
Check "its member", list("mine").Number, 42
list.Add list, "self"
Check "an own object", list("self") Is list, True
list.Remove "self"

' By-reference results
Dim general: Set general = Make("General")
Dim grid(2, 4), lower: lower = 77
Check "GetArrayUpperDimension", general.GetArrayUpperDimension(grid, lower), CLng(2)
Check "its lower bound", CLng(lower), CLng(0)
Check "GetArrayElemCount", general.GetArrayElemCount(grid, CByte(2)), CLng(5)

' Lists, arrays and dictionaries, the platform's included
Check "VariantToCSV", general.VariantToCSV(Array(1, "b", 3)), "1,b,3"
Dim numbers: numbers = general.CSVToVariant("1,2,3")
Check "CSVToVariant", general.VariantToCSV(numbers), "3,2,1"
Dim dictionary: Set dictionary = CreateObject("Scripting.Dictionary")
dictionary.Add "k", "v"
Dim result: result = general.CopyDictionaryToVariantArray(dictionary)
Check "the platform's dictionary", result(UBound(result)), "v"
Dim filled: Set filled = general.CopyVariantArrayToDictionary(Array("x", "y"), dictionary)
Check "the same dictionary", filled Is dictionary, True
Check "its new members", dictionary.Count, CLng(3)
Dim keyed: Set keyed = general.CopyVariantArrayToDictionary(Array("x", "y"))
Check "a new dictionary", keyed.Count & keyed.Exists("nothing") & TypeName(keyed), "2False" & TypeName(dictionary)
Check "it goes in again", general.CopyVariantArrayToDictionary(Array("z"), keyed) Is keyed, True
result = keyed.Items
Check "its items", result(0) & result(1) & result(2), "xyz"

Dim fixed(2): fixed(0) = "mine"
result = general.CopyDictionaryToVariantArray(dictionary, fixed)
Check "an array of fixed size stays", UBound(fixed) & fixed(0), "2mine"
Check "and the result comes", result(UBound(result)), "y"

' Arguments go on to default members, through properties that hold objects
Dim document: Set document = Make("Files").CreateINIFile("C:\vlgs-late-bound.ini")
document.CreateKey "S", "k", "v"
Dim section: Set section = document.Section("S")
Check "a section's key", section.Value("k").Value, "v"
Check "a section's key at two levels", document.Sections("S").Name & section("k").Name, "Sk"
Dim holder: Set holder = Make("ViewProperty")
Set holder.Value = holder
On Error Resume Next
holder.Value 1
Check "default members that lead to one another", Err.Number, CLng(450)
Err.Clear
On Error GoTo 0
Set holder.Value = Nothing

' Named errors
On Error Resume Next
Dim guid: Set guid = Make("GUID")
value = guid.IsEqualGUID("a", "b")
CheckError "GUID", -2147217504, "VlGeneralServices.GUID.IsEqualGUID", "Error Converting sGUID1 from String"
On Error Goto 0
Check "ProgIDFromGUID", guid.ProgIDFromGUID(guid.GUIDFromProgID("VlGeneralServices.Files")), "VlGeneralServices.Files"

' Members that never raise answer what does not convert
Dim tools: Set tools = Make("CorvaTools")
Dim misfit, number: number = 5
For Each misfit In Array(Null, Array(1))
    Check "KeyValue", document.KeyValue(misfit, "k"), ""
    Check "DeleteKey", document.DeleteKey(misfit, 1), False
    Check "Path", Make("Files").Path(misfit), ""
    Check "VariantToCSV", general.VariantToCSV(1, misfit), "0"
    Check "ParseDelimitedString", general.ParseDelimitedString(misfit, ",") Is Nothing, True
    Check "RevNumComp", Make("Conversion").RevNumComp(misfit, "1.0"), ""
    Check "Add", list.Add(1, misfit) <> 0, True
    Check "Hash", tools.Hash(misfit), CLng(0)
Next
Check "Hash of a number", tools.Hash(number), CLng(53)
Check "the number", number, CInt(5)

' Locks
Dim lock, granted, mine2, other: mine2 = "": granted = 0
Set lock = tools.InitiateLock2("C:\vlgs-late-bound.VLS", 2, mine2, granted)
Check "an exclusive lock", lock.KeyValue("User", "Access") & granted & mine2, "Exclusive2exclusive.~sr"
Check "it is found", tools.FindExclusiveLock("C:\vlgs-late-bound.VLS").KeyValue("User", "SessionID"), lock.KeyValue("User", "SessionID")
Check "not by its owner", tools.FindExclusiveLock("C:\vlgs-late-bound.VLS", mine2) Is Nothing, True
Set other = tools.InitiateLock3("C:\vlgs-late-bound.VLS", 4, , granted, "s")
Check "read-only in place of a conflict", other.KeyValue("User", "Access") & other.KeyValue("User", "RequestedAccess") & granted & other.KeyValue("User", "SessionID"), "ReadOnlyReadWrite1s"
Set other = tools.InitiateDocLock("C:\vlgs-late-bound.VLS", "{11111111-5B0B-4B52-9E0B-2C1F0C5A7EAF}")
Check "a document's lock", other.Filename & tools.IsDocLocked("C:\vlgs-late-bound.VLS", "{11111111-5b0b-4b52-9e0b-2c1f0c5a7eaf}"), "rw{11111111-5B0B-4B52-9E0B-2C1F0C5A7EAF}.~sdTrue"
On Error Resume Next
tools.InitiateLock "C:\vlgs-late-bound.VLS"
CheckError "a conflict", -2147209988, "VlGeneralServices.modCorvaTools.g_InitiateLock", ""
tools.InitiateLock "C:\vlgs-late-bound.VLS", 3
CheckError "no kind", -2147209980, "VlGeneralServices.modCorvaTools.g_InitiateLock", ""
tools.InitiateLock "C:\no such folder\a.VLS"
CheckError "no folder", -2147209981, "VlGeneralServices.modCorvaTools.g_InitiateLock", ""
On Error Goto 0
Set lock = Nothing: Set other = Nothing
Check "released", CreateObject("Scripting.FileSystemObject").FileExists("C:\exclusive.~sr"), False

' Texts of every kind
Dim packager, packed: Set packager = Make("ObjectPackager")
packed = packager.PackObject(mine)
Check "PackObject", packager.IsDescriptorFormat(packed), True
Check "UnpackObject", packager.UnpackObject(packed) Is mine, True
packed = packager.PackObject(list)
Check "UnpackObject of an own object", packager.UnpackObject(packed) Is list, True
Dim buffer: Set buffer = Make("Buffer")
packed = packager.PackObject(buffer)
Check "one reference", packager.RefCount(packed), CLng(1)
Dim second: Set second = buffer
Check "two references", packager.RefCount(packed), CLng(2)
Dim third: Set third = packager.UnpackObject(packed)
Check "three references", packager.RefCount(packed), CLng(3)
buffer.Delimiter = "|"
buffer.PutData "a" & Chr(0) & "b"
buffer.PutData String(100000, "x")
Check "embedded NUL and long text", Len(buffer.GetData(3)), CLng(100005)
Dim bytes: bytes = buffer.GetData(1)
Check "bytes", VarType(bytes), CInt(vbArray + vbByte)
Dim paths: Set paths = Make("Files")
Check "the root of a drive as a path", paths.Path("C:\"), "C:\"
Check "the root of a drive is valid", paths.IsValidPath("C:\"), True
Check "the root of a drive as a base", paths.TranslateFromRelativePathNoFileCheck("a.txt", "C:\"), "C:\a.txt"

Check "a record", IsEmpty(Make("Conversion").GetLocaleSettings), False

Dim values, registry: Set values = Make("RegValue")
Set registry = Make("RegUtil")
Check "SetCurrHive", registry.SetCurrHive(-2147483647), True
Check "SetCurrPath", registry.SetCurrPath("Software"), True
Check "AddKey", registry.AddKey("VlgsScriptTest", True), True
values.ValueName = "n": values.DataType = 1: values.Value = "text"
Check "AddOrUpdateValue", registry.AddOrUpdateValue(values), True
values.Value = ""
Check "GetValue", registry.GetValue(values), True
Check "the value", values.Value, "text"
Check "a path with a NUL", registry.SetCurrPath("Software\VlgsScriptTest" & Chr(0) & "x"), True
Check "ends before it", registry.CurrPath, "Software\VlgsScriptTest"
Check "RiseToParentKey", registry.RiseToParentKey, True
Check "DeleteKey", registry.DeleteKey("VlgsScriptTest"), True
Dim keys: Set keys = Make("Collection")
Check "EnumKeys", registry.EnumKeys(keys), True
Check "some keys", keys.Count > 0, True

WScript.Echo checks & " checks, " & failures & " failed"
WScript.Quit failures
