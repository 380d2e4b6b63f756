#include "automation/ClassInfo.h"

#include "base/CaseFold.h"
#include "base/Error.h"

#include <algorithm>
#include <array>
#include <bit>

namespace vlgs {

namespace {

constexpr char16_t lowerAscii(char16_t c) {
    return c >= u'A' && c <= u'Z' ? c + (u'a' - u'A') : c;
}

bool equalNames(std::string_view a, std::u16string_view b) noexcept {
    return std::ranges::equal(
        a, b, [](char x, char16_t y) { return lowerAscii(static_cast<char16_t>(x)) == lowerAscii(y); });
}

constexpr std::size_t bitOf(MemberKind kind) {
    return static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(kind)));
}

using Slots = std::array<Variant*, ClassInfo::maximumParameters>;

// A property write takes its value last, whatever optional parameters stand before it.
void place(const MemberInfo& member, std::span<Variant> arguments, Slots& slots) {
    const std::size_t count = member.parameters.size();
    if (arguments.size() > count)
        raise(RunTimeError::WrongNumberOfArguments);
    const bool write = covers(InvokeKind(12), InvokeKind(member.kind));
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool value = write && i + 1 == arguments.size();
        slots[value ? count - 1 : i] = &arguments[i];
    }
}

void placeNamed(const MemberInfo& member, std::span<const NamedArgument> arguments, Slots& slots) {
    for (const NamedArgument& argument : arguments) {
        const auto found = std::ranges::find_if(member.parameters, [&](const ParameterInfo& parameter) {
            return equalNames(parameter.name, argument.name);
        });
        if (found == member.parameters.end())
            raise(RunTimeError::NamedArgumentNotFound);
        auto& slot = slots[static_cast<std::size_t>(found - member.parameters.begin())];
        if (slot)
            raise(RunTimeError::WrongNumberOfArguments);
        slot = argument.value;
    }
}

// Not inlined, so that reading a property without parameters needs no frame for them.
[[gnu::noinline]] Variant invokeWithParameters(Object& self, const MemberInfo& member,
                                               const Arguments& arguments) {
    Slots slots;
    std::fill_n(slots.begin(), member.parameters.size(), nullptr);
    place(member, arguments.positional, slots);
    placeNamed(member, arguments.named, slots);
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
        if (slots[i] && !slots[i]->isMissing())
            continue;
        if (!member.parameters[i].optional)
            raise(RunTimeError::ArgumentNotOptional);
        slots[i] = nullptr;
    }
    return member.invoke(self, slots.data());
}

// `document.Sections("A")`, `section.Value("k")`: arguments of a property that takes none go to the default
// member of the object that is its value.
[[gnu::noinline]] Variant invokeResult(Object& self, const MemberInfo& member, InvokeKind kind,
                                       const Arguments& arguments) {
    if (arguments.positional.empty())
        raise(RunTimeError::NamedArgumentNotFound);
    const bool mayGiveObject =
        member.result.type == VarType::Object || member.result.type == VarType::Variant;
    const Variant value =
        member.kind == MemberKind::PropertyGet && mayGiveObject ? member.invoke(self, nullptr) : Variant();
    if (!value.isObject())
        raise(RunTimeError::WrongNumberOfArguments);
    if (!value.object())
        raise(RunTimeError::ObjectVariableNotSet);
    return value.reference()->invoke(defaultMember, kind, arguments);
}

} // namespace

ClassInfo::ClassInfo(const ClassHeader& header, std::span<const MemberInfo> members,
                     std::span<const MemberInfo> events, Ref<Object> (*factory)())
    : header_(header),
      programmaticId_(String::fromUtf8(std::string(header.library) + "." + std::string(header.name))),
      members_(members), events_(events), create_(factory), names_(members.size()) {
    for (std::uint16_t index = 0; index < members.size(); ++index) {
        const auto place = static_cast<std::size_t>(members[index].id - enumerationMember);
        if (place >= byId_.size())
            byId_.resize(place + 1, {NameTable::none, NameTable::none, NameTable::none, NameTable::none});
        auto& member = byId_[place][bitOf(members[index].kind)];
        member = std::min(member, index);
        names_.add(members[index].name, index);
    }
    for (auto& [method, get, put, putRef] : byId_) {
        put = put == NameTable::none ? putRef : put;
        putRef = putRef == NameTable::none ? put : putRef;
    }
}

Ref<Object> ClassInfo::create() const {
    if (!create_)
        raise(RunTimeError::CannotCreateObject);
    return create_();
}

DispatchId ClassInfo::idOf(std::u16string_view name) const noexcept {
    const auto member = names_.find(name);
    return member == NameTable::none ? unknownMember : members_[member].id;
}

const MemberInfo* ClassInfo::find(DispatchId member, InvokeKind kind) const noexcept {
    const auto place = static_cast<std::uint32_t>(member) - static_cast<std::uint32_t>(enumerationMember);
    if (place >= byId_.size())
        return nullptr;
    std::uint16_t first = NameTable::none;
    for (std::size_t bit = 0; bit < byId_[place].size(); ++bit)
        if (static_cast<unsigned>(kind) >> bit & 1)
            first = std::min(first, byId_[place][bit]);
    return first == NameTable::none ? nullptr : &members_[first];
}

Variant ClassInfo::invoke(Object& self, DispatchId id, InvokeKind kind, const Arguments& arguments) const {
    const MemberInfo* member = find(id, kind);
    if (!member)
        raise(RunTimeError::NoSuchMember);
    if (!member->parameters.empty())
        return invokeWithParameters(self, *member, arguments);
    if (arguments.positional.empty() && arguments.named.empty())
        return member->invoke(self, nullptr);
    return invokeResult(self, *member, kind, arguments);
}

} // namespace vlgs
