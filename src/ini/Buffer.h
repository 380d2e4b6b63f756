// SPDX-License-Identifier: MIT
// A growing store of bytes in which texts are gathered, each followed by a delimiter, and from which the
// whole is taken as bytes, as an array of texts or as one text.
#pragma once

#include "frame/Component.h"
#include "ini/StreamTypes.h"

#include <memory>
#include <string_view>
#include <vector>

namespace vlgs {

class VLGS_API Buffer final : public Component {
  public:
    /// The least number of bytes by which the store grows, 200 at first; a number below 1 sets 200.
    void SetChunkSize(std::int32_t lChunkSize);
    std::int32_t ChunkSize() const { return chunkSize_; }

    /// Whether texts are stored as bytes of the system's code page (a character that the page does not hold
    /// becomes "?") or, as at first, as 16-bit characters, low byte first. A change converts nothing: what is
    /// stored is read in the other form from then on.
    void SetCompact(bool bCompact);
    bool Compact() const { return compact_; }

    /// Empties the store and sets everything back, delimiter, chunk size and form too.
    void Clear();

    /// What follows every stored text, and what the stored text is split at; "" at first.
    void SetDelimiter(const String& sDelimiter);
    const String& Delimiter() const { return delimiter_; }

    /// Stores the text of `vData` ("" when left out) and the delimiter: `sDelimiter` when it is not empty,
    /// else the property. Of an array, every element is stored so, in order; but elements whose type code has
    /// a bit in common with 17 (Byte, Long, Double, Date, Boolean) are stored as their bytes, without
    /// delimiter. When that fails, what was stored until then stays.
    void PutData(const Variant& vData = missing, const String& sDelimiter = {});

    /// What is stored, as an array of bytes (a single 0 when nothing is stored), as the array of the texts
    /// between the delimiters (without regard to case; since a delimiter follows every text, the last one is
    /// empty), or as one text. Empty for any other type. A last odd byte is no 16-bit character and left out.
    Variant GetData(enumStreamTypes eStreamType, const String& sDelimiter = {}) const;

    static constexpr auto describe() {
        return describeClass<Buffer>(
            {.name = "Buffer",
             .help = "Gathers texts, each followed by a delimiter",
             .number = _eInterfaceID_Buffer,
             .classId = guid("D30BBFC8-25EE-4016-8212-6B81F8098A84"),
             .interfaceId = guid("2831711F-FB7C-4CC2-A404-DE14CA3C59A3"),
             .creatable = true},
            identity(),
            put<&Buffer::SetChunkSize>(
                1, "ChunkSize", "Least number of bytes by which the store grows",
                parameter("lChunkSize", "a number of bytes; 200 for a number below 1")),
            get<&Buffer::ChunkSize>(1, "ChunkSize", "Least number of bytes by which the store grows"),
            put<&Buffer::SetCompact>(
                2, "Compact", "Whether texts are stored in the system's code page",
                parameter("bCompact",
                          "whether bytes of the code page are stored in place of 16-bit characters")),
            get<&Buffer::Compact>(2, "Compact", "Whether texts are stored in the system's code page"),
            method<&Buffer::Clear>(3, "Clear", "Empties the store and sets all properties back"),
            put<&Buffer::SetDelimiter>(
                4, "Delimiter", "What follows every stored text",
                parameter("sDelimiter", "what follows each text that is stored from now on")),
            get<&Buffer::Delimiter>(4, "Delimiter", "What follows every stored text"),
            method<&Buffer::PutData>(
                5, "PutData", "Stores a text or the elements of an array",
                optional("vData", "a text, a value that converts to one, or an array of such"),
                optional("sDelimiter", "what follows the text; the property when empty"))
                .raises(RunTimeError::TypeMismatch, "an element is an object")
                .raises(RunTimeError::SubscriptOutOfRange, "an array has not one dimension")
                .raises(RunTimeError::Overflow, "the store would pass 2,147,483,647 bytes"),
            method<&Buffer::GetData>(
                6, "GetData", "Gives what is stored, in one of three forms",
                parameter("eStreamType", "1 bytes, 2 an array of texts, 3 one text; Empty for another"),
                optional("sDelimiter", "what the texts are split at; the property when empty")));
    }
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    // ---- Within the library ----

    /// Stores the text made of these pieces, without a delimiter.
    template <class... Pieces>
    void putText(const Pieces&... pieces) {
        (append(std::u16string_view(pieces)), ...);
    }
    /// What is stored, as one text.
    String text() const;

  private:
    static constexpr std::int32_t standardChunkSize = 200;

    const String& inForce(const String& sDelimiter) const {
        return sDelimiter.empty() ? delimiter_ : sDelimiter;
    }
    void append(std::u16string_view text);
    void appendBytes(const void* from, std::size_t count);
    void addChunk();
    void putElements(const Array& array, const String& delimiter);
    void copyBytes(void* to) const;

    // What was stored once never moves while more comes. All chunks but the last are full.
    struct Chunk {
        std::unique_ptr<char[]> bytes;
        std::size_t capacity;
    };

    String delimiter_;
    std::int32_t chunkSize_ = standardChunkSize;
    bool compact_ = false;
    std::vector<Chunk> chunks_;
    std::size_t size_ = 0;
    std::size_t room_ = 0; // of the last chunk
};

} // namespace vlgs
