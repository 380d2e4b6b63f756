// SPDX-License-Identifier: MIT
#include "general/Lists.h"

#include "automation/Array.h"
#include "automation/Convert.h"
#include "automation/LateBound.h"
#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "base/Text.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <vector>

namespace vlgs {

namespace {

constexpr std::u16string_view nothingListed = u"0";

class ListText {
  public:
    void add(const Variant& member) {
        switch (member.type()) {
        case VarType::String:
            return add(member.text());
        case VarType::Long:
            return add(member.number());
        case VarType::Integer:
            return add(member.integer());
        case VarType::Byte:
            return add(member.byte());
        default:
            add(toText(member));
        }
    }

    /// The list without its last comma.
    String finish() const {
        return list_.empty() ? nothingListed : std::u16string_view(list_).substr(0, list_.size() - 1);
    }

  private:
    void add(std::u16string_view text) {
        if (!text.empty())
            list_.append(text).push_back(u',');
    }
    void add(const String& text) { add(text.view()); }
    void add(std::int32_t number) {
        char digits[12];
        const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
        list_.append(digits, end).push_back(u',');
    }

    std::u16string list_;
};

struct Range {
    std::int32_t start;
    std::int32_t end;
};

Range rangeWithin(std::int32_t lower, std::int32_t upper, std::int32_t lStart, std::int32_t lEnd) {
    const auto start = lStart > 0 && lStart < upper ? lStart : lower;
    const auto end = lEnd < upper && lEnd > start ? lEnd : upper;
    return {start, end};
}

String listArray(const Array& array, std::int32_t lStart, std::int32_t lEnd) {
    const bool twoDimensions = array.rank() > 1;
    const std::int32_t dimension = twoDimensions ? 2 : 1;
    const auto range = rangeWithin(array.lower(dimension), array.upper(dimension), lStart, lEnd);
    ListText list;
    for (auto i = std::int64_t{range.start}; i <= range.end; ++i) {
        const auto index = static_cast<std::int32_t>(i);
        const std::int32_t row[] = {0, index};
        list.add(twoDimensions ? array.get(row) : array.get(index));
    }
    return list.finish();
}

std::int32_t addDigit(std::int32_t number, int digit, double placeValue) {
    const double sum = number + digit * placeValue;
    if (!(sum <= std::numeric_limits<std::int32_t>::max())) // infinite place values make it a NaN
        raise(RunTimeError::Overflow);
    return static_cast<std::int32_t>(sum);
}

} // namespace

String g_VariantToCSV(const Variant& vKeys, std::int32_t lStart, std::int32_t lEnd) {
    try {
        if (vKeys.isEmpty())
            return nothingListed;
        return vKeys.isArray() ? listArray(vKeys.array(), lStart, lEnd) : toText(vKeys);
    } catch (const std::exception&) {
        return nothingListed;
    }
}

String g_CollectionToCSV(const Ref<Object>& colKeys, std::int32_t lStart, std::int32_t lEnd) {
    try {
        const auto range = rangeWithin(1, toLong(call(colKeys, u"Count")), lStart, lEnd);
        const DispatchId item = colKeys->idOf(u"Item");
        ListText list;
        for (auto i = std::int64_t{range.start}; i <= range.end; ++i) {
            Variant position(static_cast<std::int32_t>(i));
            list.add(colKeys->invoke(item, InvokeKind::MethodOrGet, {{&position, 1}}));
        }
        return list.finish();
    } catch (const std::exception&) {
        return nothingListed;
    }
}

Variant g_CSVToVariant(const String& sKeys, const String& sDelimiter, std::int32_t lChunkSize) {
    if (sKeys.empty() || sDelimiter.empty())
        return {};
    const auto page = CodePage::system();
    const int delimiter = page.codeOf(sDelimiter[0]);
    const std::string bytes = page.encode(sKeys);

    std::vector<std::int32_t> numbers(1);
    std::int64_t upperBound = 0; // of the array as its chunks let it grow
    double placeValue = 1;
    bool valid = true;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
        const int character = static_cast<unsigned char>(*byte);
        const auto field = static_cast<std::int64_t>(numbers.size()) - 1;
        if (character == delimiter) {
            numbers.push_back(0);
            placeValue = 1;
            valid = true;
        } else if (valid) {
            const bool digit = ascii::isDigit(static_cast<char16_t>(character));
            if (digit && field > upperBound)
                upperBound += lChunkSize;
            if (field > upperBound)
                raise(RunTimeError::SubscriptOutOfRange);
            numbers.back() = digit ? addDigit(numbers.back(), character - '0', placeValue) : 0;
            placeValue *= 10;
            valid = digit;
        }
    }
    return Array::ofLongs(std::move(numbers));
}

Ref<OrderedCollection> g_ParseDelimitedString(String& sData, const String& sDelimiter) {
    if (sData.empty())
        return nullptr;
    sData = trim(sData);
    if (sDelimiter.empty())
        return nullptr;
    auto items = make<OrderedCollection>();
    const auto add = [&](std::u16string_view token) {
        if (!token.empty())
            items->Add(Variant(toUpper(trim(token))));
    };
    if (sDelimiter.length() == 1)
        std::ranges::for_each(split(sData, sDelimiter), add);
    else
        add(sData);
    return items;
}

} // namespace vlgs
