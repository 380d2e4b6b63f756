// SPDX-License-Identifier: MIT
// The functions that the operating system calls in the library's file.
#include "com/ClassFactory.h"
#include "com/Module.h"
#include "com/Registration.h"

#include <cwchar>

extern "C" {

HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID classId, REFIID iid, void** result) {
    return vlgs::com::ClassFactory::find(classId, iid, result);
}

HRESULT STDMETHODCALLTYPE DllCanUnloadNow() {
    return vlgs::com::ModuleLock::any() ? S_FALSE : S_OK;
}

HRESULT STDMETHODCALLTYPE DllRegisterServer() {
    return vlgs::com::registerServer();
}

HRESULT STDMETHODCALLTYPE DllUnregisterServer() {
    return vlgs::com::unregisterServer();
}

/// `regsvr32 /n /i:user VlGeneralServices.dll` registers for the present user alone.
HRESULT STDMETHODCALLTYPE DllInstall(BOOL install, LPCWSTR command) {
    using namespace vlgs::com;
    if (!command || std::wcscmp(command, L"user") != 0)
        return E_INVALIDARG;
    return install ? registerServer(Scope::User) : unregisterServer(Scope::User);
}
}
