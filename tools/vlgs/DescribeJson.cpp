// SPDX-License-Identifier: MIT
// The descriptions for programs.
#include "Describe.h"
#include "Json.h"
#include "Members.h"
#include "TypeNames.h"
#include "library/Classes.h"

namespace vlgs::cli {

namespace {

void writeParameter(Json& json, const ParameterInfo& parameter) {
    json.object([&] {
        json.field("name", parameter.name);
        json.field("type", typeName(parameter.type));
        json.field("byReference", parameter.type.byReference);
        json.field("optional", parameter.optional);
        json.name("default");
        if (parameter.defaultValue.kind == DefaultValue::Kind::Number)
            json.raw(std::to_string(parameter.defaultValue.number));
        else if (parameter.defaultValue.kind == DefaultValue::Kind::Text)
            json.value(parameter.defaultValue.text);
        else
            json.null();
        json.field("meaning", parameter.meaning);
    });
}

void writeErrors(Json& json, std::span<const ErrorCondition> errors) {
    json.name("errors");
    json.array([&] {
        for (const auto& error : errors)
            json.object([&] {
                json.name("code");
                json.raw(std::to_string(error.code));
                json.field("name", messageName(error.code));
                json.field("when", error.when);
            });
    });
}

void writeExample(Json& json, const CallExample& example) {
    json.name("example");
    if (example.call.empty())
        return json.null();
    json.object([&] {
        json.field("call", example.call);
        json.field("prints", example.prints);
    });
}

void writeMember(Json& json, const Member& member) {
    json.object([&] {
        json.field("name", member.main().name);
        json.field("kind", member.isMethod() ? "method" : "property");
        json.field("reads", member.isMethod() || member.reads());
        json.field("writes", member.writes());
        json.field("default", member.main().id == defaultMember);
        json.name("type");
        member.type().type == VarType::Empty ? json.null() : json.value(typeName(member.type()));
        json.field("help", member.main().help);
        json.name("parameters");
        json.array([&] {
            for (const auto* parameter : parametersOf(member))
                writeParameter(json, *parameter);
        });
        writeErrors(json, member.main().errors);
        writeExample(json, member.main().example);
    });
}

void writeFacts(Json& json, const ClassInfo& info) {
    json.field("name", info.name());
    json.field("identifier", info.programmaticId());
    json.field("creatable", info.header().creatable);
    json.field("help", info.header().help);
}

void writeMembers(Json& json, std::string_view name, std::span<const MemberInfo> infos) {
    json.name(name);
    json.array([&] {
        for (const auto& member : membersOf(infos))
            writeMember(json, member);
    });
}

} // namespace

void listClassesAsJson(std::ostream& out) {
    Json json(out, Json::Layout::Entries);
    json.array([&] {
        for (const auto* info : classes())
            json.object([&] { writeFacts(json, *info); });
    });
    json.end();
}

void describeAsJson(std::ostream& out, const ClassInfo& info) {
    Json json(out, Json::Layout::Entries);
    json.object([&] {
        writeFacts(json, info);
        writeMembers(json, "members", info.members());
        writeMembers(json, "events", info.events());
    });
    json.end();
}

void describeAsJson(std::ostream& out, const Member& member) {
    Json json(out, Json::Layout::Entries);
    writeMember(json, member);
    json.end();
}

} // namespace vlgs::cli
