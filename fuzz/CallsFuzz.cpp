// SPDX-License-Identifier: MIT
// Calls through the C interface: objects of any class, members by any name or number, values of any type,
// also ones that no program should make.
// Covers: capi/*
#include "Input.h"
#include "capi/vlgs.h"

#include <array>
#include <cstring>
#include <string>

using namespace vlgs;

namespace {

/// What a program might have put together by hand: plain values of every type and texts.
vlgs_value valueOf(fuzz::Input& input) {
    static constexpr std::uint16_t plain[] = {VLGS_EMPTY,  VLGS_NULL,    VLGS_INTEGER,  VLGS_LONG,
                                              VLGS_SINGLE, VLGS_DOUBLE,  VLGS_CURRENCY, VLGS_DATE,
                                              VLGS_ERROR,  VLGS_BOOLEAN, VLGS_DECIMAL,  VLGS_BYTE};
    vlgs_value value{};
    const auto kind = input.below(16);
    const auto bytes = input.bytes();
    if (kind < 12) {
        value.type = plain[kind];
        value.scale = static_cast<std::uint8_t>(kind == 10 ? input.below(256) : 0);
        std::memcpy(&value.as, bytes.data(), std::min(bytes.size(), sizeof value.as));
        if (value.type == VLGS_BOOLEAN)
            value.as.boolean &= 1;
    } else if (kind == 12) {
        const vlgs_dimension shape{static_cast<std::int32_t>(input.below(256)) - 128,
                                   static_cast<std::int32_t>(input.below(64))};
        vlgs_array_new(static_cast<std::uint16_t>(input.below(20)), &shape, input.below(3) % 2, &value);
    } else if (kind == 13) {
        vlgs_bytes_new(bytes.data(), bytes.size(), &value);
    } else {
        vlgs_text_new(bytes.data(), bytes.size(), &value);
    }
    return value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Others change files and the registry.
    static constexpr const char* names[] = {"General",  "Conversion", "GUID",
                                            "Buffer",   "Collection", "Cipher",
                                            "Resource", "CorvaTools", "ObjectPackager"};
    fuzz::Input input(data, size);
    vlgs_object* object = nullptr;
    if (vlgs_create(names[input.below(std::size(names))], &object) != VLGS_DONE)
        return 0;
    vlgs_class_facts facts{};
    vlgs_class_describe(vlgs_class_of(object), &facts);
    for (int calls = 0; calls < 8 && !input.empty(); ++calls) {
        vlgs_member member{};
        vlgs_member_describe(vlgs_class_of(object), input.below(256) % facts.member_count, &member);
        if (std::string(member.name).find("File") != std::string::npos ||
            std::string(member.name).starts_with("Initiate"))
            continue;
        std::array<vlgs_value, 4> arguments{};
        const auto count = input.below(arguments.size() + 1);
        for (std::size_t i = 0; i < count; ++i)
            arguments[i] = valueOf(input);
        vlgs_value result{};
        vlgs_value text{};
        if (vlgs_invoke(object, member.id, static_cast<std::uint32_t>(1 + input.below(15)), arguments.data(),
                        count, nullptr, 0, &result) == VLGS_DONE &&
            vlgs_copy(&result, &text) == VLGS_DONE)
            vlgs_change_type(&text, VLGS_TEXT);
        vlgs_clear(&text, 1);
        vlgs_clear(&result, 1);
        vlgs_clear(arguments.data(), count);
    }
    vlgs_release(object);
    return 0;
}
