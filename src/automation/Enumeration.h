// SPDX-License-Identifier: MIT
// Enumerations of the component: a C++ enumeration and its description, from one list of members.
//
//     #define VLGS_STREAM_TYPES(value) value(eStream_StringArray, 2) value(eStream_String, 3)
//     VLGS_ENUMERATION(enumStreamTypes, "b1f7…", "Forms of a stream", VLGS_STREAM_TYPES)
//
// declares `enum enumStreamTypes`, which a description finds by `enumInfo(enumStreamTypes{})`.
#pragma once

#include "base/Guid.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace vlgs {

struct EnumMember {
    std::string_view name;
    std::int32_t value;
};

struct EnumInfo {
    std::string_view name;
    GuidValue id;
    std::string_view help;
    std::span<const EnumMember> members;
};

} // namespace vlgs

// A macro, since the language offers no way to read the names of an enumeration back.
#define VLGS_ENUMERATION_VALUE(name, number) name = number,
#define VLGS_ENUMERATION_MEMBER(name, number) ::vlgs::EnumMember{#name, number},
#define VLGS_ENUMERATION(type, id, help, list)                                                               \
    enum type : std::int32_t { list(VLGS_ENUMERATION_VALUE) };                                               \
    inline constexpr ::vlgs::EnumMember type##Members[] = {list(VLGS_ENUMERATION_MEMBER)};                   \
    inline constexpr ::vlgs::EnumInfo type##Info{#type, ::vlgs::guid(id), help, type##Members};              \
    constexpr const ::vlgs::EnumInfo& enumInfo(type) {                                                       \
        return type##Info;                                                                                   \
    }
