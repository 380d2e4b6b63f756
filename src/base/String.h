// SPDX-License-Identifier: MIT
// Counted UTF-16 text, the one text type of the library.
//
// Invariant: a String is either null (the empty text) or points at the first character of a block
// {reference count, length, characters, NUL}. The characters never change after construction, so a copy
// shares the block. Any character may occur in a text, NUL included.
#pragma once

#include "base/Export.h"

#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#if __has_include(<ext/atomicity.h>)
#include <ext/atomicity.h>
#endif

namespace vlgs {

/// What UTF-8, which has no form for half a surrogate pair, makes of one: U+FFFD, or the three bytes that its
/// scheme gives for the number, so that every text survives the way there and back.
enum class LoneSurrogates { Replaced, Kept };

class VLGS_API String {
  public:
    constexpr String() noexcept = default;
    String(const char16_t* text) : String(std::u16string_view(text)) {}
    String(std::u16string_view text);
    String(const std::u16string& text) : String(std::u16string_view(text)) {}
    String(std::size_t count, char16_t character);
    String(const String& other) noexcept : text_(other.text_) { retain(); }
    String(String&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    ~String() { release(); }
    String& operator=(const String& other) noexcept {
        String(other).swap(*this);
        return *this;
    }
    String& operator=(String&& other) noexcept {
        String(std::move(other)).swap(*this);
        return *this;
    }
    void swap(String& other) noexcept { std::swap(text_, other.text_); }

    /// A text of `length` characters that `fill(char16_t*)` writes, every one of them, exactly once.
    template <class Fill>
    static String build(std::size_t length, Fill&& fill) {
        String result;
        if (length == 0)
            return result;
        result.text_ = allocate(length);
        std::forward<Fill>(fill)(result.text_);
        return result;
    }

    /// Decodes UTF-8; each malformed sequence becomes U+FFFD. `fromUtf8("Größe")`
    static String fromUtf8(std::string_view text, LoneSurrogates lone = LoneSurrogates::Replaced);
    /// Encodes as UTF-8; a lone surrogate becomes U+FFFD.
    std::string toUtf8(LoneSurrogates lone = LoneSurrogates::Replaced) const;

    std::size_t length() const noexcept { return text_ ? header().length : 0; }
    bool empty() const noexcept { return text_ == nullptr; }
    /// The characters, followed by a NUL that does not count.
    const char16_t* data() const noexcept { return text_ ? text_ : u""; }
    const char16_t* begin() const noexcept { return data(); }
    const char16_t* end() const noexcept { return data() + length(); }
    char16_t operator[](std::size_t index) const noexcept { return data()[index]; }
    std::u16string_view view() const noexcept { return {data(), length()}; }
    operator std::u16string_view() const noexcept { return view(); }

    String& operator+=(std::u16string_view tail);

    /// Exact comparison, character by character; for comparison without regard to case see CaseFold.h.
    friend bool operator==(const String& a, const String& b) noexcept {
        return a.text_ == b.text_ || a.view() == b.view();
    }
    friend bool operator==(const String& a, std::u16string_view b) noexcept { return a.view() == b; }
    friend bool operator==(const String& a, const char16_t* b) noexcept { return a.view() == b; }
    friend std::strong_ordering operator<=>(const String& a, const String& b) noexcept {
        return a.view().compare(b.view()) <=> 0;
    }

  private:
    struct Header {
        std::atomic<std::uint32_t> references;
        std::uint32_t length;
    };
    Header& header() const noexcept { return reinterpret_cast<Header*>(text_)[-1]; }
    // A process that never had a second thread counts without locked instructions.
    static bool oneThread() noexcept {
#if __has_include(<ext/atomicity.h>)
        return __gnu_cxx::__is_single_threaded();
#else
        return false;
#endif
    }
    void retain() const noexcept {
        if (!text_)
            return;
        auto& count = header().references;
        if (oneThread())
            count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
        else
            count.fetch_add(1, std::memory_order_relaxed);
    }
    void release() noexcept {
        if (!text_)
            return;
        auto& count = header().references;
        if (oneThread()) {
            const auto left = count.load(std::memory_order_relaxed) - 1;
            count.store(left, std::memory_order_relaxed);
            if (left == 0)
                deallocate(text_);
        } else if (count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            deallocate(text_);
        }
    }
    static char16_t* allocate(std::size_t length);
    static void deallocate(char16_t* text) noexcept;

    char16_t* text_ = nullptr;
};

/// Joins texts in one allocation: `concat(folder, u"\\", name)`.
template <class... Pieces>
String concat(const Pieces&... pieces) {
    const std::u16string_view views[] = {std::u16string_view(pieces)...};
    std::size_t length = 0;
    for (auto view : views)
        length += view.size();
    return String::build(length, [&](char16_t* to) {
        for (auto view : views)
            to += view.copy(to, view.size());
    });
}

} // namespace vlgs
