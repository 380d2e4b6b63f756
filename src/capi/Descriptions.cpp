// SPDX-License-Identifier: MIT
// Names and help texts of descriptions are literals, so each ends with a NUL and lives for ever.
#include "capi/Boundary.h"
#include "library/Classes.h"

using namespace vlgs;
using namespace vlgs::capi;

namespace {

const vlgs_class* give(const ClassInfo* info) {
    return reinterpret_cast<const vlgs_class*>(info);
}
const ClassInfo& from(const vlgs_class* type) {
    return *reinterpret_cast<const ClassInfo*>(type);
}

vlgs_type typeOf(const TypeInfo& type) {
    const char* name = nullptr;
    if (type.classInfo)
        name = type.classInfo().name().data();
    else if (type.enumeration)
        name = type.enumeration->name.data();
    else if (type.record)
        name = type.record->name.data();
    return {code(type.type), type.byReference, type.enumerator, name};
}

const MemberInfo* memberOf(const vlgs_class* type, std::size_t index) {
    const auto members = from(type).members();
    const auto events = from(type).events();
    if (index < members.size())
        return &members[index];
    return index - members.size() < events.size() ? &events[index - members.size()] : nullptr;
}

} // namespace

const vlgs_class* vlgs_class_at(size_t index) {
    return index < classes().size() ? give(classes()[index]) : nullptr;
}

const vlgs_class* vlgs_class_find(const char* name) {
    const ClassInfo* found = nullptr;
    guarded([&] { found = findClass(textOf(name)); });
    return give(found);
}

const vlgs_class* vlgs_class_of(const vlgs_object* object) {
    return give(object ? capi::from(object)->classInfo() : nullptr);
}

void vlgs_class_describe(const vlgs_class* type, vlgs_class_facts* out) {
    const ClassHeader& header = from(type).header();
    *out = {.library = header.library.data(),
            .name = header.name.data(),
            .help = header.help.data(),
            .event_interface = header.eventInterface.data(),
            .creatable = header.creatable,
            .member_count = from(type).members().size(),
            .event_count = from(type).events().size()};
}

int vlgs_member_describe(const vlgs_class* type, size_t member, vlgs_member* out) {
    const MemberInfo* info = memberOf(type, member);
    if (!info)
        return 0;
    *out = {.name = info->name.data(),
            .help = info->help.data(),
            .id = info->id,
            .kind = static_cast<std::uint32_t>(info->kind),
            .hidden = info->hidden,
            .parameter_count = info->parameters.size(),
            .result = typeOf(info->result),
            .error_count = info->errors.size(),
            .example = info->example.call.data(),
            .example_output = info->example.prints.data()};
    return 1;
}

int vlgs_parameter_describe(const vlgs_class* type, size_t member, size_t parameter, vlgs_parameter* out) {
    const MemberInfo* info = memberOf(type, member);
    if (!info || parameter >= info->parameters.size())
        return 0;
    const ParameterInfo& described = info->parameters[parameter];
    const DefaultValue& defaultValue = described.defaultValue;
    const bool isText = defaultValue.kind == DefaultValue::Kind::Text;
    const bool isNumber = defaultValue.kind == DefaultValue::Kind::Number;
    *out = {.name = described.name.data(),
            .meaning = described.meaning.data(),
            .type = typeOf(described.type),
            .optional = described.optional,
            .default_type = static_cast<std::uint16_t>(isText     ? VLGS_TEXT
                                                       : isNumber ? VLGS_LONG
                                                                  : VLGS_EMPTY),
            .default_number = defaultValue.number,
            .default_text = reinterpret_cast<const std::uint16_t*>(defaultValue.text.data()),
            .default_length = defaultValue.text.size()};
    return 1;
}

int vlgs_error_describe(const vlgs_class* type, size_t member, size_t error, vlgs_error_condition* out) {
    const MemberInfo* info = memberOf(type, member);
    if (!info || error >= info->errors.size())
        return 0;
    *out = {info->errors[error].code, info->errors[error].when.data()};
    return 1;
}

int vlgs_constant_describe(size_t index, vlgs_constant* out) {
    for (const EnumInfo* info : enumerations()) {
        if (index < info->members.size()) {
            *out = {info->name.data(), info->members[index].name.data(), info->members[index].value};
            return 1;
        }
        index -= info->members.size();
    }
    return 0;
}
