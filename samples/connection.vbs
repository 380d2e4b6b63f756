' SPDX-License-Identifier: MIT
' Turns a project file into its connection string and a date into the form that does not depend on the machine.
'
'     cscript connection.vbs C:\projects\demo.VLS 31.12.2009
Option Explicit
If WScript.Arguments.Count < 2 Then
    WScript.Echo "usage: cscript connection.vbs PROJECTFILE DATE"
    WScript.Quit 2
End If

Dim files: Set files = CreateObject("VlGeneralServices.Files")
WScript.Echo files.BuildConnectionStringFromPath(WScript.Arguments(0))

Dim conversion: Set conversion = CreateObject("VlGeneralServices.Conversion")
On Error Resume Next
WScript.Echo conversion.CUniversalDate(WScript.Arguments(1))
If Err.Number <> 0 Then WScript.Echo "error " & Err.Number & " " & Err.Source & ": " & Err.Description
