// SPDX-License-Identifier: MIT
#include "registry/RegUtil.h"

#include "automation/LateBound.h"
#include "base/CaseFold.h"
#include "base/Text.h"
#include "platform/Registry.h"
#include "registry/RegistryConversion.h"

namespace vlgs {

namespace {

constexpr std::uint32_t readAccess = registryAccess::readControl | registryAccess::queryValue;
constexpr std::uint32_t fullAccess = readAccess | registryAccess::setValue | registryAccess::createSubKey |
                                     registryAccess::enumerateSubKeys | registryAccess::notify |
                                     registryAccess::createLink;
/// Room for a name, its end included, and for the data of a value.
constexpr std::size_t bufferSize = 1024;

RegistryKey hiveKey(enumHives hive) {
    // By their meaning: the platform's own numbers of the last two are other ones.
    switch (hive) {
    case eHiveClassesRoot:
        return RegistryKey(RegistryHive::ClassesRoot);
    case eHiveCurrUser:
        return RegistryKey(RegistryHive::CurrentUser);
    case eHiveLocalMachine:
        return RegistryKey(RegistryHive::LocalMachine);
    case eHiveUsers:
        return RegistryKey(RegistryHive::Users);
    case eHiveCurrConfig:
        return RegistryKey(RegistryHive::CurrentConfig);
    case eHiveDynData:
        return RegistryKey(RegistryHive::DynData);
    }
    return RegistryKey();
}

/// Adds to a collection of any origin: one raises its failures, another one answers their numbers. 0 for
/// none.
std::int32_t failureOfAdding(const Ref<Object>& collection, const Variant& item, const Variant& key) {
    try {
        const Variant answer = call(collection, u"Add", item, key);
        return answer.is(VarType::Long) ? answer.number() : 0;
    } catch (const Error& error) {
        return error.number();
    }
}

} // namespace

const ClassInfo& RegUtil::description() {
    return classInfoOf<RegUtil>();
}

bool RegUtil::fail(std::int32_t reason) noexcept {
    lastError_ = static_cast<enumRegUtilError>(reason);
    return false;
}

bool RegUtil::check(RegistryStatus status) noexcept {
    return status == RegistryStatus::Success || fail(static_cast<std::int32_t>(status));
}

bool RegUtil::checkName(const String& name, enumRegUtilError reason) noexcept {
    return !trim(cutAtNul(name)).empty() || fail(reason);
}

bool RegUtil::checkValue(const Ref<RegValue>& value) noexcept {
    return value ? checkName(value->ValueName(), eNoValueString) : fail(eNoRegValueObject);
}

bool RegUtil::openCurrent(std::uint32_t access, RegistryKey& key) {
    return check(hiveKey(hive_).open(path_, access, key));
}

bool RegUtil::moveTo(const String& path, std::uint32_t access) {
    RegistryKey key;
    if (!check(hiveKey(hive_).open(path, access, key)))
        return false;
    path_ = cutAtNul(path); // as the host took it
    return true;
}

bool RegUtil::add(const Ref<Object>& collection, const Variant& item, const Variant& key) {
    const auto failure = failureOfAdding(collection, item, key);
    return failure == 0 || fail(failure);
}

bool RegUtil::addNamed(const Ref<Object>& collection, const Variant& item, const String& name,
                       std::set<String>& added) {
    const bool isNew = added.insert(foldCase(name)).second;
    const auto failure = failureOfAdding(collection, item, name);
    if (!isNew && failure == static_cast<std::int32_t>(RunTimeError::KeyAlreadyPresent))
        return add(collection, item, missing);
    return failure == 0 || fail(failure);
}

bool RegUtil::SetCurrHive(enumHives eHive) noexcept {
    hive_ = eHive;
    return true;
}

bool RegUtil::SetCurrPath(const String& sKeyPath) {
    return moveTo(sKeyPath, fullAccess);
}

bool RegUtil::SetCurrPathWithAccess(const String& sKeyPath, enumRegSecurity& eKeyAccess) {
    return moveTo(sKeyPath, static_cast<std::uint32_t>(eKeyAccess));
}

bool RegUtil::DropToSubKey(const String& sSubKey) {
    return checkName(sSubKey, eNoKeyString) &&
           moveTo(path_.empty() ? sSubKey : concat(path_, u"\\", sSubKey), fullAccess);
}

bool RegUtil::RiseToParentKey() {
    const auto end = path_.view().rfind(u'\\');
    return end != path_.view().npos && end > 0 && SetCurrPath(path_.view().substr(0, end));
}

bool RegUtil::GetValue(const Ref<RegValue>& oRegValue) {
    RegistryKey key;
    RegistryData data;
    if (!checkValue(oRegValue) || !openCurrent(readAccess, key) ||
        !check(key.query(oRegValue->ValueName(), data)))
        return false;
    if (registryLength(data) - (endsInNul(data) ? 1 : 0) >= bufferSize)
        return check(RegistryStatus::MoreData);
    oRegValue->SetDataType(static_cast<enumRegDataType>(data.type));
    oRegValue->SetValue(registryValueOf(data, BinaryForm::Bytes));
    return true;
}

bool RegUtil::AddOrUpdateValue(const Ref<RegValue>& oRegValue) {
    if (!checkValue(oRegValue))
        return false;
    RegistryData data;
    try {
        data = registryDataOf(oRegValue->Value(), static_cast<std::uint32_t>(oRegValue->DataType()));
    } catch (const Error& error) {
        return fail(error.number());
    }
    RegistryKey key;
    return openCurrent(fullAccess, key) && check(key.set(oRegValue->ValueName(), data));
}

bool RegUtil::EnumValues(const Ref<Object>& cValues) {
    RegistryKey key;
    if (!cValues)
        return fail(eNoCollection);
    if (!openCurrent(readAccess, key))
        return false;
    std::vector<RegistryValue> all;
    if (!check(key.values(all)))
        return false;
    bool complete = true;
    std::set<String> added;
    for (const auto& [name, data] : all) {
        if (name.length() >= bufferSize || registryLength(data) > bufferSize) {
            complete = check(RegistryStatus::MoreData);
            continue;
        }
        const auto value = make<RegValue>();
        value->SetValueName(name);
        value->SetDataType(static_cast<enumRegDataType>(data.type));
        value->SetValue(registryValueOf(data, BinaryForm::ReversedHexadecimal));
        if (!addNamed(cValues, value, name, added))
            return false;
    }
    return complete;
}

bool RegUtil::DeleteValue(const Ref<RegValue>& oRegValue) {
    RegistryKey key;
    return checkValue(oRegValue) && openCurrent(fullAccess, key) &&
           check(key.deleteValue(oRegValue->ValueName()));
}

bool RegUtil::EnumKeys(const Ref<Object>& cKeys) {
    RegistryKey key;
    if (!cKeys)
        return fail(eNoCollection);
    if (!openCurrent(fullAccess, key))
        return false;
    std::vector<String> names;
    if (!check(key.keyNames(names)))
        return false;
    std::set<String> added;
    for (const auto& name : names)
        if (!addNamed(cKeys, name, name, added))
            return false;
    return true;
}

bool RegUtil::AddKey(const String& sKeyName, bool bSetPathToNewKey) {
    RegistryKey key;
    RegistryKey made;
    return checkName(sKeyName, eNoKeyString) && openCurrent(fullAccess, key) &&
           check(key.create(sKeyName, fullAccess, made)) && (!bSetPathToNewKey || DropToSubKey(sKeyName));
}

bool RegUtil::DeleteKey(const String& sKeyName) {
    RegistryKey key;
    return checkName(sKeyName, eNoKeyString) && openCurrent(fullAccess, key) &&
           check(key.deleteKey(sKeyName));
}

bool RegUtil::RenameValue(const String& sOldName, const String& sNewName) {
    RegistryKey key;
    return checkName(sOldName, eNoValueString) && checkName(sNewName, eNoValueString) &&
           openCurrent(fullAccess, key) && check(key.renameValue(sOldName, sNewName));
}

bool RegUtil::EnumPath(const Ref<Object>& cPathKeys) {
    if (!cPathKeys)
        return fail(eNoCollection);
    std::int64_t position = 0;
    for (const auto name : split(path_, u"\\"))
        if (!name.empty() && !add(cPathKeys, String(name), decimal(++position)))
            return false;
    return true;
}

} // namespace vlgs
