// SPDX-License-Identifier: MIT
// Turns a project file into its connection string and a date into the form that does not depend on the machine.
//
//     cscript connection.js C:\projects\demo.VLS 31.12.2009
if (WScript.Arguments.length < 2) {
    WScript.Echo("usage: cscript connection.js PROJECTFILE DATE");
    WScript.Quit(2);
}
var files = new ActiveXObject("VlGeneralServices.Files");
WScript.Echo(files.BuildConnectionStringFromPath(WScript.Arguments(0)));

var conversion = new ActiveXObject("VlGeneralServices.Conversion");
try {
    WScript.Echo(conversion.CUniversalDate(WScript.Arguments(1)));
} catch (error) {
    WScript.Echo("error " + error.number + ": " + error.description);
}
