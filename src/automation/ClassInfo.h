// SPDX-License-Identifier: MIT
// The description of a class as a running program sees it: what late-bound calls, the interface description,
// the reference pages and `vlgs describe` are derived from. It is made from the class's own table of members
// (ClassDescription.h); nobody fills one by hand.
#pragma once

#include "automation/Enumeration.h"
#include "automation/Object.h"
#include "automation/Record.h"
#include "automation/Variant.h"
#include "base/Guid.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace vlgs {

class NameTable;

/// Type of a parameter or result.
struct TypeInfo {
    /// Empty for a member without result; `VarType::Array` plus element for arrays.
    VarType type = VarType::Empty;
    /// The callee may write to it.
    bool byReference = false;
    /// An enumerator, which travels as a plain object.
    bool enumerator = false;
    /// The class of a typed object; null for any object.
    const ClassInfo& (*classInfo)() = nullptr;
    const EnumInfo* enumeration = nullptr;
    const RecordInfo* record = nullptr;
};

/// What stands for an optional argument that was left out.
struct DefaultValue {
    enum class Kind : std::uint8_t { None, Zero, Number, Text };
    Kind kind = Kind::None;
    std::int32_t number = 0;
    std::u16string_view text = {};
};

struct ParameterInfo {
    std::string_view name;
    TypeInfo type;
    bool optional = false;
    DefaultValue defaultValue;
    /// What the parameter means, without a full stop.
    std::string_view meaning = {};
};

/// A failure that a member raises on its own account, besides those of the call itself.
struct ErrorCondition {
    /// A code of the message catalogue (11508), else a number of the run time (5).
    std::int32_t code = 0;
    /// "the section has no such key"
    std::string_view when = {};
};

/// A call that shows what a member does, as it is typed after `vlgs call`, and what it prints.
struct CallExample {
    std::string_view call = {};
    std::string_view prints = {};
};

/// Calls the member with one slot for each parameter; a null slot is an argument left out.
using Invoker = Variant (*)(Object& self, Variant* const* slots);

struct MemberInfo {
    std::string_view name;
    DispatchId id = 0;
    InvokeKind kind = InvokeKind::Method;
    bool hidden = false;
    std::string_view help;
    std::span<const ParameterInfo> parameters;
    TypeInfo result;
    Invoker invoke = nullptr;
    std::span<const ErrorCondition> errors = {};
    CallExample example = {};
};

/// The constant facts of a class.
struct ClassHeader {
    std::string_view name;
    std::string_view help;
    /// The value of the member `ClassID`.
    std::int32_t number = 0;
    /// Fixed for ever: the class and its default interface.
    GuidValue classId;
    GuidValue interfaceId;
    bool creatable = false;
    /// Prefix of the programmatic identifier.
    std::string_view library = "VlGeneralServices";
    /// Its outgoing interface, where it has one.
    std::string_view eventInterface = {};
    GuidValue eventInterfaceId = {};
};

class VLGS_API ClassInfo {
  public:
    static constexpr std::size_t maximumParameters = 16;

    ClassInfo(const ClassHeader& header, std::span<const MemberInfo> members,
              std::span<const MemberInfo> events, Ref<Object> (*factory)());
    ~ClassInfo();

    const ClassHeader& header() const noexcept { return header_; }
    std::string_view name() const noexcept { return header_.name; }
    /// "VlGeneralServices.INIFile"
    const String& programmaticId() const noexcept { return programmaticId_; }
    /// In interface order.
    std::span<const MemberInfo> members() const noexcept { return members_; }
    std::span<const MemberInfo> events() const noexcept { return events_; }
    /// A new object. Raises 429 when the class is not creatable.
    Ref<Object> create() const;

    /// The number of the member of that name in any case, or `unknownMember`.
    DispatchId idOf(std::u16string_view name) const noexcept;
    /// The place from 0 of a parameter by its name in any case, in any of the members of that number; nothing
    /// for a name that none of them has.
    std::optional<std::int32_t> parameterOf(DispatchId member, std::u16string_view name) const noexcept;
    /// The member of that number that serves the call; null when there is none.
    const MemberInfo* find(DispatchId member, InvokeKind kind) const noexcept;

    /// The one routine that late-bound calls of every face go through. Arguments are placed, left-out ones
    /// replaced by their defaults, each is converted to its parameter's type, and what the member writes goes
    /// back to the caller. Arguments of a property that takes none go to the default member of the object
    /// that is its value, and on from there, up to a hundred steps.
    ///
    /// Raises CallError for the call itself: 438 no such member, 448 to 450 for arguments, 13, 6, 91 and 94
    /// for ones that do not fit; and what the member raises.
    Variant invoke(Object& self, DispatchId member, InvokeKind kind, const Arguments& arguments) const;
    Variant invoke(Object& self, std::u16string_view name, InvokeKind kind, const Arguments& arguments) const;

  private:
    /// The members of one number, by what a call asks for. A property that is written in one way only has
    /// that for both ways.
    using MembersByKind = std::array<std::uint16_t, 16>;

    Variant invoke(Object& self, const MemberInfo& member, InvokeKind kind, const Arguments& arguments) const;
    Variant invokeWithParameters(Object& self, const MemberInfo& member, const Arguments& arguments) const;
    Variant invokeResult(Object& self, const MemberInfo& member, InvokeKind kind,
                         const Arguments& arguments) const;

    const ClassHeader& header_;
    String programmaticId_;
    std::span<const MemberInfo> members_;
    std::span<const MemberInfo> events_;
    Ref<Object> (*create_)();
    std::unique_ptr<const NameTable> names_;
    std::vector<MembersByKind> byId_; // from `enumerationMember` on
};

/// Inside a catch block: raises a conversion's error as one about the parameter (CallError.h). Any other
/// exception goes on as it is.
[[noreturn]] VLGS_API void raiseMisfit(const ClassHeader& type, const MemberInfo& member,
                                       std::size_t parameter);

} // namespace vlgs
