// SPDX-License-Identifier: MIT
#include "automation/ClassInfo.h"

#include "automation/CallError.h"
#include "base/Ascii.h"
#include "base/Error.h"
#include "base/NameTable.h"

#include <algorithm>
#include <array>

namespace vlgs {

namespace {

bool equalNames(std::string_view a, std::u16string_view b) noexcept {
    return std::ranges::equal(a, b, [](char x, char16_t y) {
        return ascii::toLower(static_cast<char16_t>(x)) == ascii::toLower(y);
    });
}

std::optional<std::size_t> placeOf(const MemberInfo& member, std::u16string_view name) noexcept {
    const auto found = std::ranges::find_if(
        member.parameters, [&](const ParameterInfo& each) { return equalNames(each.name, name); });
    if (found == member.parameters.end())
        return {};
    return static_cast<std::size_t>(found - member.parameters.begin());
}

/// Each parameter's argument, null for one that was left out, and which argument of the call that is.
class Placement {
  public:
    Placement(const ClassHeader& type, const MemberInfo& member, const Arguments& arguments)
        : type_(type), member_(member), arguments_(arguments) {
        std::fill_n(slots_.begin(), member.parameters.size(), nullptr);
        placePositional();
        if (!arguments.named.empty())
            placeNamed();
        for (std::size_t i = 0; i < member.parameters.size(); ++i)
            check(i);
    }
    Variant* const* slots() const noexcept { return slots_.data(); }
    std::size_t argumentOf(std::size_t parameter) const noexcept { return argument_[parameter]; }

  private:
    // A property write takes its value last, whatever optional parameters stand before it.
    void placePositional() {
        const std::size_t count = member_.parameters.size();
        const auto arguments = arguments_.positional;
        if (arguments.size() > count)
            throw tooManyArguments(type_, member_, arguments.size() + arguments_.named.size()).in(arguments_);
        for (std::size_t i = 0; i < arguments.size(); ++i)
            put(writes(member_.kind) && i + 1 == arguments.size() ? count - 1 : i, i, arguments[i]);
    }
    void placeNamed() {
        for (std::size_t i = 0; i < arguments_.named.size(); ++i) {
            const NamedArgument& given = arguments_.named[i];
            const std::size_t argument = arguments_.positional.size() + i;
            const auto place = given.place ? std::optional(static_cast<std::size_t>(*given.place))
                                           : placeOf(member_, given.name);
            if (!place || *place >= member_.parameters.size())
                throw noSuchParameter(type_, member_, given.name).in(arguments_, argument);
            if (slots_[*place])
                throw argumentGivenTwice(type_, member_, *place).in(arguments_, argument);
            put(*place, argument, *given.value);
        }
    }
    void put(std::size_t parameter, std::size_t argument, Variant& value) noexcept {
        slots_[parameter] = &value;
        argument_[parameter] = static_cast<std::uint8_t>(argument);
    }
    void check(std::size_t i) {
        const ParameterInfo& parameter = member_.parameters[i];
        if (slots_[i] && !slots_[i]->isMissing()) {
            if (arguments_.byReference && parameter.type.byReference)
                *arguments_.byReference |= 1u << argument_[i];
            return;
        }
        if (!parameter.optional)
            throw argumentLeftOut(type_, member_, i)
                .in(arguments_, slots_[i] ? std::optional<std::size_t>(argument_[i]) : std::nullopt);
        slots_[i] = nullptr;
    }

    const ClassHeader& type_;
    const MemberInfo& member_;
    const Arguments& arguments_;
    std::array<Variant*, ClassInfo::maximumParameters> slots_;
    std::array<std::uint8_t, ClassInfo::maximumParameters> argument_;
};

/// Not inlined, so that calls need no frame for it.
template <class... Asked>
[[noreturn, gnu::noinline]] void throwNoSuchMember(const ClassInfo& type, const Arguments& arguments,
                                                   Asked... asked) {
    throw noSuchMember(type, asked...).in(arguments);
}

/// Counts the default members on the calling thread's stack, the ones of callers' own objects between them
/// included.
class DefaultMemberStep {
  public:
    DefaultMemberStep() noexcept { ++depth; }
    DefaultMemberStep(const DefaultMemberStep&) = delete;
    DefaultMemberStep& operator=(const DefaultMemberStep&) = delete;
    ~DefaultMemberStep() { --depth; }
    bool isOneTooMany() const noexcept { return depth > 100; }

  private:
    constinit static thread_local int depth;
};
constinit thread_local int DefaultMemberStep::depth = 0;

} // namespace

// Not inlined, so that reading a property without parameters needs no frame for them.
[[gnu::noinline]] Variant ClassInfo::invokeWithParameters(Object& self, const MemberInfo& member,
                                                          const Arguments& arguments) const {
    const Placement placement(header_, member, arguments);
    try {
        return member.invoke(self, placement.slots());
    } catch (const MisfitError& misfit) {
        throw CallError(misfit, arguments, placement.argumentOf(misfit.parameter()));
    }
}

// `document.Sections("A")`, `section.Value("k")`
[[gnu::noinline]] Variant ClassInfo::invokeResult(Object& self, const MemberInfo& member, InvokeKind kind,
                                                  const Arguments& arguments) const {
    const auto& named = arguments.named;
    if (arguments.positional.empty() ||
        std::ranges::any_of(named, [](const auto& each) { return each.place.has_value(); }))
        throw noSuchParameter(header_, member, named.empty() ? std::u16string_view() : named[0].name)
            .in(arguments, arguments.positional.size());
    const bool mayGiveObject =
        member.result.type == VarType::Object || member.result.type == VarType::Variant;
    const Variant value =
        member.kind == InvokeKind::PropertyGet && mayGiveObject ? member.invoke(self, nullptr) : Variant();
    if (!value.isObject())
        throw tooManyArguments(header_, member, arguments.positional.size() + named.size()).in(arguments);
    if (!value.object())
        raise(RunTimeError::ObjectVariableNotSet);
    const DefaultMemberStep step;
    if (step.isOneTooMany())
        throw endlessDefaultMembers(header_, member).in(arguments);
    return value.reference()->invoke(defaultMember, kind, arguments);
}

ClassInfo::ClassInfo(const ClassHeader& header, std::span<const MemberInfo> members,
                     std::span<const MemberInfo> events, Ref<Object> (*factory)())
    : header_(header),
      programmaticId_(String::fromUtf8(std::string(header.library) + "." + std::string(header.name))),
      members_(members), events_(events), create_(factory) {
    auto names = std::make_unique<NameTable>(members.size());
    MembersByKind nobody;
    nobody.fill(NameTable::none);
    for (std::uint16_t index = 0; const auto& member : members) {
        const auto place = static_cast<std::size_t>(member.id - enumerationMember);
        if (place >= byId_.size())
            byId_.resize(place + 1, nobody);
        for (unsigned asked = 0; asked < nobody.size(); ++asked)
            if (covers(InvokeKind(asked), member.kind))
                byId_[place][asked] = std::min(byId_[place][asked], index);
        names->add(member.name, index++);
    }
    for (auto& byKind : byId_)
        for (unsigned asked = 0; asked < byKind.size(); ++asked)
            if (byKind[asked] == NameTable::none && writes(InvokeKind(asked)))
                byKind[asked] = byKind[static_cast<std::size_t>(InvokeKind::Write)];
    names_ = std::move(names);
}

ClassInfo::~ClassInfo() = default;

Ref<Object> ClassInfo::create() const {
    if (!create_)
        throw cannotCreate(programmaticId_);
    return create_();
}

DispatchId ClassInfo::idOf(std::u16string_view name) const noexcept {
    const auto member = names_->find(name);
    return member == NameTable::none ? unknownMember : members_[member].id;
}

std::optional<std::int32_t> ClassInfo::parameterOf(DispatchId member,
                                                   std::u16string_view name) const noexcept {
    for (const auto& row : members_)
        if (row.id == member)
            if (const auto place = placeOf(row, name))
                return static_cast<std::int32_t>(*place);
    return {};
}

const MemberInfo* ClassInfo::find(DispatchId member, InvokeKind kind) const noexcept {
    const auto place = static_cast<std::uint32_t>(member) - static_cast<std::uint32_t>(enumerationMember);
    if (place >= byId_.size())
        return nullptr;
    const auto index = byId_[place][static_cast<std::size_t>(kind) & 15];
    return index == NameTable::none ? nullptr : &members_[index];
}

inline Variant ClassInfo::invoke(Object& self, const MemberInfo& member, InvokeKind kind,
                                 const Arguments& arguments) const {
    if (!member.parameters.empty())
        return invokeWithParameters(self, member, arguments);
    if (arguments.positional.empty() && arguments.named.empty())
        return member.invoke(self, nullptr);
    return invokeResult(self, member, kind, arguments);
}

Variant ClassInfo::invoke(Object& self, DispatchId id, InvokeKind kind, const Arguments& arguments) const {
    if (const MemberInfo* member = find(id, kind))
        return invoke(self, *member, kind, arguments);
    throwNoSuchMember(*this, arguments, id, kind);
}

Variant ClassInfo::invoke(Object& self, std::u16string_view name, InvokeKind kind,
                          const Arguments& arguments) const {
    const auto index = names_->find(name);
    if (index == NameTable::none)
        throwNoSuchMember(*this, arguments, name);
    const MemberInfo* member = &members_[index]; // the first one of that name
    if (!covers(kind, member->kind))
        return invoke(self, member->id, kind, arguments);
    return invoke(self, *member, kind, arguments);
}

} // namespace vlgs
