// SPDX-License-Identifier: MIT
// What the client programs have in common: checks that are counted, and the server beside the program.
#pragma once

#include <windows.h>

#include <comdef.h>

#include <cstdio>
#include <string>

inline int failures = 0;

inline void check(bool holds, const std::wstring& what) {
    if (holds)
        return;
    ++failures;
    std::printf("FAILED %ls\n", what.c_str());
}

/// Prints how many checks failed; what `main` ends with.
inline int report(const char* program) {
    std::printf("%s: %d failed\n", program, failures);
    std::fflush(stdout);
    return failures ? 1 : 0;
}

template <class T>
using Pointer = _com_ptr_t<_com_IIID<T, &__uuidof(T)>>;

inline std::wstring serverPath() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program(path);
    return program.substr(0, program.find_last_of(L'\\') + 1) + L"VlGeneralServices.dll";
}

template <class Function>
Function serversFunction(HMODULE server, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(server, name)));
}
using CanUnload = HRESULT(STDMETHODCALLTYPE*)();
