#include "automation/ClassInfo.h"

#include "automation/CaseFold.h"
#include "automation/Error.h"

#include <algorithm>
#include <array>
#include <bit>

namespace vlgs {

namespace {

constexpr char16_t lowerAscii(char16_t c) {
    return c >= u'A' && c <= u'Z' ? c + (u'a' - u'A') : c;
}

// Member and parameter names are plain ASCII, so that folding ASCII alone finds them.
template <class Text>
std::uint32_t hashName(Text name) noexcept {
    std::uint32_t hash = 2166136261u;
    for (auto c : name)
        hash = (hash ^ lowerAscii(static_cast<char16_t>(c))) * 16777619u;
    return hash ^ hash >> 15;
}

bool equalNames(std::string_view a, std::u16string_view b) noexcept {
    return std::ranges::equal(
        a, b, [](char x, char16_t y) { return lowerAscii(static_cast<char16_t>(x)) == lowerAscii(y); });
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
    for (const auto& [name, value] : arguments) {
        const auto found = std::ranges::find_if(member.parameters, [&](const ParameterInfo& parameter) {
            return equalNames(parameter.name, name);
        });
        if (found == member.parameters.end())
            raise(RunTimeError::NamedArgumentNotFound);
        auto& slot = slots[static_cast<std::size_t>(found - member.parameters.begin())];
        if (slot)
            raise(RunTimeError::WrongNumberOfArguments);
        slot = value;
    }
}

} // namespace

ClassInfo::ClassInfo(const ClassHeader& header, std::span<const MemberInfo> members,
                     std::span<const MemberInfo> events, Ref<Object> (*factory)())
    : header_(header),
      programmaticId_(String::fromUtf8(std::string(header.library) + "." + std::string(header.name))),
      members_(members), events_(events), create_(factory) {
    names_.resize(std::bit_ceil(members.size() * 2 + 1));
    for (std::size_t i = 0; i < members.size(); ++i) {
        const auto index = static_cast<std::uint16_t>(i);
        const auto place = static_cast<std::size_t>(members[i].id - enumerationMember);
        if (place >= firstById_.size())
            firstById_.resize(place + 1, none);
        if (firstById_[place] == none)
            firstById_[place] = index;
        const auto hash = hashName(members[i].name);
        auto slot = hash & (names_.size() - 1);
        while (names_[slot].member != none)
            slot = (slot + 1) & (names_.size() - 1);
        names_[slot] = {hash, index};
    }
}

Ref<Object> ClassInfo::create() const {
    if (!create_)
        raise(RunTimeError::CannotCreateObject);
    return create_();
}

DispatchId ClassInfo::idOf(std::u16string_view name) const noexcept {
    const auto hash = hashName(name);
    for (auto slot = hash & (names_.size() - 1); names_[slot].member != none;
         slot = (slot + 1) & (names_.size() - 1)) {
        const auto& member = members_[names_[slot].member];
        if (names_[slot].hash == hash && equalNames(member.name, name))
            return member.id;
    }
    return unknownMember;
}

const MemberInfo* ClassInfo::find(DispatchId member, InvokeKind kind) const noexcept {
    const auto place = static_cast<std::uint32_t>(member) - static_cast<std::uint32_t>(enumerationMember);
    if (place >= firstById_.size() || firstById_[place] == none)
        return nullptr;
    const MemberInfo* other = nullptr;
    for (std::size_t i = firstById_[place]; i < members_.size(); ++i) {
        if (members_[i].id != member)
            continue;
        if (covers(kind, InvokeKind(members_[i].kind)))
            return &members_[i];
        // An assignment finds the one way of writing that the member has.
        if (covers(InvokeKind(12), kind) && covers(InvokeKind(12), InvokeKind(members_[i].kind)))
            other = &members_[i];
    }
    return other;
}

Variant ClassInfo::invoke(Object& self, DispatchId id, InvokeKind kind, const Arguments& arguments) const {
    const MemberInfo* member = find(id, kind);
    if (!member)
        raise(RunTimeError::NoSuchMember);
    // `document.Sections("A")`: arguments of a property that takes none go to its value's default member.
    if (member->parameters.empty() && member->kind == MemberKind::PropertyGet &&
        member->result.type == VarType::Object && !arguments.positional.empty()) {
        const Variant value = member->invoke(self, nullptr);
        if (!value.object())
            raise(RunTimeError::ObjectVariableNotSet);
        return value.reference()->invoke(defaultMember, kind, arguments);
    }
    Slots slots{};
    place(*member, arguments.positional, slots);
    placeNamed(*member, arguments.named, slots);
    for (std::size_t i = 0; i < member->parameters.size(); ++i) {
        if (slots[i] && !slots[i]->isMissing())
            continue;
        if (!member->parameters[i].optional)
            raise(RunTimeError::ArgumentNotOptional);
        slots[i] = nullptr;
    }
    return member->invoke(self, slots.data());
}

} // namespace vlgs
