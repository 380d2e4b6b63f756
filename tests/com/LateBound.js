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

WScript.Echo(checks + " checks, " + failures + " failed");
WScript.Quit(failures);
