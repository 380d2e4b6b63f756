// SPDX-License-Identifier: MIT
// A late-bound property read on our object against the same on the platform's dictionary, and a vtable call
// against the late-bound one. Ends with status 1 when a ratio is above its aim.
#include <VlGeneralServices/Interfaces.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

constexpr int rounds = 9;
constexpr int calls = 200000;

/// Nanoseconds of one call, the best of some rounds.
template <class Call>
double nanoseconds(Call&& call) {
    double best = 1e18;
    for (int round = 0; round < rounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < calls; ++i)
            call();
        const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
        best = std::min(best, time.count() / calls);
    }
    return best;
}

DISPID idOf(IDispatch* object, const wchar_t* name) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

double lateBound(IDispatch* object, DISPID id) {
    return nanoseconds([=] {
        DISPPARAMS none{};
        VARIANT result;
        VariantInit(&result);
        object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result, nullptr,
                       nullptr);
    });
}

/// An object of our library, without registration.
_Buffer* createBuffer() {
    const HMODULE server = LoadLibraryW(L"VlGeneralServices.dll");
    const auto get = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(server, "DllGetClassObject")));
    IClassFactory* factory = nullptr;
    _Buffer* buffer = nullptr;
    if (get && SUCCEEDED(get(__uuidof(Buffer), IID_IClassFactory, reinterpret_cast<void**>(&factory)))) {
        factory->CreateInstance(nullptr, __uuidof(_Buffer), reinterpret_cast<void**>(&buffer));
        factory->Release();
    }
    return buffer;
}

bool tell(const char* what, double ratio, double aim) {
    std::printf("%-45s %6.2f (aim: at most %.2f)%s\n", what, ratio, aim, ratio <= aim ? "" : "  MISSED");
    return ratio <= aim;
}

} // namespace

int main() {
    CoInitialize(nullptr);
    _Buffer* buffer = createBuffer();
    IDispatch* dictionary = nullptr;
    CLSID id;
    CLSIDFromProgID(L"Scripting.Dictionary", &id);
    CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&dictionary));
    if (!buffer || !dictionary)
        return 2;
    const double ours = lateBound(buffer, idOf(buffer, L"ChunkSize"));
    const double theirs = lateBound(dictionary, idOf(dictionary, L"Count"));
    long size = 0;
    const double direct = nanoseconds([&] { buffer->get_ChunkSize(&size); });
    std::printf("late bound %.1f ns, Scripting.Dictionary %.1f ns, vtable %.1f ns\n", ours, theirs, direct);
    bool good = tell("late bound / Scripting.Dictionary", ours / theirs, 1.0);
    good = tell("vtable / late bound", direct / ours, 0.2) && good;
    dictionary->Release();
    buffer->Release();
    return good ? 0 : 1;
}
