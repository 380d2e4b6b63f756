// SPDX-License-Identifier: MIT
// A compiled client: every interface through its vtable, from the header that the interface definition gives.
// The server is found by registration or, in the other build of this program, by a manifest.
#include "Client.h"

#include <VlGeneralServices/Interfaces.h>

#include <climits>
#include <cstring>
#include <thread>

namespace {

template <class T>
Pointer<T> create(const wchar_t* name) {
    Pointer<T> object;
    object.CreateInstance((std::wstring(L"VlGeneralServices.") + name).c_str());
    return object;
}

/// What every interface has.
template <class T>
void checkClass(const wchar_t* name, long number) {
    const auto object = create<T>(name);
    check(object, L"create");
    if (!object)
        return;
    _bstr_t text;
    long found = 0;
    check(object->get_ClassName(text.GetAddress()) == S_OK && text == L"VlGeneralServices." + _bstr_t(name),
          L"ClassName");
    check(object->get_ClassVersion(text.GetAddress()) == S_OK && text == _bstr_t(L"9.1002.23"),
          L"ClassVersion");
    check(object->get_ClassID(&found) == S_OK && found == number, L"ClassID");
    check(object->get_ClassID(nullptr) == E_POINTER, L"null pointer for a result");
    const Pointer<ISupportErrorInfo> support(object);
    check(support && support->InterfaceSupportsErrorInfo(__uuidof(T)) == S_OK, L"ISupportErrorInfo");
    check(Pointer<IUnknown>(support).GetInterfacePtr() == Pointer<IUnknown>(object).GetInterfacePtr(),
          L"one identity");
    Pointer<ITypeInfo> info;
    check(object->GetTypeInfo(0, 0, &info) == S_OK, L"GetTypeInfo");
    const Pointer<IProvideClassInfo> provider(object);
    check(provider && provider->GetClassInfo(&info) == S_OK, L"IProvideClassInfo");
}

void checkClasses() {
    checkClass<_Collection>(L"Collection", 151);
    checkClass<_Files>(L"Files", 153);
    checkClass<_General>(L"General", 154);
    checkClass<_GUIDServices>(L"GUID", 155);
    checkClass<_RegUtil>(L"RegUtil", 158);
    checkClass<_RegValue>(L"RegValue", 159);
    checkClass<_CorvaTools>(L"CorvaTools", 160);
    checkClass<_Buffer>(L"Buffer", 161);
    checkClass<_Restricted>(L"Restricted", 162);
    checkClass<_ViewProperty>(L"ViewProperty", 164);
    checkClass<_ObjectPackager>(L"ObjectPackager", 165);
    checkClass<_Conversion>(L"Conversion", 166);
    checkClass<_Cipher>(L"Cipher", 161);
    check(create<_Resource>(L"Resource"), L"create Resource");
    for (const auto* name : {L"INIFile", L"Property", L"ViewProperties", L"DDE"})
        check(!create<IUnknown>(name), L"not creatable");
}

_variant_t none() {
    _variant_t result(long{DISP_E_PARAMNOTFOUND});
    result.vt = VT_ERROR;
    return result;
}

void checkCollection() {
    const auto list = create<_Collection>(L"Collection");
    long status = -1;
    const _variant_t item(7L);
    check(list->Add(item, _bstr_t(L"key"), none(), none(), &status) == S_OK && status == 0, L"Add");
    check(list->Add(item, _bstr_t(L"KEY"), none(), none(), &status) == S_OK && status == 457, L"same key");
    _variant_t found;
    check(list->get_Item(_variant_t(L"Key"), &found) == S_OK && found == item, L"Item");
    Pointer<IUnknown> unknown;
    check(list->NewEnum(&unknown) == S_OK && unknown, L"NewEnum");
    const Pointer<IEnumVARIANT> items(unknown);
    ULONG count = 0;
    check(items && items->Next(1, &found, &count) == S_OK && count == 1 && found == item, L"Next");
    check(items->Next(1, &found, &count) == S_FALSE && count == 0, L"behind the last");
    // A stream has no dispatch interface, and no array of callable objects can hold it.
    _variant_t streams;
    streams.vt = VT_ARRAY | VT_UNKNOWN;
    streams.parray = SafeArrayCreateVector(VT_UNKNOWN, 0, 1);
    CreateStreamOnHGlobal(nullptr, TRUE, static_cast<IStream**>(streams.parray->pvData));
    check(list->Add(streams, _bstr_t(L"streams"), none(), none(), &status) == S_OK && status == 0,
          L"Add streams");
    check(list->get_Item(_variant_t(L"streams"), &found) == S_OK && found.vt == VT_EMPTY, L"Item of streams");
}

void checkLocks() {
    const auto tools = create<_CorvaTools>(L"CorvaTools");
    const _bstr_t path(L"C:\\vlgs-early-bound.VLS");
    _bstr_t name;
    enumUserLockTypes granted = eUserLock_ReadOnly;
    Pointer<_INIFile> lock, again;
    check(tools->InitiateLock2(path, eUserLock_Exclusive, name.GetAddress(), &granted, &lock) == S_OK &&
              lock && name == _bstr_t(L"exclusive.~sr") && granted == eUserLock_Exclusive,
          L"an exclusive lock");
    check(static_cast<long>(tools->InitiateLock(path, eUserLock_ReadWrite, nullptr, &again)) == -2147209988L,
          L"which excludes others");
    check(tools->FindExclusiveLock(path, nullptr, &again) == S_OK && again, L"and is found");
    lock = nullptr;
    Pointer<_INIFile> second;
    check(tools->FindExclusiveLock(path, nullptr, &second) == S_OK && !second, L"until it is released");
}

void checkErrors() {
    VARIANT_BOOL equal = 0;
    const HRESULT status =
        create<_GUIDServices>(L"GUID")->get_IsEqualGUID(_bstr_t(L"a"), _bstr_t(L"b"), &equal);
    check(static_cast<long>(status) == -2147217504L, L"the number is the status");
    Pointer<IErrorInfo> info;
    _bstr_t source, description;
    check(GetErrorInfo(0, &info) == S_OK, L"error information");
    info->GetSource(source.GetAddress());
    info->GetDescription(description.GetAddress());
    check(source == _bstr_t(L"VlGeneralServices.GUID.IsEqualGUID"), L"source");
    check(description == _bstr_t(L"Error Converting sGUID1 from String"), L"description");
}

void checkRecord() {
    const auto conversion = create<_Conversion>(L"Conversion");
    udtLocaleSettings settings{};
    check(conversion->GetLocaleSettings(&settings) == S_OK && SysStringLen(settings.sDecimal) == 1,
          L"record by the vtable");
    for (BSTR text :
         {settings.sDecimal, settings.sThousands, settings.sNegative, settings.sPositive, settings.sListSep,
          settings.sLongDate, settings.sTime, settings.sDate, settings.sShortDate})
        SysFreeString(text);
    _variant_t result;
    DISPID id = 0;
    auto* name = const_cast<wchar_t*>(L"GetLocaleSettings");
    conversion->GetIDsOfNames(IID_NULL, &name, 1, 0, &id);
    DISPPARAMS nothing{};
    check(conversion->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &nothing, &result, nullptr, nullptr) == S_OK &&
              result.vt == VT_RECORD && result.pRecInfo,
          L"record late bound");
}

/// A packed object is known by the pointer that its caller has, and counts what callers hold.
void checkPackager() {
    const auto packager = create<_ObjectPackager>(L"ObjectPackager");
    const auto object = create<_Buffer>(L"Buffer");
    _variant_t packed;
    long number = 0;
    check(packager->PackObject(object, &number, &packed) == S_OK && packed.vt == VT_DECIMAL, L"PackObject");
    const auto address = reinterpret_cast<INT_PTR>(object.GetInterfacePtr());
    check(address > LONG_MAX || number == address, L"lObjPtr is the pointer");
    long inside = 0;
    std::memcpy(&inside, reinterpret_cast<const char*>(&packed) + 8, sizeof inside);
    check(inside == number, L"and stands in the descriptor");
    check(std::memcmp(reinterpret_cast<const char*>(&packed) + 12, object.GetInterfacePtr(), 4) == 0,
          L"the signature");
    long counts[3] = {};
    packager->get_RefCount(packed, &counts[0]);
    object->AddRef();
    packager->get_RefCount(packed, &counts[1]);
    Pointer<IDispatch> unpacked;
    packager->UnpackObject(packed, &unpacked);
    packager->get_RefCount(packed, &counts[2]);
    check(counts[0] == 1 && counts[1] == 2 && counts[2] == 3, L"references are counted");
    object->Release();
}

/// What members hand out has the types that the type library tells.
void checkResults() {
    SAFEARRAY* levels = nullptr;
    VARTYPE type = VT_EMPTY;
    check(create<_Files>(L"Files")->ExtractPathAllLevels(_bstr_t(L"C:\\a\\b"), &levels) == S_OK &&
              SafeArrayGetVartype(levels, &type) == S_OK && type == VT_BSTR,
          L"an array of texts");
    SafeArrayDestroy(levels);
    _variant_t list;
    list.vt = VT_ARRAY | VT_BSTR;
    list.parray = SafeArrayCreateVector(VT_BSTR, 0, 2);
    Pointer<IDispatch> made, result;
    check(create<_General>(L"General")->CopyVariantArrayToDictionary(list, &made, &result) == S_OK && made &&
              made.GetInterfacePtr() == result.GetInterfacePtr(),
          L"a new dictionary");
    constexpr IID dictionaryId{0x42C642C1, 0x97E1, 0x11CF, {0x97, 0x8F, 0x00, 0xA0, 0x24, 0x63, 0xE0, 0x6F}};
    Pointer<IUnknown> dictionary;
    check(result && result->QueryInterface(dictionaryId, reinterpret_cast<void**>(&dictionary)) == S_OK,
          L"it is the platform's");
}

/// Another apartment has objects of its own.
void checkThreads() {
    std::thread other([] {
        CoInitialize(nullptr);
        checkCollection();
        checkErrors();
        CoUninitialize();
    });
    checkCollection();
    other.join();
}

/// Objects made, used, failed and let go of, early and late bound, in any order.
void checkLifetimes() {
    for (int i = 0; i < 2000; ++i) {
        const auto first = create<_Collection>(L"Collection"), second = create<_Collection>(L"Collection");
        long status = 0;
        first->Add(_variant_t(static_cast<IDispatch*>(second)), nullptr, none(), none(), &status);
        checkErrors();
    }
}

void checkUnload() {
    const HMODULE server = GetModuleHandleW(L"VlGeneralServices.dll");
    check(server != nullptr, L"the server is loaded");
    if (!server)
        return;
    const auto canUnload = serversFunction<CanUnload>(server, "DllCanUnloadNow");
    check(canUnload && canUnload() == S_OK, L"nothing lives at the end");
    const auto living = create<_Buffer>(L"Buffer");
    check(canUnload() == S_FALSE, L"an object keeps the server");
}

} // namespace

int main() {
    CoInitialize(nullptr);
    checkClasses();
    checkCollection();
    checkErrors();
    checkRecord();
    checkPackager();
    checkResults();
    checkLocks();
    checkThreads();
    checkLifetimes();
    checkUnload();
    create<_Buffer>(L"Buffer").Detach(); // lives when the process ends
    return report("early bound");
}
