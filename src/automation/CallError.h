// SPDX-License-Identifier: MIT
// What goes wrong with a late-bound call before its member runs. The number is the run time's; the
// description begins with the run time's text and names what it is about: "Argument not optional: sSection of
// INIFile.Key".
#pragma once

#include "automation/ClassInfo.h"
#include "base/Error.h"

#include <optional>

namespace vlgs {

/// The verdict on one call, which a face turns into its own numbers. A member that makes such a call itself
/// and lets its failure through raises one too; `isAbout` tells them apart.
class CallError final : public Error {
  public:
    CallError(RunTimeError number, std::u16string_view about);
    CallError(const Error& error, const Arguments& call, std::optional<std::size_t> argument);

    /// The same verdict on this call, and which argument is at fault: positional ones first, from 0.
    CallError in(const Arguments& call, std::optional<std::size_t> argument = {}) &&;

    bool isAbout(const Arguments& call) const noexcept { return call_ == &call; }
    std::optional<std::size_t> argument() const noexcept { return argument_; }

  private:
    const Arguments* call_ = nullptr; // to compare; it may have ended
    std::optional<std::size_t> argument_;
};

/// An argument that does not fit its parameter.
class MisfitError final : public Error {
  public:
    MisfitError(const Error& error, const ClassHeader& type, const MemberInfo& member, std::size_t parameter);
    std::size_t parameter() const noexcept { return parameter_; }

  private:
    std::size_t parameter_;
};

/// 429 for a class that callers cannot create, or that there is not.
CallError cannotCreate(std::u16string_view name);
/// 438 for a name, or a number and kind, that no member of the class has.
CallError noSuchMember(const ClassInfo& type, std::u16string_view name);
CallError noSuchMember(const ClassInfo& type, DispatchId id, InvokeKind kind);
/// 448; `name` is empty for an argument given by number.
CallError noSuchParameter(const ClassHeader& type, const MemberInfo& member, std::u16string_view name);
/// 449
CallError argumentLeftOut(const ClassHeader& type, const MemberInfo& member, std::size_t parameter);
/// 450 for more arguments than there are parameters, for an argument that is given twice, and for a chain of
/// default members that never takes the arguments.
CallError tooManyArguments(const ClassHeader& type, const MemberInfo& member, std::size_t given);
CallError argumentGivenTwice(const ClassHeader& type, const MemberInfo& member, std::size_t parameter);
CallError endlessDefaultMembers(const ClassHeader& type, const MemberInfo& member);

} // namespace vlgs
