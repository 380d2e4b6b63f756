// SPDX-License-Identifier: MIT
// Threads that use the server and end while nothing else keeps it: it may not hang them, and it must unload
// and load again any number of times. The main thread never holds the server's file.
#include "Client.h"

#include <thread>

namespace {

void check(bool holds, const wchar_t* mode, const wchar_t* what) {
    ::check(holds, std::wstring(mode) + L": " + what);
}

bool isLoaded() {
    return GetModuleHandleW(L"VlGeneralServices.dll") != nullptr;
}

/// Calls a method by its name with an argument, or none; the status of the call.
HRESULT call(IDispatch* object, const wchar_t* name, _variant_t* argument, _variant_t& result) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    DISPPARAMS parameters{argument, nullptr, argument ? 1u : 0u, 0};
    EXCEPINFO failure{};
    const HRESULT status = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                          &result, &failure, nullptr);
    SysFreeString(failure.bstrSource);
    SysFreeString(failure.bstrDescription);
    return status;
}

/// Everything that leaves something on a thread: a counted object, a packed one (a foreign one too, which
/// never leaves the table), a caught exception and a message text.
void use(IClassFactory* packagers, IClassFactory* resources, const wchar_t* mode) {
    Pointer<IDispatch> packager, resource;
    packagers->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&packager));
    resources->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&resource));
    check(packager && resource, mode, L"objects");
    if (!packager || !resource)
        return;
    for (IUnknown* object : {static_cast<IUnknown*>(packager), static_cast<IUnknown*>(packagers)}) {
        _variant_t argument(object), descriptor;
        check(call(packager, L"PackObject", &argument, descriptor) == S_OK && descriptor.vt == VT_DECIMAL,
              mode, L"PackObject");
    }
    _variant_t number(123456L), text;
    call(resource, L"ResourceString", &number, text);
    check(call(resource, L"ResourceString", nullptr, text) != S_OK, mode, L"a failure");
}

using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);

Pointer<IClassFactory> factory(GetClassObject get, const wchar_t* name) {
    CLSID id{};
    CLSIDFromProgID((std::wstring(L"VlGeneralServices.") + name).c_str(), &id);
    Pointer<IClassFactory> result;
    if (get)
        get(id, IID_IClassFactory, reinterpret_cast<void**>(&result));
    else
        CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                         reinterpret_cast<void**>(&result));
    return result;
}

void useBoth(GetClassObject get, const wchar_t* mode) {
    const auto packagers = factory(get, L"ObjectPackager"), resources = factory(get, L"Resource");
    check(packagers && resources, mode, L"factories");
    if (packagers && resources)
        use(packagers, resources, mode);
}

void inApartment() {
    CoInitialize(nullptr);
    useBoth(nullptr, L"apartment");
    CoUninitialize();
}

/// COM lets go of the file while the thread lives, which then goes on and ends.
void unloadedBeforeTheEnd() {
    CoInitialize(nullptr);
    useBoth(nullptr, L"unloaded");
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    check(!isLoaded(), L"unloaded", L"the file is still there");
    useBoth(nullptr, L"loaded again");
    CoUninitialize();
}

void raw() {
    const HMODULE server = LoadLibraryW(serverPath().c_str());
    useBoth(serversFunction<GetClassObject>(server, "DllGetClassObject"), L"raw");
    check(serversFunction<CanUnload>(server, "DllCanUnloadNow")() == S_OK, L"raw", L"something is left");
    FreeLibrary(server);
}

/// The thread that ends last lets go of the file while others have used it and still live.
void rawInTurns() {
    const HMODULE server = LoadLibraryW(serverPath().c_str());
    const HANDLE unloaded = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread other([&] {
        useBoth(serversFunction<GetClassObject>(server, "DllGetClassObject"), L"in turns");
        FreeLibrary(server);
        check(!isLoaded(), L"in turns", L"the file is still there");
        SetEvent(unloaded);
    });
    WaitForSingleObject(unloaded, INFINITE);
    other.join();
    CloseHandle(unloaded);
}

void rounds(const wchar_t* mode, int count, void (*run)()) {
    for (int i = 0; i < count; ++i) {
        std::thread(run).join();
        check(!isLoaded(), mode, L"the file stays loaded");
    }
    std::printf("%ls: done\n", mode);
    std::fflush(stdout);
}

void allModes() {
    rounds(L"apartment", 20, &inApartment);
    rounds(L"unloaded before the end", 20, &unloadedBeforeTheEnd);
    rounds(L"in turns", 20, &rawInTurns);
}

} // namespace

int main() {
    // More rounds than a process has places for threads' data.
    rounds(L"raw", 1500, &raw);
    allModes();
    CoInitialize(nullptr); // an apartment that never uses the server
    allModes();
    CoUninitialize();
    return report("threads");
}
