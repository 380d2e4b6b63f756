// SPDX-License-Identifier: MIT
#include "registry/RegistryConversion.h"

#include "automation/Array.h"
#include "automation/Convert.h"
#include "base/Ascii.h"
#include "base/Error.h"
#include "base/Text.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace vlgs {

namespace {

bool isText(std::uint32_t type) noexcept {
    return type == registryType::text || type == registryType::expandableText ||
           type == registryType::multiText;
}

/// Up to four bytes, or the last four of more, each weighted by its place.
template <class Bytes>
Variant combine(const Bytes& fromHighest) {
    std::uint32_t number = 0;
    for (const char byte : fromHighest)
        number = number << 8 | static_cast<unsigned char>(byte);
    return static_cast<std::int32_t>(number);
}

String reversedHexadecimal(std::string_view bytes) {
    return String::build(bytes.size() * 2, [&](char16_t* to) {
        for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
            *to++ = ascii::hexDigits[static_cast<unsigned char>(*byte) >> 4];
            *to++ = ascii::hexDigits[static_cast<unsigned char>(*byte) & 15];
        }
    });
}

/// Appends a number as memory holds it, low byte first.
template <class Number>
void append(std::string& bytes, Number number) {
    for (std::size_t i = 0; i < sizeof number; ++i)
        bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

std::uint32_t numberOf(const Variant& value) {
    const double number = roundHalfToEven(toDouble(value));
    if (!(number >= -0x1p31 && number < 0x1p32))
        raise(RunTimeError::TypeMismatch);
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(number));
}

std::u16string partsOf(const Array& texts) {
    std::u16string parts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const String part = toText(texts.at(i));
        // An empty part would be the end of all.
        if (part.empty() || part.view().find(u'\0') != std::u16string_view::npos)
            raise(RunTimeError::TypeMismatch);
        parts.append(part).append(1, u'\0');
    }
    return parts;
}

/// A text, or parts with a NUL behind each, and a NUL behind the last one.
std::string textBytes(const Variant& value, std::uint32_t type) {
    const bool isList = type == registryType::multiText;
    auto text = isList && value.isArray() ? partsOf(value.array()) : std::u16string(toText(value));
    if (isList && !text.empty() && text.back() != u'\0')
        text += u'\0';
    if (!isList || !text.ends_with(std::u16string_view(u"\0\0", 2)))
        text += u'\0';
    return registryBytes(text);
}

void appendBytes(std::string& bytes, const Variant& value);

void appendElements(std::string& bytes, const Array& array) {
    if (array.holds<std::uint8_t>()) {
        const auto elements = array.as<std::uint8_t>();
        bytes.append(elements.begin(), elements.end());
        return;
    }
    for (std::size_t i = 0; i < array.size(); ++i) {
        const Variant element = array.at(i);
        if (array.element() == VarType::Variant)
            bytes += static_cast<char>(toByte(element));
        else
            appendBytes(bytes, element);
    }
}

void appendBytes(std::string& bytes, const Variant& value) {
    if (value.isArray())
        return appendElements(bytes, value.array());
    switch (value.type()) {
    case VarType::Empty:
        return;
    case VarType::Byte:
        return append(bytes, value.byte());
    case VarType::Integer:
        return append(bytes, value.integer());
    case VarType::Boolean:
        return append(bytes, static_cast<std::int16_t>(value.boolean() ? -1 : 0));
    case VarType::Long:
        return append(bytes, value.number());
    case VarType::Single:
        return append(bytes, std::bit_cast<std::uint32_t>(value.single()));
    case VarType::Double:
    case VarType::Date:
        return append(bytes, std::bit_cast<std::uint64_t>(value.real()));
    case VarType::Currency:
        return append(bytes, value.currency().units);
    case VarType::String: {
        const auto encoded = CodePage::system().encodeExactly(value.text());
        if (!encoded)
            raise(RunTimeError::TypeMismatch);
        bytes += *encoded;
        return;
    }
    default:
        raise(RunTimeError::TypeMismatch);
    }
}

} // namespace

Variant registryValueOf(const RegistryData& data, BinaryForm form) {
    const std::string_view bytes = data.bytes;
    switch (data.type) {
    case registryType::text:
    case registryType::expandableText:
        return String(cutAtNul(registryText(bytes)));
    case registryType::multiText: {
        const String text = registryText(bytes);
        auto parts = text.view();
        for (int i = 0; i < 2 && parts.ends_with(u'\0'); ++i)
            parts.remove_suffix(1);
        return String(parts);
    }
    case registryType::number:
        return combine(std::string(bytes.rbegin(), bytes.rend()));
    case registryType::bigEndianNumber:
        return combine(bytes);
    case registryType::binary:
        if (form == BinaryForm::ReversedHexadecimal)
            return reversedHexadecimal(bytes);
        [[fallthrough]];
    default:
        return Array::ofBytes({bytes.begin(), bytes.end()});
    }
}

RegistryData registryDataOf(const Variant& value, std::uint32_t type) {
    RegistryData data{type, {}};
    // An object is not stored, whatever its default member is.
    if (value.isObject())
        raise(RunTimeError::TypeMismatch);
    try {
        if (isText(type)) {
            data.bytes = textBytes(value, type);
        } else if (type == registryType::number || type == registryType::bigEndianNumber) {
            append(data.bytes, numberOf(value));
            if (type == registryType::bigEndianNumber)
                std::ranges::reverse(data.bytes);
        } else {
            appendBytes(data.bytes, value);
        }
    } catch (const Error&) {
        raise(RunTimeError::TypeMismatch);
    }
    return data;
}

std::size_t registryLength(const RegistryData& data) noexcept {
    return isText(data.type) ? data.bytes.size() / 2 : data.bytes.size();
}

bool endsInNul(const RegistryData& data) noexcept {
    return isText(data.type) && data.bytes.ends_with(std::string_view("\0\0", 2));
}

} // namespace vlgs
