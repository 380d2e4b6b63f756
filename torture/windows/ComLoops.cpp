// SPDX-License-Identifier: MIT
// Creates objects of the COM server, lets a call fail on each and releases them; memory and handles may not
// grow.
//
//     ComLoops COUNT
//
// Prints how many. Ends with status 1 when something grows.
#include <windows.h>

#include <oleauto.h>
#include <psapi.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);

/// The factories of all classes in the server's type library.
std::vector<IClassFactory*> factories(GetClassObject get, const wchar_t* server) {
    std::vector<IClassFactory*> found;
    ITypeLib* library = nullptr;
    if (FAILED(LoadTypeLibEx(server, REGKIND_NONE, &library)))
        return found;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ITypeInfo* type = nullptr;
        TYPEATTR* attributes = nullptr;
        if (FAILED(library->GetTypeInfo(i, &type)) || FAILED(type->GetTypeAttr(&attributes)))
            continue;
        IClassFactory* factory = nullptr;
        if (attributes->typekind == TKIND_COCLASS && (attributes->wTypeFlags & TYPEFLAG_FCANCREATE) &&
            SUCCEEDED(get(attributes->guid, IID_IClassFactory, reinterpret_cast<void**>(&factory))))
            found.push_back(factory);
        type->ReleaseTypeAttr(attributes);
        type->Release();
    }
    library->Release();
    return found;
}

/// Creates, fails, releases.
void use(IClassFactory* factory) {
    IDispatch* object = nullptr;
    if (FAILED(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&object))))
        return; // DDE, always
    auto* name = const_cast<wchar_t*>(L"ClassName");
    DISPID id = DISPID_UNKNOWN;
    object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    VARIANT argument;
    argument.vt = VT_BSTR;
    argument.bstrVal = SysAllocString(L"too much");
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    EXCEPINFO failure{};
    object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &parameters, nullptr, &failure,
                   nullptr);
    SysFreeString(failure.bstrSource);
    SysFreeString(failure.bstrDescription);
    SysFreeString(failure.bstrHelpFile);
    VariantClear(&argument);
    object->Release();
}

struct Held {
    std::size_t bytes = 0;
    DWORD handles = 0;
};

Held heldNow() {
    Held held;
    PROCESS_MEMORY_COUNTERS memory{};
    if (GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory))
        held.bytes = memory.PagefileUsage;
    GetProcessHandleCount(GetCurrentProcess(), &held.handles);
    return held;
}

} // namespace

/// A tenth of the loops lets caches fill; what then grows by more than `slack` grows for ever.
int main(int count, char** words) {
    constexpr SIZE_T slack = 1 << 20;
    CoInitialize(nullptr);
    const wchar_t* server = L"VlGeneralServices.dll";
    const HMODULE module = LoadLibraryW(server);
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(module, path, MAX_PATH);
    const auto get = module ? reinterpret_cast<GetClassObject>(
                                  reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")))
                            : nullptr;
    const auto all = get ? factories(get, path) : std::vector<IClassFactory*>();
    if (count != 2 || all.empty())
        return 2;
    const long loops = std::strtol(words[1], nullptr, 10);
    Held before;
    for (long i = 0; i < loops; ++i) {
        if (i == loops / 10)
            before = heldNow();
        use(all[static_cast<std::size_t>(i) % all.size()]);
    }
    const Held after = heldNow();
    std::printf("%ld\n", loops);
    if (after.bytes <= before.bytes + slack && after.handles <= before.handles)
        return 0;
    std::fprintf(stderr, "bytes %zu to %zu, handles %lu to %lu\n", before.bytes, after.bytes, before.handles,
                 after.handles);
    return 1;
}
