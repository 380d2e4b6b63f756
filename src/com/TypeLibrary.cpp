// SPDX-License-Identifier: MIT
#include "com/TypeLibrary.h"

#include "base/Error.h"
#include "com/Failure.h"
#include "com/ThreadState.h"
#include "library/Classes.h"

#include <vector>

namespace vlgs::com {

namespace {

void check(HRESULT status) {
    if (FAILED(status))
        raiseStatus(status);
}

ComPtr<ITypeLib> loadTypeLibrary() {
    ComPtr<ITypeLib> library;
    check(LoadTypeLibEx(wide(modulePath().data()), REGKIND_NONE, library.put()));
    return library;
}

const RecordInfo* findRecord(REFIID id) {
    for (const auto* info : records())
        if (toGuid(info->id) == id)
            return info;
    return nullptr;
}

// A record's fields are texts, so that its memory is one pointer after the other.
BSTR* fieldsOf(void* record) {
    return static_cast<BSTR*>(record);
}

} // namespace

String modulePath() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&loadTypeLibrary), &module);
    std::vector<wchar_t> path(MAX_PATH);
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size())
            return std::u16string_view(narrow(path.data()), length);
        path.resize(path.size() * 2);
    }
}

ComPtr<ITypeInfo> typeInfoOf(const GuidValue& id) {
    ComPtr<ITypeLib> library;
    if (ThreadState* state = ThreadState::find()) {
        if (!state->typeLibrary)
            state->typeLibrary = loadTypeLibrary();
        library = state->typeLibrary;
    } else {
        library = loadTypeLibrary();
    }
    ComPtr<ITypeInfo> info;
    check(library->GetTypeInfoOfGuid(toGuid(id), info.put()));
    return info;
}

Variant fromRecord(const VARIANT& value) {
    ::GUID id{};
    if (!value.pRecInfo || !value.pvRecord || FAILED(value.pRecInfo->GetGuid(&id)))
        raise(RunTimeError::TypeMismatch);
    const RecordInfo* info = findRecord(id);
    if (!info)
        raise(RunTimeError::TypeMismatch);
    std::vector<Variant> fields;
    for (std::size_t i = 0; i < info->fields.size(); ++i)
        fields.emplace_back(toString(fieldsOf(value.pvRecord)[i]));
    return Variant::ofRecord(make<Record>(*info, std::move(fields)));
}

void toRecord(const Ref<Record>& record, VARIANT& to) {
    ComPtr<IRecordInfo> info;
    check(GetRecordInfoFromTypeInfo(typeInfoOf(record->info().id).get(), info.put()));
    OleVariant result;
    VARIANT& value = result.get();
    value.pvRecord = info->RecordCreate();
    if (!value.pvRecord)
        throw std::bad_alloc();
    value.vt = VT_RECORD;
    value.pRecInfo = info.detach();
    for (std::size_t i = 0; i < record->fields().size(); ++i)
        fieldsOf(value.pvRecord)[i] = toBstr(record->fields()[i].text());
    to = value;
    value.vt = VT_EMPTY;
}

} // namespace vlgs::com
