// SPDX-License-Identifier: MIT
// The type library read from end to end, and every class used from another apartment, which goes through it.
#include "Client.h"

#include <functional>
#include <thread>
#include <vector>

namespace {

std::wstring taken(BSTR text) {
    std::wstring result(text ? text : L"");
    SysFreeString(text);
    return result;
}

std::wstring nameOf(ITypeInfo* info, MEMBERID member = MEMBERID_NIL) {
    BSTR name = nullptr;
    check(SUCCEEDED(info->GetDocumentation(member, &name, nullptr, nullptr, nullptr)), L"GetDocumentation");
    return taken(name);
}

/// What a type is in the end made of; every reference in it must lead somewhere.
TYPEKIND checkType(ITypeInfo* info, const TYPEDESC& type, const std::wstring& where) {
    if (type.vt == VT_PTR || type.vt == VT_SAFEARRAY)
        return checkType(info, *type.lptdesc, where);
    if (type.vt != VT_USERDEFINED)
        return type.vt == VT_DISPATCH || type.vt == VT_UNKNOWN ? TKIND_DISPATCH : TKIND_MAX;
    Pointer<ITypeInfo> referred;
    TYPEATTR* attributes = nullptr;
    check(SUCCEEDED(info->GetRefTypeInfo(type.hreftype, &referred)), where + L": its type");
    if (!referred || FAILED(referred->GetTypeAttr(&attributes)))
        return TKIND_MAX;
    const TYPEKIND kind = attributes->typekind;
    referred->ReleaseTypeAttr(attributes);
    return kind;
}

void checkParameter(ITypeInfo* info, const ELEMDESC& parameter, const std::wstring& where) {
    const TYPEKIND kind = checkType(info, parameter.tdesc, where);
    if (!(parameter.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT))
        return;
    check(kind != TKIND_DISPATCH && kind != TKIND_INTERFACE, where + L": an object with a default value");
    check(parameter.paramdesc.pparamdescex, where + L": its default value");
}

void checkFunctions(ITypeInfo* info, const TYPEATTR& attributes, int& parameters) {
    for (UINT i = 0; i < attributes.cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        const std::wstring where = nameOf(info) + L" function " + std::to_wstring(i);
        const HRESULT status = info->GetFuncDesc(i, &function);
        check(SUCCEEDED(status), where);
        if (FAILED(status))
            continue;
        const std::wstring name = nameOf(info) + L"." + nameOf(info, function->memid);
        BSTR names[64];
        UINT count = 0;
        check(SUCCEEDED(info->GetNames(function->memid, names, 64, &count)) && count > 0, name + L": names");
        for (UINT n = 0; n < count; ++n)
            SysFreeString(names[n]);
        checkType(info, function->elemdescFunc.tdesc, name);
        for (int p = 0; p < function->cParams; ++p, ++parameters)
            checkParameter(info, function->lprgelemdescParam[p], name + L" parameter " + std::to_wstring(p));
        info->ReleaseFuncDesc(function);
    }
}

void checkVariables(ITypeInfo* info, const TYPEATTR& attributes) {
    for (UINT i = 0; i < attributes.cVars; ++i) {
        VARDESC* variable = nullptr;
        const HRESULT status = info->GetVarDesc(i, &variable);
        check(SUCCEEDED(status), nameOf(info) + L" member " + std::to_wstring(i));
        if (FAILED(status))
            continue;
        check(!nameOf(info, variable->memid).empty(), nameOf(info) + L": a name");
        if (attributes.typekind == TKIND_ENUM)
            check(variable->varkind == VAR_CONST && variable->lpvarValue, nameOf(info) + L": a constant");
        info->ReleaseVarDesc(variable);
    }
    Pointer<IRecordInfo> record;
    if (attributes.typekind == TKIND_RECORD)
        check(SUCCEEDED(GetRecordInfoFromTypeInfo(info, &record)), nameOf(info) + L": a record");
}

/// A class that callers may create, and the typed interface that it has.
struct Creatable {
    std::wstring name;
    CLSID id;
    IID iid;
    Pointer<ITypeInfo> typed;
};

Creatable creatable(ITypeInfo* info, const TYPEATTR& attributes) {
    Creatable result{nameOf(info), attributes.guid, {}, {}};
    HREFTYPE reference = 0;
    Pointer<ITypeInfo> dispatch;
    info->GetRefTypeOfImplType(0, &reference);
    check(SUCCEEDED(info->GetRefTypeInfo(reference, &dispatch)), result.name + L": its interface");
    // The typed half of a dual interface.
    if (SUCCEEDED(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)))
        dispatch->GetRefTypeInfo(reference, &result.typed);
    else
        result.typed = dispatch;
    TYPEATTR* own = nullptr;
    if (SUCCEEDED(result.typed->GetTypeAttr(&own))) {
        result.iid = own->guid;
        result.typed->ReleaseTypeAttr(own);
    }
    return result;
}

std::vector<Creatable> readAll(ITypeLib* library) {
    std::vector<Creatable> result;
    int parameters = 0;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        Pointer<ITypeInfo> info;
        TYPEATTR* attributes = nullptr;
        check(SUCCEEDED(library->GetTypeInfo(i, &info)) && SUCCEEDED(info->GetTypeAttr(&attributes)),
              L"type " + std::to_wstring(i));
        if (!attributes)
            continue;
        checkFunctions(info, *attributes, parameters);
        checkVariables(info, *attributes);
        if (attributes->typekind == TKIND_COCLASS && (attributes->wTypeFlags & TYPEFLAG_FCANCREATE))
            result.push_back(creatable(info, *attributes));
        info->ReleaseTypeAttr(attributes);
    }
    check(parameters > 300 && result.size() > 10, L"all of the library");
    return result;
}

/// An apartment on a thread of its own that does what it is told between two messages.
class Apartment {
  public:
    Apartment() : ready_(CreateEventW(nullptr, TRUE, FALSE, nullptr)), thread_([this] { run(); }) {
        WaitForSingleObject(ready_, INFINITE);
    }
    ~Apartment() {
        PostThreadMessageW(id_, WM_QUIT, 0, 0);
        thread_.join();
        CloseHandle(ready_);
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    void does(std::function<void()> work) {
        const HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        std::function<void()> all = [&] {
            work();
            SetEvent(done);
        };
        PostThreadMessageW(id_, WM_APP, 0, reinterpret_cast<LPARAM>(&all));
        WaitForSingleObject(done, INFINITE);
        CloseHandle(done);
    }

  private:
    void run() {
        id_ = GetCurrentThreadId();
        CoInitialize(nullptr);
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE); // makes the queue
        SetEvent(ready_);
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            if (message.message == WM_APP && !message.hwnd)
                (*reinterpret_cast<std::function<void()>*>(message.lParam))();
            else
                DispatchMessageW(&message);
        }
        CoUninitialize();
    }
    HANDLE ready_;
    DWORD id_ = 0;
    std::thread thread_;
};

/// An interface of a new object that lives in the other apartment.
template <class T>
Pointer<T> made(Apartment& apartment, REFCLSID id, REFIID iid, const std::wstring& name) {
    Pointer<IStream> stream;
    apartment.does([&] {
        Pointer<IUnknown> object;
        check(SUCCEEDED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, iid,
                                         reinterpret_cast<void**>(&object))),
              name + L": create");
        check(object && SUCCEEDED(CoMarshalInterThreadInterfaceInStream(iid, object, &stream)),
              name + L": marshal");
    });
    Pointer<T> result;
    if (stream) {
        check(SUCCEEDED(CoGetInterfaceAndReleaseStream(stream, iid, reinterpret_cast<void**>(&result))),
              name + L": unmarshal");
        stream.Detach();
    }
    return result;
}

struct Outcome {
    HRESULT status = S_OK;
    _variant_t value;
    EXCEPINFO failure{};
};

/// Reads a property through a proxy of the object, by the typed interface or late bound.
Outcome get(const Creatable& one, IDispatch* proxy, const wchar_t* name, bool early,
            DISPPARAMS arguments = {}) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID id = 0;
    check(SUCCEEDED(early ? one.typed->GetIDsOfNames(&text, 1, &id)
                          : proxy->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id)),
          one.name + L": its member's number");
    Outcome outcome;
    outcome.status = early ? one.typed->Invoke(proxy, id, DISPATCH_PROPERTYGET, &arguments, &outcome.value,
                                               &outcome.failure, nullptr)
                           : proxy->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                           &arguments, &outcome.value, &outcome.failure, nullptr);
    return outcome;
}

void checkProxy(Apartment& apartment, const Creatable& one) {
    for (const bool early : {true, false}) {
        const auto proxy = made<IDispatch>(apartment, one.id, early ? one.iid : IID_IDispatch, one.name);
        if (!proxy)
            return;
        const auto outcome = get(one, proxy, L"ClassName", early);
        check(SUCCEEDED(outcome.status) &&
                  outcome.value == _variant_t((L"VlGeneralServices." + one.name).c_str()),
              one.name + (early ? L": early bound" : L": late bound"));
    }
}

/// A failure on the other side arrives with what it told.
void checkFailure(Apartment& apartment, const Creatable& guids) {
    const auto proxy = made<IDispatch>(apartment, guids.id, guids.iid, guids.name);
    if (!proxy)
        return;
    _variant_t arguments[] = {L"a", L"a"};
    for (const bool early : {true, false}) {
        const auto outcome = get(guids, proxy, L"IsEqualGUID", early, {arguments, nullptr, 2, 0});
        check(outcome.status == DISP_E_EXCEPTION && outcome.failure.scode == -2147217504,
              L"the failure's number");
        const std::wstring source = taken(outcome.failure.bstrSource);
        const std::wstring description = taken(outcome.failure.bstrDescription);
        if (early && source.empty()) // Wine leaves what typed calls tell besides on the other side
            continue;
        check(source == L"VlGeneralServices.GUID.IsEqualGUID", L"the failure's source: " + source);
        check(description == L"Error Converting sGUID1 from String",
              L"the failure's description: " + description);
    }
}

} // namespace

int main() {
    CoInitialize(nullptr);
    Pointer<ITypeLib> library;
    check(SUCCEEDED(LoadTypeLibEx(serverPath().c_str(), REGKIND_NONE, &library)), L"the type library");
    if (library) {
        const auto classes = readAll(library);
        Apartment other;
        for (const auto& one : classes) {
            if (one.name == L"DDE") // its creation fails by design
                continue;
            checkProxy(other, one);
            if (one.name == L"GUID")
                checkFailure(other, one);
        }
    }
    return report("type library");
}
