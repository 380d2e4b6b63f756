// SPDX-License-Identifier: MIT
// The navigator over the registry.
#pragma once

#include "frame/Component.h"
#include "registry/RegValue.h"

#include <set>

namespace vlgs {

class RegistryKey;
enum class RegistryStatus : std::int32_t;

/// Keeps a current hive (at first HKEY_CLASSES_ROOT) and a current key path (at first "", the hive itself)
/// and works on the key there, which it opens for every operation anew.
///
/// Nothing here raises. Every operation answers whether it succeeded, and a failure leaves its reason in
/// `LastErrorValue`, which a success does not clear: 18 for no collection, 19 for no RegValue, 20 and 21 for
/// a key or value name without a character but blanks (these come first, and open no key), 13 for data that
/// the type cannot hold, the number that a collection's `Add` answered or raised, else the registry's status
/// code. A failure changes neither the path nor the RegValue that was given.
class VLGS_API RegUtil final : public CountedComponent {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// Always True; a number that is no hive is found out by the next operation (status 6). The path stays.
    bool SetCurrHive(enumHives eHive) noexcept;
    enumHives CurrHive() const noexcept { return hive_; }

    /// Moves to a key that can be opened for everything, or for `eKeyAccess`. "" is the hive itself.
    bool SetCurrPath(const String& sKeyPath);
    bool SetCurrPathWithAccess(const String& sKeyPath, enumRegSecurity& eKeyAccess);

    bool DropToSubKey(const String& sSubKey);

    /// False, with the last error as it was, at the hive and at its keys of the first level.
    bool RiseToParentKey();

    String CurrPath() const { return path_; }

    /// Reads the value of that name into the record. Texts (types 1 and 2) end before their first NUL, lists
    /// of texts (7) are one text with NULs between, 32-bit numbers (4 and 5) are Longs, everything else is an
    /// array of bytes. Data of 1024 characters or more, or as many bytes, fails with 234.
    bool GetValue(const Ref<RegValue>& oRegValue);

    enumRegUtilError LastErrorValue() const noexcept { return lastError_; }

    /// Stores the record. Types 1 and 2 hold texts, 7 a text with NULs between its parts or an array of
    /// texts, 4 and 5 whole numbers of 32 bits, with or without sign; all other types hold bytes: an array's,
    /// a text's in the system's code page, a number's as memory holds it.
    bool AddOrUpdateValue(const Ref<RegValue>& oRegValue);

    /// Adds a RegValue for each value, its name as its key; only here the key's default value is seen, under
    /// the name "". As `GetValue` reads them, but for binary data (type 3), which is the hexadecimal digits
    /// of the bytes from the last to the first. A value with a name of more than 1023 characters or data of
    /// more than 1024 (a text's end counts) is left out, and the answer is False with 234. Of two names that
    /// the host tells apart and the collection does not, the second one is added without a key. What another
    /// process changes meanwhile is in the list whole or not at all.
    bool EnumValues(const Ref<Object>& cValues);

    bool DeleteValue(const Ref<RegValue>& oRegValue);

    /// Adds the name of each subkey, itself as its key.
    bool EnumKeys(const Ref<Object>& cKeys);

    /// Makes a key with all missing levels above it; one that is there is good as well.
    bool AddKey(const String& sKeyName, bool bSetPathToNewKey = false);

    /// Fails with 5 for a key that has subkeys.
    bool DeleteKey(const String& sKeyName);

    /// A value that has the new name is replaced. The value is never lost, whatever happens meanwhile.
    bool RenameValue(const String& sOldName, const String& sNewName);

    /// Adds the names that the current path is made of, with "1", "2" and so on as their keys.
    bool EnumPath(const Ref<Object>& cPathKeys);

  private:
    bool fail(std::int32_t reason) noexcept;
    bool check(RegistryStatus status) noexcept;
    bool checkName(const String& name, enumRegUtilError reason) noexcept;
    bool checkValue(const Ref<RegValue>& value) noexcept;
    bool openCurrent(std::uint32_t access, RegistryKey& key);
    bool moveTo(const String& path, std::uint32_t access);
    bool add(const Ref<Object>& collection, const Variant& item, const Variant& key);
    /// Without a key where the name differs from one in `added` in a way that the collection does not see.
    bool addNamed(const Ref<Object>& collection, const Variant& item, const String& name,
                  std::set<String>& added);

    enumHives hive_ = eHiveClassesRoot;
    String path_;
    enumRegUtilError lastError_ = eVBErr;
};

constexpr auto RegUtil::describe() {
    return describeClass<RegUtil>(
        {.name = "RegUtil",
         .help = "A navigator over the registry",
         .number = eInterfaceID_RegUtil,
         .classId = guid("39784667-B7A8-486E-8AF6-F06608075AB9"),
         .interfaceId = guid("6917F134-E578-4AD4-AFAA-C071F1A5D384"),
         .creatable = true},
        identity(),
        method<&RegUtil::SetCurrHive>(1, "SetCurrHive", "Sets the current hive",
                                      parameter("eHive", "the hive")),
        get<&RegUtil::CurrHive>(2, "CurrHive", "The current hive"),
        method<&RegUtil::SetCurrPath>(
            3, "SetCurrPath", "Moves to a key of the hive",
            parameter("sKeyPath", "the path below the hive; an empty text for the hive itself")),
        method<&RegUtil::SetCurrPathWithAccess>(
            4, "SetCurrPathWithAccess", "Moves to a key of the hive that allows some access",
            parameter("sKeyPath", "the path below the hive; an empty text for the hive itself"),
            parameter("eKeyAccess", "what the key must allow")),
        method<&RegUtil::DropToSubKey>(5, "DropToSubKey", "Moves to a key below the current one",
                                       parameter("sSubKey", "the name of a key below the current one")),
        method<&RegUtil::RiseToParentKey>(6, "RiseToParentKey", "Moves to the key above the current one"),
        get<&RegUtil::CurrPath>(7, "CurrPath", "The path of the current key below its hive"),
        method<&RegUtil::GetValue>(8, "GetValue", "Reads a value by its name",
                                   parameter("oRegValue", "the record of the value, found by its name")),
        get<&RegUtil::LastErrorValue>(9, "LastErrorValue", "The reason of the last failure"),
        method<&RegUtil::AddOrUpdateValue>(
            10, "AddOrUpdateValue", "Stores a value",
            parameter("oRegValue", "the record of the value, found by its name")),
        method<&RegUtil::EnumValues>(
            11, "EnumValues", "Adds the values of the current key to a collection",
            parameter("cValues", "a collection, to which a RegValue for each value is added")),
        method<&RegUtil::DeleteValue>(12, "DeleteValue", "Deletes a value",
                                      parameter("oRegValue", "the record of the value, found by its name")),
        method<&RegUtil::EnumKeys>(13, "EnumKeys", "Adds the names of the subkeys to a collection",
                                   parameter("cKeys", "a collection, to which the names are added")),
        method<&RegUtil::AddKey>(14, "AddKey", "Makes a key below the current one",
                                 parameter("sKeyName", "the key's name below the current one"),
                                 optional("bSetPathToNewKey", "whether the new key becomes the current one")),
        method<&RegUtil::DeleteKey>(15, "DeleteKey", "Deletes a key below the current one",
                                    parameter("sKeyName", "the key's name below the current one")),
        method<&RegUtil::RenameValue>(
            16, "RenameValue", "Gives a value another name", parameter("sOldName", "the value's name"),
            parameter("sNewName", "its new name; a value of that name is replaced")),
        method<&RegUtil::EnumPath>(17, "EnumPath", "Adds the names of the current path to a collection",
                                   parameter("cPathKeys", "a collection, to which the names are added")));
}

} // namespace vlgs
