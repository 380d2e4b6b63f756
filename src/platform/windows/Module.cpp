// SPDX-License-Identifier: MIT
#include "platform/Module.h"

#include "platform/Files.h"
#include "platform/windows/Host.h"

namespace vlgs {

using namespace windows;

namespace {

constexpr int levelsUp = 3;

String moduleFile() {
    static const char here = 0;
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&here), &module);
    return textOf([module](wchar_t* to, DWORD size) {
        const DWORD length = GetModuleFileNameW(module, to, size);
        return length == size ? size * 2 : length; // it cuts the path instead of telling its length
    });
}

std::u16string_view parentOf(std::u16string_view path) {
    const std::size_t slash = path.rfind(u'\\');
    return slash == path.npos ? std::u16string_view() : path.substr(0, slash);
}

} // namespace

String moduleFolder() {
    const String file = moduleFile();
    const std::u16string_view folder = parentOf(file);
    return folder.ends_with(u':') ? concat(folder, u"\\") : String(folder);
}

String moduleFileName() {
    const String file = moduleFile();
    return file.view().substr(parentOf(file).size() + 1);
}

String resourcePath(std::u16string_view name) {
    const String file = moduleFile();
    std::u16string_view folder = parentOf(file);
    for (int i = 0; i <= levelsUp && !folder.empty(); ++i, folder = parentOf(folder))
        for (const auto* place : {u"\\resources\\", u"\\share\\VlGeneralServices\\resources\\"})
            if (auto path = concat(folder, place, name); fileExists(path))
                return path;
    return {};
}

} // namespace vlgs
