// Threads that use the server and end while nothing else keeps it: it may not hang them, and it must unload
// and load again any number of times. The main thread never holds the server's file.
#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <cstdio>
#include <string>
#include <thread>

namespace {

int failures = 0;

void check(bool holds, const char* mode, const char* what) {
    if (holds)
        return;
    ++failures;
    std::printf("FAILED %s: %s\n", mode, what);
}

std::wstring serverPath() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring result(path);
    return result.substr(0, result.find_last_of(L'\\') + 1) + L"VlGeneralServices.dll";
}

bool isLoaded() {
    return GetModuleHandleW(L"VlGeneralServices.dll") != nullptr;
}

/// Calls a member by its name with what an argument list holds; the status of the call.
HRESULT call(IDispatch* object, const wchar_t* name, VARIANT* arguments, UINT count, VARIANT* result) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    DISPPARAMS parameters{arguments, nullptr, count, 0};
    EXCEPINFO failure{};
    const HRESULT status = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                          result, &failure, nullptr);
    SysFreeString(failure.bstrSource);
    SysFreeString(failure.bstrDescription);
    return status;
}

/// Everything that leaves something on a thread: a counted object, a packed one (a foreign one too, which
/// never leaves the table), a caught exception and a message text.
void use(IClassFactory* packagers, IClassFactory* resources, const char* mode) {
    IDispatch* packager = nullptr;
    IDispatch* resource = nullptr;
    packagers->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&packager));
    resources->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&resource));
    check(packager && resource, mode, "objects");
    if (!packager || !resource)
        return;
    for (IUnknown* object : {static_cast<IUnknown*>(packager), static_cast<IUnknown*>(packagers)}) {
        VARIANT argument;
        argument.vt = VT_UNKNOWN;
        argument.punkVal = object;
        VARIANT descriptor;
        VariantInit(&descriptor);
        check(call(packager, L"PackObject", &argument, 1, &descriptor) == S_OK && descriptor.vt == VT_DECIMAL,
              mode, "PackObject");
    }
    VARIANT number;
    number.vt = VT_I4;
    number.lVal = 123456;
    VARIANT text;
    VariantInit(&text);
    call(resource, L"ResourceString", &number, 1, &text);
    check(call(resource, L"ResourceString", nullptr, 0, &text) != S_OK, mode, "a failure");
    VariantClear(&text);
    resource->Release();
    packager->Release();
}

using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);

IClassFactory* factory(GetClassObject get, const wchar_t* name) {
    CLSID id{};
    CLSIDFromProgID((std::wstring(L"VlGeneralServices.") + name).c_str(), &id);
    void* result = nullptr;
    if (get)
        get(id, IID_IClassFactory, &result);
    else
        CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, &result);
    return static_cast<IClassFactory*>(result);
}

void useBoth(GetClassObject get, const char* mode) {
    IClassFactory* packagers = factory(get, L"ObjectPackager");
    IClassFactory* resources = factory(get, L"Resource");
    check(packagers && resources, mode, "factories");
    if (!packagers || !resources)
        return;
    use(packagers, resources, mode);
    resources->Release();
    packagers->Release();
}

void inApartment() {
    CoInitialize(nullptr);
    useBoth(nullptr, "apartment");
    CoUninitialize();
}

/// COM lets go of the file while the thread lives, which then goes on and ends.
void unloadedBeforeTheEnd() {
    CoInitialize(nullptr);
    useBoth(nullptr, "unloaded");
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    check(!isLoaded(), "unloaded", "the file is still there");
    useBoth(nullptr, "loaded again");
    CoUninitialize();
}

void raw() {
    const HMODULE server = LoadLibraryW(serverPath().c_str());
    useBoth(reinterpret_cast<GetClassObject>(
                reinterpret_cast<void*>(GetProcAddress(server, "DllGetClassObject"))),
            "raw");
    const auto canUnload = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(server, "DllCanUnloadNow")));
    check(canUnload() == S_OK, "raw", "something is left");
    FreeLibrary(server);
}

/// The thread that ends last lets go of the file while others have used it and still live.
void rawInTurns() {
    const HMODULE server = LoadLibraryW(serverPath().c_str());
    const HANDLE unloaded = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread other([&] {
        useBoth(reinterpret_cast<GetClassObject>(
                    reinterpret_cast<void*>(GetProcAddress(server, "DllGetClassObject"))),
                "in turns");
        FreeLibrary(server);
        check(!isLoaded(), "in turns", "the file is still there");
        SetEvent(unloaded);
    });
    WaitForSingleObject(unloaded, INFINITE);
    other.join();
    CloseHandle(unloaded);
}

void rounds(const char* mode, int count, void (*run)()) {
    for (int i = 0; i < count; ++i) {
        std::thread(run).join();
        check(!isLoaded(), mode, "the file stays loaded");
    }
    std::printf("%s: done\n", mode);
    std::fflush(stdout);
}

void allModes() {
    rounds("apartment", 20, &inApartment);
    rounds("unloaded before the end", 20, &unloadedBeforeTheEnd);
    rounds("in turns", 20, &rawInTurns);
}

} // namespace

int main() {
    // More rounds than a process has places for threads' data.
    rounds("raw", 1500, &raw);
    allModes();
    CoInitialize(nullptr); // an apartment that never uses the server
    allModes();
    CoUninitialize();
    std::printf("threads: %d failed\n", failures);
    return failures ? 1 : 0;
}
