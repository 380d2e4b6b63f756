// SPDX-License-Identifier: MIT
// The vocabulary in which a class writes its one table of members, and what is derived from it at compile
// time.
//
//     class Buffer final : public Component {
//       public:
//         static constexpr auto describe() {
//             return describeClass<Buffer>(
//                 {.name = "Buffer", .help = "…", .number = 161,
//                  .classId = guid("…"), .interfaceId = guid("…"), .creatable = true},
//                 put<&Buffer::SetChunkSize>(1, "ChunkSize", "…", "lSize"),
//                 get<&Buffer::ChunkSize>(1, "ChunkSize", "…"),
//                 method<&Buffer::PutData>(4, "PutData", "…", optional("vData", "…"),
//                                          optional("sDelimiter", "…"))
//                     .raises(13, "…"),
//                 identity());
//         }
//         static const ClassInfo& description(); // in Buffer.cpp: return classInfoOf<Buffer>();
//         const ClassInfo* classInfo() const noexcept override { return &description(); }
//
// Rows stand in interface order; types come from the member functions: numbers, bool, String, Date, Currency,
// Variant, Array, enumerations, records and Refs. A parameter of type `T` or `const T&` goes in; left out, an
// optional one is its default, else zero, "" or (a Variant) `missing`. `T&` goes in and out, and so does
// `T*`, which is null when the caller left it out.
#pragma once

#include "automation/Array.h"
#include "automation/ClassInfo.h"
#include "automation/Convert.h"
#include "base/Error.h"

#include <array>
#include <optional>
#include <tuple>
#include <type_traits>
#include <utility>

namespace vlgs {

/// A row's parameter: `parameter("sName", "the section's name")` or `optional("Before", "…")`, the default in
/// between. Every parameter of the component's classes has a meaning; a bare name will do in tests.
struct ParameterRow {
    constexpr ParameterRow(const char* bareName) : name(bareName) {}
    constexpr ParameterRow(std::string_view text, std::string_view means) : name(text), meaning(means) {}
    constexpr ParameterRow(std::string_view text, std::string_view means, DefaultValue value)
        : name(text), meaning(means), isOptional(true), defaultValue(value) {}
    std::string_view name;
    std::string_view meaning;
    bool isOptional = false;
    DefaultValue defaultValue = {};
};
constexpr ParameterRow parameter(std::string_view name, std::string_view meaning) {
    return {name, meaning};
}
constexpr ParameterRow optional(std::string_view name, std::string_view meaning = {}) {
    return {name, meaning, {}};
}
constexpr ParameterRow optional(std::string_view name, std::int32_t number, std::string_view meaning = {}) {
    return {name, meaning, {DefaultValue::Kind::Number, number, {}}};
}
constexpr ParameterRow optional(std::string_view name, std::u16string_view text,
                                std::string_view meaning = {}) {
    return {name, meaning, {DefaultValue::Kind::Text, 0, text}};
}

template <class Function>
struct FunctionTraits;
template <class R, class C, class... P>
struct FunctionTraits<R (C::*)(P...)> {
    using Result = R;
    using Parameters = std::tuple<P...>;
    static constexpr std::size_t arity = sizeof...(P);
};
template <class R, class C, class... P>
struct FunctionTraits<R (C::*)(P...) const> : FunctionTraits<R (C::*)(P...)> {};
template <class R, class C, class... P>
struct FunctionTraits<R (C::*)(P...) noexcept> : FunctionTraits<R (C::*)(P...)> {};
template <class R, class C, class... P>
struct FunctionTraits<R (C::*)(P...) const noexcept> : FunctionTraits<R (C::*)(P...)> {};

/// What becomes of a call with an argument that does not convert to its parameter's type.
enum class MisfitAnswer : std::uint8_t { Error, Nothing, Number };

/// One row of a class's table.
template <auto Function>
struct MemberRow {
    using Traits = FunctionTraits<decltype(Function)>;
    static constexpr auto function = Function;
    InvokeKind kind;
    DispatchId id;
    std::string_view name;
    std::string_view help;
    std::array<ParameterRow, Traits::arity> parameters;
    bool isHidden = false;
    std::array<ErrorCondition, 8> errors = {};
    std::size_t errorCount = 0;
    CallExample sample = {};
    MisfitAnswer misfitAnswer = MisfitAnswer::Error;
    std::u16string_view misfitText = {};
    /// For a member that never raises: an argument that does not convert to its parameter's type makes it
    /// answer `text` without running, or nothing (0, "", False, no object).
    constexpr MemberRow neverRaises(std::u16string_view text = {}) const {
        MemberRow row = *this;
        row.misfitAnswer = MisfitAnswer::Nothing;
        row.misfitText = text;
        return row;
    }
    /// The same for a member that answers the numbers of errors.
    constexpr MemberRow answersErrors() const {
        MemberRow row = *this;
        row.misfitAnswer = MisfitAnswer::Number;
        return row;
    }
    constexpr MemberRow hidden() const {
        MemberRow row = *this;
        row.isHidden = true;
        return row;
    }
    /// `.raises(eMsg_NoSectionName, "the name is empty")`: a code of the catalogue or a run-time number.
    constexpr MemberRow raises(std::int32_t code, std::string_view when) const {
        MemberRow row = *this;
        row.errors[row.errorCount++] = {code, when};
        return row;
    }
    constexpr MemberRow raises(RunTimeError number, std::string_view when) const {
        return raises(static_cast<std::int32_t>(number), when);
    }
    /// Conditions that several members share.
    template <std::size_t Count>
    constexpr MemberRow raises(const ErrorCondition (&conditions)[Count]) const {
        MemberRow row = *this;
        for (const auto& condition : conditions)
            row.errors[row.errorCount++] = condition;
        return row;
    }
    /// `.example("General.Split_ a,b ,", "a\nb")`: what is typed after `vlgs call`, and what that prints.
    constexpr MemberRow example(std::string_view call, std::string_view prints) const {
        MemberRow row = *this;
        row.sample = {call, prints};
        return row;
    }
};

template <auto Function, class... Names>
constexpr auto row(InvokeKind kind, DispatchId id, std::string_view name, std::string_view help,
                   Names... names) {
    using Traits = typename MemberRow<Function>::Traits;
    static_assert(sizeof...(Names) == Traits::arity, "name each parameter");
    static_assert(!std::is_same_v<typename Traits::Result, Array>, "tell of what: ArrayOf<String>");
    return MemberRow<Function>{kind, id, name, help, {ParameterRow(names)...}};
}
template <auto Function, class... Names>
constexpr auto method(DispatchId id, std::string_view name, std::string_view help, Names... names) {
    return row<Function>(InvokeKind::Method, id, name, help, names...);
}
template <auto Function, class... Names>
constexpr auto get(DispatchId id, std::string_view name, std::string_view help, Names... names) {
    return row<Function>(InvokeKind::PropertyGet, id, name, help, names...);
}
template <auto Function, class... Names>
constexpr auto put(DispatchId id, std::string_view name, std::string_view help, Names... names) {
    return row<Function>(InvokeKind::PropertyPut, id, name, help, names...);
}
template <auto Function, class... Names>
constexpr auto putRef(DispatchId id, std::string_view name, std::string_view help, Names... names) {
    return row<Function>(InvokeKind::PropertyPutRef, id, name, help, names...);
}

/// A class's table: its facts and its rows in interface order; `events` are the rows of its outgoing
/// interface.
template <class T, class Rows, class Events = std::tuple<>>
struct ClassTable {
    using Class = T;
    ClassHeader header;
    Rows rows;
    Events events = {};
    template <class... E>
    constexpr auto withEvents(E... eventRows) const {
        return ClassTable<T, Rows, std::tuple<E...>>{header, rows, {eventRows...}};
    }
};

template <auto F>
constexpr auto asRows(const MemberRow<F>& row) {
    return std::tuple(row);
}
template <class... R>
constexpr auto asRows(const std::tuple<R...>& rows) {
    return rows;
}
template <class T, class... Rows>
constexpr auto describeClass(const ClassHeader& header, const Rows&... rows) {
    auto all = std::tuple_cat(asRows(rows)...);
    return ClassTable<T, decltype(all)>{header, all};
}

// ---- Types ----------------------------------------------------------------------------------------------

/// How a C++ type travels in a Variant.
template <class T>
struct TypeTraits;

template <class T, VarType Type, T (*From)(const Variant&)>
struct PlainTypeTraits {
    static constexpr TypeInfo info{.type = Type};
    static T from(const Variant& value) { return From(value); }
    static Variant to(T value) { return Variant(std::move(value)); }
};
template <>
struct TypeTraits<std::uint8_t> : PlainTypeTraits<std::uint8_t, VarType::Byte, toByte> {};
template <>
struct TypeTraits<std::int16_t> : PlainTypeTraits<std::int16_t, VarType::Integer, toInteger> {};
template <>
struct TypeTraits<std::int32_t> : PlainTypeTraits<std::int32_t, VarType::Long, toLong> {};
template <>
struct TypeTraits<float> : PlainTypeTraits<float, VarType::Single, toSingle> {};
template <>
struct TypeTraits<double> : PlainTypeTraits<double, VarType::Double, toDouble> {};
template <>
struct TypeTraits<bool> : PlainTypeTraits<bool, VarType::Boolean, toBoolean> {};
template <>
struct TypeTraits<String> : PlainTypeTraits<String, VarType::String, toText> {};
template <>
struct TypeTraits<Date> : PlainTypeTraits<Date, VarType::Date, toDate> {};
template <>
struct TypeTraits<Currency> : PlainTypeTraits<Currency, VarType::Currency, toCurrency> {};
template <>
struct TypeTraits<Variant> {
    static constexpr TypeInfo info{.type = VarType::Variant};
    static const Variant& from(const Variant& value) { return value; }
    static Variant to(Variant value) { return value; }
};
template <>
struct TypeTraits<Array> {
    static constexpr TypeInfo info{.type = arrayOf(VarType::Variant)};
    static Array from(const Variant& value) {
        if (!value.isArray())
            raise(RunTimeError::TypeMismatch);
        return value.array();
    }
    static Variant to(Array value) { return value; }
};
template <class T>
struct TypeTraits<ArrayOf<T>> { // a result only
    static constexpr TypeInfo info{.type = arrayOf(TypeTraits<T>::info.type)};
    static Variant to(ArrayOf<T> value) { return value; }
};
template <class E>
requires std::is_enum_v<E>
struct TypeTraits<E> {
    static constexpr TypeInfo info{.type = VarType::Long, .enumeration = &enumInfo(E{})};
    static E from(const Variant& value) { return static_cast<E>(toLong(value)); }
    static Variant to(E value) { return value; }
};
template <class T>
concept DescribedClass = requires {
    T::description();
};
template <class T>
struct TypeTraits<Ref<T>> {
    static constexpr TypeInfo info = [] {
        TypeInfo type{.type = VarType::Object};
        if constexpr (std::is_same_v<T, Enumerator>)
            type.enumerator = true;
        else if constexpr (DescribedClass<T>)
            type.classInfo = &T::description;
        return type;
    }();
    static Ref<T> from(const Variant& value) {
        Ref<Object> object = toObject(value);
        if constexpr (std::is_same_v<T, Object>) {
            return object;
        } else {
            auto* typed = dynamic_cast<T*>(object.get());
            if (object && !typed)
                raise(RunTimeError::TypeMismatch);
            return Ref<T>(typed);
        }
    }
    static Variant to(Ref<T> value) { return Variant(std::move(value)); }
};

/// A record type names its fields once: `static constexpr auto record()` gives a RecordTable.
template <class T, std::size_t Count>
struct RecordTable {
    std::string_view name;
    GuidValue id;
    std::string_view help;
    std::array<std::pair<std::string_view, String T::*>, Count> fields;
};
template <class T>
concept RecordType = requires {
    T::record();
};
template <RecordType T>
struct TypeTraits<T> {
    static constexpr auto table = T::record();
    static constexpr auto names = [] {
        std::array<std::string_view, table.fields.size()> result;
        for (std::size_t i = 0; i < result.size(); ++i)
            result[i] = table.fields[i].first;
        return result;
    }();
    static constexpr RecordInfo recordInfo{table.name, table.id, table.help, names};
    static constexpr TypeInfo info{.type = VarType::Record, .record = &recordInfo};
    static T from(const Variant& value) {
        if (!value.is(VarType::Record) || !value.record() || &value.record()->info() != &recordInfo)
            raise(RunTimeError::TypeMismatch);
        T result;
        for (std::size_t i = 0; i < table.fields.size(); ++i)
            result.*table.fields[i].second = value.record()->fields()[i].text();
        return result;
    }
    static Variant to(const T& value) {
        std::vector<Variant> fields;
        for (const auto& [name, field] : table.fields)
            fields.emplace_back(value.*field);
        return Variant::ofRecord(make<Record>(recordInfo, std::move(fields)));
    }
};

// ---- Parameters -----------------------------------------------------------------------------------------

/// The value of an optional parameter that the caller left out.
template <class T>
T defaultOf(const DefaultValue& defaultValue) {
    if constexpr (std::is_same_v<T, Variant>) {
        switch (defaultValue.kind) {
        case DefaultValue::Kind::None:
            return missing;
        case DefaultValue::Kind::Text:
            return String(defaultValue.text);
        default:
            return defaultValue.number;
        }
    } else if constexpr (std::is_same_v<T, String>) {
        return String(defaultValue.text);
    } else if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
        return static_cast<T>(defaultValue.number);
    } else {
        return T{};
    }
}

/// Holds one argument while a member runs. `P` is the parameter as the member declares it.
template <class P>
class ArgumentHolder { // goes in
  public:
    using T = std::remove_cvref_t<P>;
    static constexpr bool byReference = false;
    ArgumentHolder(Variant* slot, const ParameterInfo& parameter)
        : value_(slot ? T(TypeTraits<T>::from(*slot)) : defaultOf<T>(parameter.defaultValue)) {}
    const T& get() const { return value_; }
    void writeBack() {}

  private:
    T value_;
};

/// Texts and Variants go in without a copy.
template <class T>
class SharedArgument {
  public:
    static constexpr bool byReference = false;
    SharedArgument(Variant* slot, const ParameterInfo& parameter) {
        if (!slot)
            own_ = defaultOf<T>(parameter.defaultValue);
        else if constexpr (std::is_same_v<T, Variant>)
            given_ = slot;
        else if (slot->isString())
            given_ = &slot->text();
        else
            own_ = TypeTraits<T>::from(*slot);
    }
    const T& get() const { return given_ ? *given_ : own_; }
    void writeBack() {}

  private:
    const T* given_ = nullptr;
    T own_;
};
template <>
class ArgumentHolder<const String&> : public SharedArgument<String> {
    using SharedArgument::SharedArgument;
};
template <>
class ArgumentHolder<const Variant&> : public SharedArgument<Variant> {
    using SharedArgument::SharedArgument;
};

/// The T inside a Variant that holds one, null for a Variant that holds something else.
template <class T>
T* valueInside(Variant& value) {
    if constexpr (std::is_same_v<T, Variant>)
        return &value;
    else if constexpr (std::is_same_v<T, String>)
        return value.isString() ? &value.text() : nullptr;
    else if constexpr (std::is_same_v<T, Array>)
        return value.isArray() ? &value.array() : nullptr;
    else
        return nullptr;
}

template <class T>
requires(!std::is_const_v<T>) class ArgumentHolder<T&> { // goes in and out
  public:
    static constexpr bool byReference = true;
    ArgumentHolder(Variant* slot, const ParameterInfo& parameter)
        : slot_(slot), inside_(slot ? valueInside<T>(*slot) : nullptr) {
        if (!inside_)
            value_ = slot ? valueOf(*slot) : defaultOf<T>(parameter.defaultValue);
        if constexpr (std::is_same_v<T, String>)
            before_ = value_;
    }
    T& get() { return inside_ ? *inside_ : value_; }
    void writeBack() {
        if (slot_ && !inside_ && !isLeftAlone())
            *slot_ = TypeTraits<T>::to(std::move(value_));
    }

  private:
    /// A number that goes in as a text, which the member leaves as it is, stays a number.
    bool isLeftAlone() const {
        if constexpr (std::is_same_v<T, String>)
            return value_ == before_ && !slot_->isEmpty();
        else
            return false;
    }
    /// A variable that was never given a value holds no object, as it holds 0 and "".
    static T valueOf(const Variant& variable) {
        if constexpr (TypeTraits<T>::info.type == VarType::Object)
            if (variable.isEmpty())
                return {};
        return TypeTraits<T>::from(variable);
    }

    struct Nothing {};
    Variant* slot_;
    T* inside_;
    T value_{};
    [[no_unique_address]] std::conditional_t<std::is_same_v<T, String>, String, Nothing> before_{};
};

template <class T>
class ArgumentHolder<T*> { // goes in and out, may be left out
  public:
    static constexpr bool byReference = true;
    ArgumentHolder(Variant* slot, const ParameterInfo& parameter) : given_(slot), holder_(slot, parameter) {}
    T* get() { return given_ ? &holder_.get() : nullptr; }
    void writeBack() { holder_.writeBack(); }

  private:
    bool given_;
    ArgumentHolder<T&> holder_;
};

template <class P>
struct ParameterType {
    using T = std::remove_cvref_t<std::remove_pointer_t<P>>;
    static constexpr TypeInfo info = [] {
        TypeInfo type = TypeTraits<T>::info;
        type.byReference = ArgumentHolder<P>::byReference;
        return type;
    }();
};

template <class R>
struct ResultType {
    static constexpr TypeInfo info = TypeTraits<std::remove_cvref_t<R>>::info;
};
template <>
struct ResultType<void> {
    static constexpr TypeInfo info{};
};

/// Runs a call and then hands its by-reference arguments back, also when it raises; its own failure goes
/// before one of handing back.
template <class Call, class WriteBack>
auto callAndWriteBack(Call&& call, WriteBack&& writeBack) {
    const auto guarded = [&] {
        try {
            return call();
        } catch (...) {
            try {
                writeBack();
            } catch (const std::exception&) {
            }
            throw;
        }
    };
    if constexpr (std::is_void_v<decltype(call())>) {
        guarded();
        writeBack();
    } else {
        auto result = guarded();
        writeBack();
        return result;
    }
}

// ---- From table to description --------------------------------------------------------------------------

template <class T>
struct ClassDescriptionOf {
    static constexpr auto table = T::describe();
    using Rows = std::remove_cvref_t<decltype(table.rows)>;
    using Events = std::remove_cvref_t<decltype(table.events)>;

    template <bool Event, std::size_t I>
    static constexpr const auto& rowAt() {
        if constexpr (Event)
            return std::get<I>(table.events);
        else
            return std::get<I>(table.rows);
    }

    template <bool Event, std::size_t I>
    struct Row {
        static constexpr const auto& row = rowAt<Event, I>();
        using Traits = typename std::remove_cvref_t<decltype(row)>::Traits;
        using Parameters = typename Traits::Parameters;

        template <std::size_t... N>
        static constexpr auto parameterInfos(std::index_sequence<N...>) {
            return std::array<ParameterInfo, sizeof...(N)>{ParameterInfo{
                row.parameters[N].name, ParameterType<std::tuple_element_t<N, Parameters>>::info,
                row.parameters[N].isOptional, row.parameters[N].defaultValue, row.parameters[N].meaning}...};
        }
        static constexpr auto parameters = parameterInfos(std::make_index_sequence<Traits::arity>());

        /// Reads the arguments of a call; `given` has one for each parameter.
        template <template <class> class Holder, std::size_t... N, class... Given>
        static auto hold(std::index_sequence<N...>, const Given&... given) {
            std::size_t at = 0;
            [[maybe_unused]] const auto read = [&]<std::size_t At>(const auto& each) {
                at = At;
                return Holder<std::tuple_element_t<At, Parameters>>(each, parameters[At]);
            };
            try {
                return std::tuple<Holder<std::tuple_element_t<N, Parameters>>...>{
                    read.template operator()<N>(given)...};
            } catch (...) {
                raiseMisfit(table.header, info, at);
            }
        }

        /// Calls the member with held arguments and hands back what it wrote.
        template <class... Holders>
        static auto run(T& self, std::tuple<Holders...>& holders) {
            return std::apply(
                [&](auto&... each) {
                    return callAndWriteBack(
                        [&]() -> std::remove_cvref_t<typename Traits::Result> {
                            return (self.*std::remove_cvref_t<decltype(row)>::function)(each.get()...);
                        },
                        [&] { (each.writeBack(), ...); });
                },
                holders);
        }

        static Variant runHeld(T& self, auto& holders) {
            if constexpr (std::is_void_v<typename Traits::Result>) {
                run(self, holders);
                return {};
            } else {
                return TypeTraits<std::remove_cvref_t<typename Traits::Result>>::to(run(self, holders));
            }
        }
        static Variant answerTo([[maybe_unused]] const Error& misfit) {
            using R = std::remove_cvref_t<typename Traits::Result>;
            if constexpr (row.misfitAnswer == MisfitAnswer::Number)
                return misfit.number();
            else if constexpr (row.misfitText.data())
                return row.misfitText;
            else
                return TypeTraits<R>::to(R());
        }
        template <std::size_t... N>
        static Variant call(T& self, Variant* const* slots, std::index_sequence<N...> all) {
            if constexpr (row.misfitAnswer == MisfitAnswer::Error) {
                auto holders = hold<ArgumentHolder>(all, slots[N]...);
                return runHeld(self, holders);
            } else {
                std::optional<std::tuple<ArgumentHolder<std::tuple_element_t<N, Parameters>>...>> holders;
                try {
                    holders.emplace(hold<ArgumentHolder>(all, slots[N]...));
                } catch (const Error& misfit) {
                    return answerTo(misfit);
                }
                return runHeld(self, *holders);
            }
        }
        static Variant invoke(Object& self, [[maybe_unused]] Variant* const* slots) {
            return call(static_cast<T&>(self), slots, std::make_index_sequence<Traits::arity>());
        }
        static constexpr Invoker invoker() {
            if constexpr (Event)
                return nullptr; // an event is raised by the class and received by others
            else
                return &invoke;
        }
        static constexpr MemberInfo info{row.name,
                                         row.id,
                                         row.kind,
                                         row.isHidden,
                                         row.help,
                                         parameters,
                                         ResultType<typename Traits::Result>::info,
                                         invoker(),
                                         std::span(row.errors).first(row.errorCount),
                                         row.sample};
    };

    template <bool Event, std::size_t... I>
    static constexpr auto infos(std::index_sequence<I...>) {
        return std::array<MemberInfo, sizeof...(I)>{Row<Event, I>::info...};
    }
    static constexpr auto members = infos<false>(std::make_index_sequence<std::tuple_size_v<Rows>>());
    static constexpr auto events = infos<true>(std::make_index_sequence<std::tuple_size_v<Events>>());

    static Ref<Object> create() {
        if constexpr (std::is_default_constructible_v<T>)
            return make<T>();
        else
            return nullptr;
    }
};

/// The running description of a class; each class calls it once, in the source file that defines the class.
template <class T>
const ClassInfo& classInfoOf() {
    using D = ClassDescriptionOf<T>;
    static const ClassInfo info(D::table.header, D::members, D::events,
                                D::table.header.creatable ? &D::create : nullptr);
    return info;
}

} // namespace vlgs
