// String resources of a library file, which is loaded as data only.
#include "platform/StringResources.h"

#include "base/Error.h"
#include "platform/windows/Host.h"

namespace vlgs {

using namespace windows;

class StringResources::Host {
  public:
    explicit Host(std::u16string_view path)
        : module_(LoadLibraryExW(WideText(path).get(), nullptr,
                                 LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE)) {
        if (!module_)
            raise(RunTimeError::FileNotFound);
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host() { FreeLibrary(module_); }

    std::optional<String> load(std::int32_t number) const {
        if (number < 0 || number > 0xFFFF)
            return std::nullopt;
        const char16_t* text = nullptr; // with a size of 0 the function tells where the text lies
        const int length =
            LoadStringW(module_, static_cast<UINT>(number), reinterpret_cast<wchar_t*>(&text), 0);
        if (length <= 0)
            return std::nullopt;
        return std::u16string_view(text, static_cast<std::size_t>(length));
    }

  private:
    HMODULE module_;
};

StringResources::StringResources(std::u16string_view path) : host_(std::make_unique<Host>(path)) {}
StringResources::StringResources(StringResources&&) noexcept = default;
StringResources& StringResources::operator=(StringResources&&) noexcept = default;
StringResources::~StringResources() = default;

std::optional<String> StringResources::load(std::int32_t number) {
    return host_->load(number);
}

} // namespace vlgs
