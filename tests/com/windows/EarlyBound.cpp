// A compiled client: every interface through its vtable, from the header that the interface definition gives.
// The server is found by registration or, in the other build of this program, by a manifest.
#include <VlGeneralServices/Interfaces.h>

#include <comdef.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>
#include <thread>

namespace {

int failures = 0;

void check(bool holds, const char* what) {
    if (holds)
        return;
    ++failures;
    std::printf("FAILED %s\n", what);
}

class Text {
  public:
    Text() = default;
    explicit Text(const wchar_t* text) : text_(SysAllocString(text)) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(text_); }
    BSTR get() const { return text_; }
    BSTR* put() {
        SysFreeString(text_);
        text_ = nullptr;
        return &text_;
    }
    std::wstring view() const { return text_ ? std::wstring(text_, SysStringLen(text_)) : std::wstring(); }

  private:
    BSTR text_ = nullptr;
};

template <class T>
class Pointer {
  public:
    Pointer() = default;
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;
    ~Pointer() {
        if (pointer_)
            pointer_->Release();
    }
    T* operator->() const { return pointer_; }
    T* get() const { return pointer_; }
    T** put() { return &pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }

  private:
    T* pointer_ = nullptr;
};

template <class T>
HRESULT create(const wchar_t* name, T** object) {
    CLSID id;
    const std::wstring progId = std::wstring(L"VlGeneralServices.") + name;
    const HRESULT status = CLSIDFromProgID(progId.c_str(), &id);
    if (FAILED(status))
        return status;
    return CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(T), reinterpret_cast<void**>(object));
}

/// What every interface has.
template <class T>
void checkIdentity(T* object, const wchar_t* name, long number) {
    Text text;
    long found = 0;
    check(SUCCEEDED(object->get_ClassName(text.put())) &&
              text.view() == std::wstring(L"VlGeneralServices.") + name,
          "ClassName");
    check(SUCCEEDED(object->get_ClassVersion(text.put())) && text.view() == L"9.1002.23", "ClassVersion");
    check(SUCCEEDED(object->get_ClassID(&found)) && found == number, "ClassID");
    check(object->get_ClassID(nullptr) == E_POINTER, "null pointer for a result");
    Pointer<ISupportErrorInfo> support;
    check(SUCCEEDED(object->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(support.put()))) &&
              support->InterfaceSupportsErrorInfo(__uuidof(T)) == S_OK,
          "ISupportErrorInfo");
    Pointer<IUnknown> same;
    Pointer<IUnknown> identity;
    object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(identity.put()));
    support->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(same.put()));
    check(same.get() == identity.get(), "one identity");
    Pointer<ITypeInfo> info;
    check(SUCCEEDED(object->GetTypeInfo(0, 0, info.put())), "GetTypeInfo");
    Pointer<IProvideClassInfo> provider;
    Pointer<ITypeInfo> classInfo;
    check(
        SUCCEEDED(object->QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(provider.put()))) &&
            SUCCEEDED(provider->GetClassInfo(classInfo.put())),
        "IProvideClassInfo");
}

template <class T>
void checkClass(const wchar_t* name, long number) {
    Pointer<T> object;
    const HRESULT status = create(name, object.put());
    if (FAILED(status)) {
        ++failures;
        std::printf("FAILED create %ls: %lx\n", name, static_cast<unsigned long>(status));
        return;
    }
    checkIdentity(object.get(), name, number);
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
    Pointer<_Resource> resource;
    check(SUCCEEDED(create(L"Resource", resource.put())), "create Resource");
    Pointer<IUnknown> refused;
    for (const auto* name : {L"INIFile", L"Property", L"ViewProperties", L"DDE"})
        check(FAILED(create(name, refused.put())), "not creatable");
}

void checkCollection() {
    Pointer<_Collection> list;
    create(L"Collection", list.put());
    VARIANT item;
    VariantInit(&item);
    item.vt = VT_I4;
    item.lVal = 7;
    VARIANT none;
    VariantInit(&none);
    none.vt = VT_ERROR;
    none.scode = DISP_E_PARAMNOTFOUND;
    long status = -1;
    check(SUCCEEDED(list->Add(item, Text(L"key").get(), none, none, &status)) && status == 0, "Add");
    check(SUCCEEDED(list->Add(item, Text(L"KEY").get(), none, none, &status)) && status == 457, "same key");
    VARIANT found;
    VariantInit(&found);
    VARIANT key;
    VariantInit(&key);
    key.vt = VT_BSTR;
    Text name(L"Key");
    key.bstrVal = name.get();
    check(SUCCEEDED(list->get_Item(key, &found)) && found.vt == VT_I4 && found.lVal == 7, "Item");
    Pointer<IUnknown> unknown;
    Pointer<IEnumVARIANT> items;
    check(SUCCEEDED(list->NewEnum(unknown.put())) && unknown, "NewEnum");
    unknown->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(items.put()));
    ULONG count = 0;
    check(items && items->Next(1, &found, &count) == S_OK && count == 1 && found.lVal == 7, "Next");
    check(items->Next(1, &found, &count) == S_FALSE && count == 0, "behind the last");
}

void checkErrors() {
    Pointer<_GUIDServices> guids;
    create(L"GUID", guids.put());
    VARIANT_BOOL equal = 0;
    const HRESULT status = guids->get_IsEqualGUID(Text(L"a").get(), Text(L"b").get(), &equal);
    check(static_cast<long>(status) == -2147217504L, "the number is the status");
    Pointer<IErrorInfo> info;
    Text source;
    Text description;
    check(GetErrorInfo(0, info.put()) == S_OK, "error information");
    info->GetSource(source.put());
    info->GetDescription(description.put());
    check(source.view() == L"VlGeneralServices.GUID.IsEqualGUID", "source");
    check(description.view() == L"Error Converting sGUID1 from String", "description");
}

void checkRecord() {
    Pointer<_Conversion> conversion;
    create(L"Conversion", conversion.put());
    udtLocaleSettings settings{};
    check(SUCCEEDED(conversion->GetLocaleSettings(&settings)) && SysStringLen(settings.sDecimal) == 1,
          "record by the vtable");
    for (BSTR text :
         {settings.sDecimal, settings.sThousands, settings.sNegative, settings.sPositive, settings.sListSep,
          settings.sLongDate, settings.sTime, settings.sDate, settings.sShortDate})
        SysFreeString(text);
    VARIANT result;
    VariantInit(&result);
    DISPID id = 0;
    auto* name = const_cast<wchar_t*>(L"GetLocaleSettings");
    conversion->GetIDsOfNames(IID_NULL, &name, 1, 0, &id);
    DISPPARAMS none{};
    check(SUCCEEDED(conversion->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &none, &result, nullptr, nullptr)) &&
              result.vt == VT_RECORD && result.pRecInfo,
          "record late bound");
    VariantClear(&result);
}

/// A packed object is known by the pointer that its caller has, and counts what callers hold.
void checkPackager() {
    Pointer<_ObjectPackager> packager;
    Pointer<_Buffer> object;
    create(L"ObjectPackager", packager.put());
    create(L"Buffer", object.put());
    VARIANT packed;
    VariantInit(&packed);
    long number = 0;
    check(SUCCEEDED(packager->PackObject(object.get(), &number, &packed)) && packed.vt == VT_DECIMAL,
          "PackObject");
    const auto address = reinterpret_cast<INT_PTR>(object.get());
    check(address > LONG_MAX || number == address, "lObjPtr is the pointer");
    long inside = 0;
    std::memcpy(&inside, reinterpret_cast<const char*>(&packed) + 8, sizeof inside);
    check(inside == number, "and stands in the descriptor");
    check(std::memcmp(reinterpret_cast<const char*>(&packed) + 12, object.get(), 4) == 0, "the signature");
    long counts[3] = {};
    packager->get_RefCount(packed, &counts[0]);
    object->AddRef();
    packager->get_RefCount(packed, &counts[1]);
    Pointer<IDispatch> unpacked;
    packager->UnpackObject(packed, unpacked.put());
    packager->get_RefCount(packed, &counts[2]);
    check(counts[0] == 1 && counts[1] == 2 && counts[2] == 3, "references are counted");
    object->Release();
}

/// What members hand out has the types that the type library tells.
void checkResults() {
    Pointer<_Files> files;
    create(L"Files", files.put());
    SAFEARRAY* levels = nullptr;
    VARTYPE type = VT_EMPTY;
    check(SUCCEEDED(files->ExtractPathAllLevels(Text(L"C:\\a\\b").get(), &levels)) &&
              SUCCEEDED(SafeArrayGetVartype(levels, &type)) && type == VT_BSTR,
          "an array of texts");
    SafeArrayDestroy(levels);
    Pointer<_General> general;
    create(L"General", general.put());
    VARIANT list;
    VariantInit(&list);
    list.vt = VT_ARRAY | VT_BSTR;
    list.parray = SafeArrayCreateVector(VT_BSTR, 0, 2);
    Pointer<IDispatch> made;
    Pointer<IDispatch> result;
    check(SUCCEEDED(general->CopyVariantArrayToDictionary(list, made.put(), result.put())) && made &&
              made.get() == result.get(),
          "a new dictionary");
    constexpr IID dictionaryId{0x42C642C1, 0x97E1, 0x11CF, {0x97, 0x8F, 0x00, 0xA0, 0x24, 0x63, 0xE0, 0x6F}};
    Pointer<IUnknown> dictionary;
    check(result &&
              SUCCEEDED(result->QueryInterface(dictionaryId, reinterpret_cast<void**>(dictionary.put()))),
          "it is the platform's");
    VariantClear(&list);
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
        Pointer<_Collection> first;
        Pointer<_Collection> second;
        create(L"Collection", first.put());
        create(L"Collection", second.put());
        VARIANT item;
        VariantInit(&item);
        item.vt = VT_DISPATCH;
        item.pdispVal = second.get();
        VARIANT none;
        VariantInit(&none);
        none.vt = VT_ERROR;
        none.scode = DISP_E_PARAMNOTFOUND;
        long status = 0;
        first->Add(item, nullptr, none, none, &status);
        checkErrors();
    }
}

void checkUnload() {
    const HMODULE server = GetModuleHandleW(L"VlGeneralServices.dll");
    check(server != nullptr, "the server is loaded");
    if (!server)
        return;
    const auto canUnload = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(server, "DllCanUnloadNow")));
    check(canUnload && canUnload() == S_OK, "nothing lives at the end");
    Pointer<_Buffer> living;
    create(L"Buffer", living.put());
    check(canUnload() == S_FALSE, "an object keeps the server");
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
    checkThreads();
    checkLifetimes();
    checkUnload();
    Pointer<_Buffer>* left = new Pointer<_Buffer>; // lives when the process ends
    create(L"Buffer", left->put());
    std::printf("%s: %d failed\n", failures ? "early bound" : "early bound, all right", failures);
    std::fflush(stdout);
    return failures ? 1 : 0;
}
