// SPDX-License-Identifier: MIT
// The operating system's functions and what every use of them here needs.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "base/Owned.h"
#include "base/String.h"

#include <vector>

namespace vlgs::windows {

inline const wchar_t* wide(const char16_t* text) noexcept {
    return reinterpret_cast<const wchar_t*>(text);
}

/// A path or name as the functions take it; one with a NUL inside names nothing, so it becomes "".
class WideText {
  public:
    explicit WideText(std::u16string_view text)
        : text_(text.find(u'\0') == text.npos ? String(text) : String()) {}
    const wchar_t* get() const noexcept { return wide(text_.data()); }
    bool empty() const noexcept { return text_.empty(); }

  private:
    String text_;
};

/// The text that a function writes into a buffer and whose length it returns, or the size that it needs:
/// `const auto folder = textOf([](wchar_t* to, DWORD size) { return GetCurrentDirectoryW(size, to); })`. ""
/// when the function fails.
template <class Function>
String textOf(Function&& function) {
    std::vector<wchar_t> buffer(MAX_PATH);
    for (;;) {
        const DWORD length = function(buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length < buffer.size())
            return std::u16string_view(reinterpret_cast<const char16_t*>(buffer.data()), length);
        buffer.resize(length + 1);
    }
}

inline void closeHandle(HANDLE handle) noexcept {
    CloseHandle(handle);
}
inline void closeKey(HKEY key) noexcept {
    RegCloseKey(key);
}
inline void closeSearch(HANDLE search) noexcept {
    FindClose(search);
}
inline void closeLibrary(HMODULE library) noexcept {
    FreeLibrary(library);
}

/// An open handle of a file.
using Handle = Owned<HANDLE, &closeHandle, -1>;
using Key = Owned<HKEY, &closeKey>;
using Search = Owned<HANDLE, &closeSearch, -1>;
using Library = Owned<HMODULE, &closeLibrary>;

/// Raises the run time's error for an error code of the operating system.
[[noreturn]] void raiseHostError(DWORD error);
[[noreturn]] void raiseLastError();

} // namespace vlgs::windows
