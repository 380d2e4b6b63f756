// SPDX-License-Identifier: MIT
// The same from the other engine, which passes everything by value and looks members up exactly.
var failures = 0, checks = 0;
function check(what, found, wanted) {
    ++checks;
    if (found === wanted) return;
    ++failures;
    WScript.Echo("FAILED " + what + ": found " + typeof found + " " + found + ", wanted " + wanted);
}
function failure(action) {
    try { action(); } catch (error) { return error; }
    return { number: 0, description: "" };
}

var list = new ActiveXObject("VlGeneralServices.Collection");
check("Add", list.Add("one", "a"), 0);
check("Item", list.Item("A"), "one");
check("default member", list("a"), "one");
check("no value", list.Item("none"), undefined);
var own = { Number: 42 };
list.Add(own, "own");
check("a script's object", list.Item("own") === own, true);
var seen = [];
for (var items = new Enumerator(list); !items.atEnd(); items.moveNext()) seen.push(typeof items.item());
check("enumeration", seen.join(), "string,object");

var guid = new ActiveXObject("VlGeneralServices.GUID");
var error = failure(function () { guid.IsEqualGUID("a", "b"); });
check("number", error.number, -2147217504);
check("description", error.description, "Error Converting sGUID1 from String");
error = failure(function () { new ActiveXObject("VlGeneralServices.INIFile"); });
check("not creatable", error.number !== 0, true);

var buffer = new ActiveXObject("VlGeneralServices.Buffer");
buffer.ChunkSize = 50;
check("property", buffer.ChunkSize, 50);
buffer.Delimiter = ",";
buffer.PutData("x");
check("text", buffer.GetData(3), "x,");

// The micro sign and the Greek letter: one name to the library's collections, and to a host perhaps two.
var registry = new ActiveXObject("VlGeneralServices.RegUtil");
var value = new ActiveXObject("VlGeneralServices.RegValue");
registry.SetCurrHive(-2147483647);
registry.SetCurrPath("Software");
check("AddKey", registry.AddKey("VlgsScriptTest", true), true);
value.ValueName = "\u00B5"; value.DataType = 1; value.Value = "text";
check("AddOrUpdateValue", registry.AddOrUpdateValue(value), true);
check("RenameValue", registry.RenameValue("\u00B5", "\u03BC"), true);
value.ValueName = "\u03BC";
check("the renamed value", registry.GetValue(value), true);
var found = new ActiveXObject("VlGeneralServices.Collection");
check("EnumValues", registry.EnumValues(found), true);
check("one name holds it", found.Count, 1);
value.ValueName = "\u00B5";
check("a value of the old name", registry.AddOrUpdateValue(value), true);
found = new ActiveXObject("VlGeneralServices.Collection");
check("EnumValues of names that the collection does not tell apart", registry.EnumValues(found), true);
registry.RiseToParentKey();
check("DeleteKey", registry.DeleteKey("VlgsScriptTest"), true);

WScript.Echo(checks + " checks, " + failures + " failed");
WScript.Quit(failures);
