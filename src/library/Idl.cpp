// SPDX-License-Identifier: MIT
#include "library/Idl.h"

#include "automation/ClassInfo.h"
#include "base/Error.h"
#include "library/Classes.h"
#include "library/LibraryIdentity.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace vlgs {

namespace {

/// Text in front of everything, for the reader and for the interface compiler.
constexpr std::string_view heading =
    R"(// The interface definition of VlGeneralServices, emitted from the class descriptions: scripts/update_idl.sh

#ifdef VLGS_HEADER
import "oaidl.idl";
#define GUID GUIDServices // The system's headers have these names already.
#define _GUID _GUIDServices
#define VLGS_UNNAMED_DEFAULT(value)
#else
#define VLGS_UNNAMED_DEFAULT(value) , defaultvalue(value)
// The names of the system's types, without their definitions, among which is a type named GUID.
typedef wchar_t* BSTR;
typedef double DATE;
typedef short VARIANT_BOOL;
typedef long SCODE;
typedef long HRESULT;
typedef struct CURRENCY { hyper int64; } CURRENCY;
typedef struct VARIANT { hyper first; hyper second; } VARIANT;
[object, local, uuid(00000000-0000-0000-C000-000000000046)]
interface IUnknown {
    HRESULT QueryInterface();
    HRESULT AddRef();
    HRESULT Release();
};
[object, local, uuid(00020400-0000-0000-C000-000000000046)]
interface IDispatch : IUnknown {
    HRESULT GetTypeInfoCount();
    HRESULT GetTypeInfo();
    HRESULT GetIDsOfNames();
    HRESULT Invoke();
};
#endif

)";

std::string bare(const GuidValue& id) {
    const std::string text = guidText(id).toUtf8();
    return text.substr(1, text.size() - 2);
}

std::string number(std::int64_t value) {
    return std::to_string(value);
}

/// A text between quotation marks. The definition is one line per item, so line breaks become blanks.
std::string quoted(std::string_view text) {
    std::string result = "\"";
    bool blank = false;
    for (const char c : text) {
        if (c == '\r' || c == '\n') {
            blank = true;
            continue;
        }
        if (blank && c != ' ')
            result += ' ';
        blank = false;
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

std::string helpOf(std::string_view help) {
    return help.empty() ? std::string() : ", helpstring(" + quoted(help) + ")";
}

std::string interfaceName(const ClassInfo& info) {
    return "_" + std::string(info.name());
}

/// Whether the class stands in this library's definition; others travel as plain objects.
bool isOwn(const ClassInfo& info) {
    return std::ranges::find(classes(), &info) != classes().end();
}

std::string objectType(const TypeInfo& type) {
    if (type.enumerator)
        return "IUnknown*";
    if (type.classInfo && isOwn(type.classInfo()))
        return interfaceName(type.classInfo()) + "*";
    return "IDispatch*";
}

std::string plainType(VarType type) {
    switch (type) {
    case VarType::Integer:
        return "short";
    case VarType::Long:
        return "long";
    case VarType::Single:
        return "float";
    case VarType::Double:
        return "double";
    case VarType::Currency:
        return "CURRENCY";
    case VarType::Date:
        return "DATE";
    case VarType::String:
        return "BSTR";
    case VarType::Object:
        return "IDispatch*";
    case VarType::Error:
        return "SCODE";
    case VarType::Boolean:
        return "VARIANT_BOOL";
    case VarType::Variant:
        return "VARIANT";
    case VarType::Byte:
        return "unsigned char";
    default:
        throw std::logic_error("a type that the interface definition has no name for");
    }
}

std::string typeName(const TypeInfo& type) {
    if (type.enumeration)
        return std::string(type.enumeration->name);
    if (type.record)
        return std::string(type.record->name);
    if (type.type == VarType::Object)
        return objectType(type);
    if (code(type.type) & code(VarType::Array))
        return "SAFEARRAY(" + plainType(VarType(code(type.type) & ~code(VarType::Array))) + ")";
    return plainType(type.type);
}

/// The default of an enumeration, by name where it has one: C++ takes no number for it.
std::string enumerationDefault(const EnumInfo& type, std::int32_t value) {
    const auto named = std::ranges::find(type.members, value, &EnumMember::value);
    return named == type.members.end() ? " VLGS_UNNAMED_DEFAULT(" + number(value) + ")"
                                       : ", defaultvalue(" + std::string(named->name) + ")";
}

/// The attributes for an argument that may be left out. Only a Variant can be missing; every other type has
/// a value that stands for it, an object none.
std::string optionality(const ParameterInfo& parameter) {
    if (!parameter.optional)
        return "";
    const auto& defaultValue = parameter.defaultValue;
    const bool text = parameter.type.type == VarType::String;
    if (parameter.type.type == VarType::Variant && defaultValue.kind == DefaultValue::Kind::None)
        return ", optional";
    if (text && parameter.type.byReference)
        return ", optional"; // interface compilers know no default for a reference to a text
    if (parameter.type.type == VarType::Object)
        return ", optional"; // nor readers of type libraries one for an object
    if (text || defaultValue.kind == DefaultValue::Kind::Text)
        return ", optional, defaultvalue(" + quoted(String(defaultValue.text).toUtf8()) + ")";
    if (parameter.type.enumeration && !parameter.type.byReference)
        return ", optional" + enumerationDefault(*parameter.type.enumeration, defaultValue.number);
    return ", optional, defaultvalue(" + number(defaultValue.number) + ")";
}

std::string parameterText(const ParameterInfo& parameter) {
    std::string direction = parameter.type.byReference ? "in, out" : "in";
    std::string type = typeName(parameter.type);
    if (parameter.type.byReference || parameter.type.record)
        type += "*";
    return "[" + direction + optionality(parameter) + "] " + type + " " + std::string(parameter.name);
}

std::string_view kindAttribute(InvokeKind kind) {
    switch (kind) {
    case InvokeKind::PropertyGet:
        return ", propget";
    case InvokeKind::PropertyPut:
        return ", propput";
    case InvokeKind::PropertyPutRef:
        return ", propputref";
    default:
        return "";
    }
}

std::string idText(DispatchId id) {
    if (id >= 0)
        return number(id);
    char digits[8];
    const auto end = std::to_chars(digits, digits + 8, static_cast<std::uint32_t>(id), 16).ptr;
    return "0x" + std::string(digits, end);
}

std::string attributesOf(const MemberInfo& member) {
    return "        [id(" + idText(member.id) + ")" + std::string(kindAttribute(member.kind)) +
           (member.hidden ? ", hidden" : "") + helpOf(member.help) + "]\n";
}

std::string parametersOf(const MemberInfo& member) {
    std::string result;
    for (const auto& parameter : member.parameters)
        result += (result.empty() ? "" : ", ") + parameterText(parameter);
    return result;
}

std::string memberText(const MemberInfo& member) {
    std::string parameters = parametersOf(member);
    if (member.result.type != VarType::Empty)
        parameters +=
            (parameters.empty() ? "" : ", ") + ("[out, retval] " + typeName(member.result)) + "* result";
    return attributesOf(member) + "        HRESULT " + std::string(member.name) + "(" + parameters + ");\n";
}

std::string interfaceText(const ClassInfo& info) {
    std::string result = "    [odl, uuid(" + bare(info.header().interfaceId) +
                         "), hidden, dual, nonextensible, oleautomation" + helpOf(info.header().help) +
                         "]\n    interface " + interfaceName(info) + " : IDispatch {\n";
    for (const auto& member : info.members())
        result += memberText(member);
    return result + "    };\n\n";
}

std::string eventsText(const ClassInfo& info) {
    if (info.header().eventInterface.empty())
        return "";
    std::string result = "    [uuid(" + bare(info.header().eventInterfaceId) +
                         "), hidden]\n    dispinterface " + std::string(info.header().eventInterface) +
                         " {\n        properties:\n        "
                         "methods:\n";
    for (const auto& event : info.events())
        result += attributesOf(event) + "        void " + std::string(event.name) + "(" +
                  parametersOf(event) + ");\n";
    return result + "    };\n\n";
}

std::string classText(const ClassInfo& info) {
    std::string result = "    [uuid(" + bare(info.header().classId) + ")" +
                         (info.header().creatable ? "" : ", noncreatable") + helpOf(info.header().help) +
                         "]\n    coclass " + std::string(info.name()) + " {\n        [default] interface " +
                         interfaceName(info) + ";\n";
    if (!info.header().eventInterface.empty())
        result +=
            "        [default, source] dispinterface " + std::string(info.header().eventInterface) + ";\n";
    result += "    };\n\n";
    return result;
}

std::string enumerationText(const EnumInfo& info) {
    std::string members;
    for (const auto& member : info.members)
        members += (members.empty() ? "        " : ",\n        ") + std::string(member.name) + " = " +
                   number(member.value);
    return "    typedef [uuid(" + bare(info.id) + ")" + helpOf(info.help) + "]\n    enum " +
           std::string(info.name) + " {\n" + members + "\n    } " + std::string(info.name) + ";\n\n";
}

std::string recordText(const RecordInfo& info) {
    std::string fields;
    for (const auto field : info.fields)
        fields += "        BSTR " + std::string(field) + ";\n";
    const std::string name(info.name);
    return "    typedef [uuid(" + bare(info.id) + ")" + helpOf(info.help) + "]\n    struct " + name + " {\n" +
           fields + "    } " + name + ";\n\n";
}

std::string escapedForXml(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

} // namespace

std::string interfaceDefinition() {
    std::string result(heading);
    result += "[uuid(" + bare(libraryId) + "), version(" + number(libraryMajor) + "." + number(libraryMinor) +
              "), helpstring(\"General services: INI documents, project files, values, lists, registry\")]\n"
              "library VlGeneralServices {\n    importlib(\"stdole2.tlb\");\n\n";
    for (const auto* info : classes())
        result += "    interface " + interfaceName(*info) + ";\n";
    result += "\n";
    for (const auto* info : enumerations())
        result += enumerationText(*info);
    for (const auto* info : records())
        result += recordText(*info);
    for (const auto* info : classes())
        result += interfaceText(*info) + eventsText(*info) + classText(*info);
    return result + "};\n";
}

std::string sideBySideManifest() {
    std::string result = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">
  <assemblyIdentity type="win32" name="VlGeneralServices" version=")" +
                         number(VLGS_VERSION_MAJOR) + "." + number(VLGS_VERSION_MINOR) + ".0." +
                         number(VLGS_VERSION_REVISION) + R"("/>
  <file name="VlGeneralServices.dll">
)";
    const std::string library = guidText(libraryId).toUtf8();
    for (const auto* info : classes())
        if (info->header().creatable)
            result += "    <comClass clsid=\"" + guidText(info->header().classId).toUtf8() + "\" progid=\"" +
                      info->programmaticId().toUtf8() + "\" tlbid=\"" + library +
                      "\" threadingModel=\"Apartment\" description=\"" + escapedForXml(info->header().help) +
                      "\"/>\n";
    result += "    <typelib tlbid=\"" + library + "\" version=\"" + number(libraryMajor) + "." +
              number(libraryMinor) + "\" helpdir=\"\"/>\n  </file>\n";
    for (const auto* info : classes())
        result += "  <comInterfaceExternalProxyStub name=\"" + interfaceName(*info) + "\" iid=\"" +
                  guidText(info->header().interfaceId).toUtf8() +
                  "\" proxyStubClsid32=\"{00020424-0000-0000-C000-000000000046}\" tlbid=\"" + library +
                  "\"/>\n";
    return result + "  <file name=\"VlComRes.dll\"/>\n</assembly>\n";
}

} // namespace vlgs
