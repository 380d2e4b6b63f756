// SPDX-License-Identifier: MIT
// Uses the component through its vtables: prints a project's connection string and the locale's settings.
//
//     early_bound.exe C:\projects\demo.VLS
//
// Interfaces.h is installed with the library; it comes from the interface definition.
#include <VlGeneralServices/Interfaces.h>

#include <comdef.h>

#include <cstdio>
#include <string>

namespace {

/// A text that frees itself.
class Text {
  public:
    Text() = default;
    explicit Text(const wchar_t* text) : text_(SysAllocString(text)) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(text_); }
    BSTR get() const { return text_; }
    BSTR* put() { return &text_; }
    const wchar_t* shown() const { return text_ ? text_ : L""; }

  private:
    BSTR text_ = nullptr;
};

/// What the failing call told of its failure.
void report(HRESULT status) {
    IErrorInfo* info = nullptr;
    Text description;
    if (GetErrorInfo(0, &info) == S_OK) {
        info->GetDescription(description.put());
        info->Release();
    }
    std::printf("error %ld: %ls\n", static_cast<long>(status), description.shown());
}

int run(const wchar_t* path) {
    _Files* files = nullptr;
    HRESULT status = CoCreateInstance(__uuidof(Files), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Files),
                                      reinterpret_cast<void**>(&files));
    if (FAILED(status)) {
        report(status);
        return 1;
    }
    Text connection;
    status = files->BuildConnectionStringFromPath(Text(path).get(), nullptr, nullptr, nullptr, VARIANT_FALSE,
                                                  0, connection.put());
    files->Release();
    if (FAILED(status)) {
        report(status);
        return 1;
    }
    std::printf("%ls\n", connection.shown());
    return 0;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2) {
        std::puts("usage: early_bound PROJECTFILE");
        return 2;
    }
    CoInitialize(nullptr);
    const int result = run(arguments[1]);
    CoUninitialize();
    return result;
}
