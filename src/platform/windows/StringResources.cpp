// SPDX-License-Identifier: MIT
// String resources of a library file, which is loaded as data only.
#include "platform/StringResources.h"

#include "platform/windows/Host.h"

namespace vlgs {

using namespace windows;

namespace {

class ResourceLibrary final : public StringResources {
  public:
    explicit ResourceLibrary(std::u16string_view path)
        : module_(LoadLibraryExW(WideText(path).get(), nullptr,
                                 LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE)) {
        if (!module_)
            raiseMissing(path);
    }

    std::optional<String> load(std::int32_t number) override {
        if (number < 0 || number > 0xFFFF)
            return std::nullopt;
        const char16_t* text = nullptr; // with a size of 0 the function tells where the text lies
        const int length =
            LoadStringW(module_.get(), static_cast<UINT>(number), reinterpret_cast<wchar_t*>(&text), 0);
        if (length <= 0)
            return std::nullopt;
        return std::u16string_view(text, static_cast<std::size_t>(length));
    }

  private:
    Library module_;
};

} // namespace

std::unique_ptr<StringResources> StringResources::open(std::u16string_view path) {
    return std::make_unique<ResourceLibrary>(path);
}

} // namespace vlgs
