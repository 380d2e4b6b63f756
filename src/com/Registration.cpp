// SPDX-License-Identifier: MIT
#include "com/Registration.h"

#include "automation/ClassInfo.h"
#include "base/CaseFold.h"
#include "base/Owned.h"
#include "base/Text.h"
#include "com/Failure.h"
#include "com/TypeLibrary.h"
#include "library/Classes.h"
#include "library/LibraryIdentity.h"

#include <olectl.h>
#include <vector>

// Not every set of headers declares these.
extern "C" HRESULT STDMETHODCALLTYPE RegisterTypeLibForUser(ITypeLib*, OLECHAR*, OLECHAR*);
extern "C" HRESULT STDMETHODCALLTYPE UnRegisterTypeLibForUser(REFIID, WORD, WORD, LCID, SYSKIND);

namespace vlgs::com {

namespace {

/// A status of the registry as an exception on its way to the one caller below.
struct Failed {
    HRESULT status;
};

void check(HRESULT status) {
    if (FAILED(status))
        throw Failed{status};
}

const wchar_t* const classesPath = L"Software\\Classes";

/// A path without the short names that some of its folders may have been called by.
String longForm(const String& path) {
    std::vector<wchar_t> text(32768);
    const DWORD length = GetLongPathNameW(wide(path.data()), text.data(), static_cast<DWORD>(text.size()));
    return length > 0 && length < text.size() ? String(std::u16string_view(narrow(text.data()), length))
                                              : path;
}

void closeKey(HKEY key) noexcept {
    RegCloseKey(key);
}
using Key = Owned<HKEY, &closeKey>;

/// The part of the registry that holds the classes.
class ClassesKey {
  public:
    explicit ClassesKey(Scope scope)
        : root_(scope == Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER) {
        HKEY key = nullptr;
        check(HRESULT_FROM_WIN32(static_cast<DWORD>(
            RegCreateKeyExW(root_, classesPath, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr))));
        key_ = Key(key);
    }

    void set(const String& path, const wchar_t* name, const String& value) const {
        check(HRESULT_FROM_WIN32(static_cast<DWORD>(
            RegSetKeyValueW(key_.get(), wide(path.data()), name, REG_SZ, value.data(),
                            static_cast<DWORD>((value.length() + 1) * sizeof(char16_t))))));
    }
    /// The unnamed value of a key as a path in its long form; "" when there is none.
    String file(const String& path) const {
        std::vector<wchar_t> text(32768); // what a path may have
        auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        if (RegGetValueW(key_.get(), wide(path.data()), nullptr, RRF_RT_REG_SZ, nullptr, text.data(),
                         &size) != ERROR_SUCCESS)
            return {};
        return longForm(std::u16string_view(narrow(text.data())));
    }
    void remove(const String& path) const {
        const auto status = static_cast<DWORD>(RegDeleteTreeW(key_.get(), wide(path.data())));
        if (status != ERROR_FILE_NOT_FOUND)
            check(HRESULT_FROM_WIN32(status));
        RegDeleteKeyW(key_.get(), wide(path.data()));
    }

    /// Whether programs of the other word size have the key. Where there is one view, they see the same keys.
    bool hasOtherView(const String& path) const {
        constexpr REGSAM other = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
        const String whole = concat(narrow(classesPath), u"\\", path);
        return static_cast<bool>(opened(root_, wide(whole.data()), KEY_READ | other));
    }

    /// Removes a key unless something else stands in it.
    void removeEmpty(const wchar_t* path) const {
        DWORD keys = 0;
        DWORD values = 0;
        Key key = opened(key_.get(), path, KEY_READ);
        if (!key)
            return;
        RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                         nullptr, nullptr, nullptr);
        key.reset();
        if (keys == 0 && values == 0)
            RegDeleteKeyW(key_.get(), path);
    }

  private:
    static Key opened(HKEY below, const wchar_t* path, REGSAM access) {
        HKEY key = nullptr;
        return RegOpenKeyExW(below, path, 0, access, &key) == ERROR_SUCCESS ? Key(key) : Key();
    }

    HKEY root_;
    Key key_;
};

String versioned(const ClassInfo& info) {
    return concat(info.programmaticId(), u".", decimal(libraryMajor));
}

String classPath(const ClassInfo& info) {
    return concat(u"CLSID\\", guidText(info.header().classId));
}

String serverPath(const ClassInfo& info) {
    return concat(classPath(info), u"\\InprocServer32");
}

/// Where the path of the type library's file stands. Versions are hexadecimal there.
String libraryPath() {
    static_assert(libraryMajor < 10 && libraryMinor < 10);
    return concat(u"TypeLib\\", guidText(libraryId), u"\\", decimal(libraryMajor), u".",
                  decimal(libraryMinor), sizeof(void*) == 8 ? u"\\0\\win64" : u"\\0\\win32");
}

void registerClass(const ClassesKey& key, const ClassInfo& info, const String& module) {
    const String& name = info.programmaticId();
    const String help = String::fromUtf8(info.header().help);
    const String id = guidText(info.header().classId);
    key.set(name, nullptr, help);
    key.set(concat(name, u"\\CLSID"), nullptr, id);
    key.set(concat(name, u"\\CurVer"), nullptr, versioned(info));
    key.set(versioned(info), nullptr, help);
    key.set(concat(versioned(info), u"\\CLSID"), nullptr, id);
    const String path = classPath(info);
    key.set(path, nullptr, help);
    key.set(serverPath(info), nullptr, module);
    key.set(serverPath(info), L"ThreadingModel", u"Apartment");
    // Whoever asks for the name of a class gets the one that clients use, which bears no version.
    key.set(concat(path, u"\\ProgID"), nullptr, name);
    key.set(concat(path, u"\\VersionIndependentProgID"), nullptr, name);
    key.set(concat(path, u"\\TypeLib"), nullptr, guidText(libraryId));
    key.set(concat(path, u"\\Version"), nullptr, concat(decimal(libraryMajor), u".", decimal(libraryMinor)));
    key.set(concat(path, u"\\Programmable"), nullptr, String());
}

void removeClass(const ClassesKey& key, const ClassInfo& info) {
    key.remove(classPath(info));
    if (key.hasOtherView(classPath(info)))
        return; // the build for the other word size needs the names
    key.remove(info.programmaticId());
    key.remove(versioned(info));
}

void registerTypeLibrary(Scope scope, const String& module) {
    ComPtr<ITypeLib> library;
    check(LoadTypeLibEx(wide(module.data()), REGKIND_NONE, library.put()));
    auto* path = const_cast<wchar_t*>(wide(module.data()));
    check(scope == Scope::Machine ? RegisterTypeLib(library.get(), path, nullptr)
                                  : RegisterTypeLibForUser(library.get(), path, nullptr));
}

/// Whether the library that programs find is another copy's. Some systems register for one user what belongs
/// to all.
bool isOthersLibrary(const String& module) {
    BSTR path = nullptr;
    if (FAILED(QueryPathOfRegTypeLib(toGuid(libraryId), libraryMajor, libraryMinor, 0, &path)))
        return false;
    const String file = longForm(std::u16string_view(narrow(path)));
    SysFreeString(path);
    return !file.empty() && !equalIgnoringCase(file, module);
}

void removeTypeLibrary(Scope scope) {
    constexpr SYSKIND system = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
    const auto remove = scope == Scope::Machine ? &UnRegisterTypeLib : &UnRegisterTypeLibForUser;
    const HRESULT status = remove(toGuid(libraryId), libraryMajor, libraryMinor, 0, system);
    // A library that is not registered is no failure; Wine calls that an invalid argument.
    if (status != TYPE_E_REGISTRYACCESS && status != TYPE_E_LIBNOTREGISTERED && status != E_INVALIDARG)
        check(status);
}

/// Runs a step of registration and gives its status.
template <class Step>
HRESULT statusOf(Step&& step) noexcept {
    try {
        step();
        return S_OK;
    } catch (const Failed& failed) {
        return failed.status;
    } catch (const Error&) {
        return SELFREG_E_CLASS;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

} // namespace

HRESULT registerServer(Scope scope) noexcept {
    const HRESULT status = statusOf([scope] {
        const ClassesKey key(scope);
        const String module = modulePath();
        registerTypeLibrary(scope, module);
        for (const auto* info : classes())
            if (info->header().creatable)
                registerClass(key, *info, module);
    });
    if (FAILED(status))
        unregisterServer(scope);
    return status;
}

HRESULT unregisterServer(Scope scope) noexcept {
    return statusOf([scope] {
        const ClassesKey key(scope);
        const String module = longForm(modulePath());
        // What another copy of the file has registered since stays.
        const auto isOthers = [&](const String& path) {
            const String file = key.file(path);
            return !file.empty() && !equalIgnoringCase(file, module);
        };
        for (const auto* info : classes())
            if (info->header().creatable && !isOthers(serverPath(*info)))
                removeClass(key, *info);
        if (!isOthers(libraryPath()) && !isOthersLibrary(module))
            removeTypeLibrary(scope);
        key.removeEmpty(L"CLSID");
    });
}

HRESULT registerServer() noexcept {
    const HRESULT status = registerServer(Scope::Machine);
    return status == E_ACCESSDENIED || status == TYPE_E_REGISTRYACCESS ? registerServer(Scope::User) : status;
}

HRESULT unregisterServer() noexcept {
    const HRESULT user = unregisterServer(Scope::User);
    const HRESULT machine = unregisterServer(Scope::Machine);
    return machine == E_ACCESSDENIED ? user : machine;
}

} // namespace vlgs::com
