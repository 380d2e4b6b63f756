// SPDX-License-Identifier: MIT
// A class with one member of every kind, for tests and measurements of late-bound calls.
#pragma once

#include "automation/ClassDescription.h"
#include "automation/EventSource.h"
#include "automation/LateBound.h"

#include <algorithm>
#include <new>

namespace vlgs::test {

#define VLGS_TEST_SHADES(value) value(eShade_Light, 1) value(eShade_Dark, 2)
VLGS_ENUMERATION(enumTestShades, "701210ca-4748-4c4d-b231-240426e209fc", "Shades", VLGS_TEST_SHADES)

struct TestRecord {
    String sFirst;
    String sSecond;
    static constexpr auto record() {
        return RecordTable<TestRecord, 2>{
            "udtTestRecord",
            guid("8e3f3807-0d20-4708-bc16-26ddbddf639a"),
            "Two texts",
            {{{"sFirst", &TestRecord::sFirst}, {"sSecond", &TestRecord::sSecond}}}};
    }
};

class TestBed final : public Object, public EventSource {
  public:
    /// Any value as it came.
    Variant Echo(const Variant& vValue) { return vValue; }
    /// A value of each type, coerced; as text "2,3,4.5,True,b".
    String Typed(std::int16_t iNumber, std::int32_t lNumber, double dNumber, bool bFlag, const String& sText);
    /// Writes to its arguments: doubles the number, appends to the text, names the given Variant's type.
    void Change(std::int32_t& lNumber, String& sText, Variant& vAny);
    /// What arrives of arguments that may be left out, as "a=…;b=…;c=…;d=…".
    String Optionals(std::int32_t lA, const String& sB, const Variant& vC, const std::int32_t* lD);
    /// Takes plain values and gives one: the number plus the length of the text plus the rest.
    double Weigh(std::int32_t lNumber, const String& sText, const Variant& vAny, double dNumber) {
        return lNumber + static_cast<double>(sText.length()) + toDouble(vAny) + dNumber;
    }
    /// Writes to its arguments as Change does, and raises 76 then.
    void ChangeAndFail(std::int32_t& lNumber, String& sText);
    void Fail(std::int32_t lNumber, const String& sSource, const String& sDescription);
    void FailOutOfMemory();

    std::int32_t Number() const { return number_; }
    void SetNumber(std::int32_t lNumber) { number_ = lNumber; }
    Ref<Object> Other() const { return other_; }
    void SetOther(const Ref<Object>& oOther) { other_ = oOther; }
    /// A property with a parameter; the default member.
    Variant Item(const Variant& vIndex) const;
    void SetItem(const Variant& vIndex, const Variant& vValue);
    std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }
    Ref<Enumerator> NewEnum();
    TestRecord Record(const TestRecord& udtRecord) { return {udtRecord.sSecond, udtRecord.sFirst}; }
    enumTestShades Shade(enumTestShades eShade) { return eShade; }
    Ref<TestBed> Create() { return make<TestBed>(); }
    /// Raises the event Told.
    String Tell(const String& sWhat);

    static constexpr auto describe() {
        return describeClass<TestBed>(
                   {.name = "TestBed",
                    .help = "Has one member of every kind",
                    .number = 1,
                    .classId = guid("3346a934-f708-4279-902d-c631ab7acd58"),
                    .interfaceId = guid("828bc5eb-178f-4656-a43b-7b630e243e03"),
                    .creatable = true,
                    .library = "VlgsTest",
                    .eventInterface = "__TestBed",
                    .eventInterfaceId = guid("015f79fc-2bb5-4568-b0c8-ae80ddcd8b43")},
                   method<&TestBed::Echo>(1, "Echo", "Gives back its argument", "vValue"),
                   method<&TestBed::Typed>(2, "Typed", "Takes a value of each type", "iNumber", "lNumber",
                                           "dNumber", "bFlag", "sText"),
                   method<&TestBed::Change>(3, "Change", "Writes to its arguments", "lNumber", "sText",
                                            "vAny"),
                   method<&TestBed::Optionals>(4, "Optionals", "Takes what may be left out",
                                               optional("lA", 7), optional("sB", u","), optional("vC"),
                                               optional("lD")),
                   method<&TestBed::Fail>(5, "Fail", "Raises an error", "lNumber", "sSource", "sDescription"),
                   method<&TestBed::FailOutOfMemory>(6, "FailOutOfMemory", "Runs out of memory"),
                   get<&TestBed::Number>(7, "Number", "A number"),
                   put<&TestBed::SetNumber>(7, "Number", "A number", "lNumber"),
                   get<&TestBed::Other>(8, "Other", "An object"),
                   putRef<&TestBed::SetOther>(8, "Other", "An object", "oOther"),
                   get<&TestBed::Item>(defaultMember, "Item", "A value by its position from 1", "vIndex"),
                   put<&TestBed::SetItem>(defaultMember, "Item", "A value by its position from 1", "vIndex",
                                          "vValue"),
                   get<&TestBed::Count>(9, "Count", "The number of values"),
                   get<&TestBed::NewEnum>(enumerationMember, "NewEnum", "The enumerator").hidden(),
                   method<&TestBed::Record>(10, "Record", "Exchanges the fields of a record", "udtRecord"),
                   method<&TestBed::Shade>(11, "Shade", "Gives back a shade", "eShade"),
                   method<&TestBed::Create>(12, "Create", "A new object"),
                   method<&TestBed::Weigh>(14, "Weigh", "Adds plain values", "lNumber", "sText", "vAny",
                                           "dNumber"),
                   method<&TestBed::Tell>(13, "Tell", "Raises Told and gives back what the last one wrote",
                                          "sWhat"),
                   method<&TestBed::ChangeAndFail>(15, "ChangeAndFail", "Writes to its arguments and raises",
                                                   "lNumber", "sText"))
            .withEvents(method<&TestBed::Told>(1, "Told", "Something was told", "sWhat"));
    }
    static const ClassInfo& description() { return classInfoOf<TestBed>(); }
    const ClassInfo* classInfo() const noexcept override { return &description(); }

  private:
    void Told(String& sWhat); // describes the event

    std::int32_t number_ = 0;
    Ref<Object> other_;
    std::vector<Variant> items_;
};

/// An object that stands for a value: its default member gives it, whatever it is.
class TestHolder final : public Object {
  public:
    Variant Value() const { return value_; }
    void SetValue(const Variant& vValue) { value_ = vValue; }

    static constexpr auto describe() {
        return describeClass<TestHolder>(
            {.name = "TestHolder",
             .help = "Holds a value",
             .number = 2,
             .classId = guid("6d3ba3cc-1f0c-4b44-8f0e-0d6a0c1d6b11"),
             .interfaceId = guid("b2f4a2ce-7f38-4b5c-9a4d-3c35c1a2d9f0"),
             .creatable = true,
             .library = "VlgsTest"},
            get<&TestHolder::Value>(defaultMember, "Value", "The value"),
            put<&TestHolder::SetValue>(defaultMember, "Value", "The value", "vValue"));
    }
    static const ClassInfo& description() { return classInfoOf<TestHolder>(); }
    const ClassInfo* classInfo() const noexcept override { return &description(); }

  private:
    Variant value_;
};

inline String TestBed::Typed(std::int16_t iNumber, std::int32_t lNumber, double dNumber, bool bFlag,
                             const String& sText) {
    return concat(toText(iNumber), u",", toText(lNumber), u",", toText(dNumber), u",", toText(bFlag), u",",
                  sText);
}

inline void TestBed::Change(std::int32_t& lNumber, String& sText, Variant& vAny) {
    lNumber *= 2;
    sText += u"!";
    vAny = Array::ofStrings({sText});
}

inline String TestBed::Optionals(std::int32_t lA, const String& sB, const Variant& vC,
                                 const std::int32_t* lD) {
    return concat(u"a=", toText(lA), u";b=", sB, u";c=", vC.isMissing() ? String(u"missing") : toText(vC),
                  u";d=", lD ? toText(*lD) : String(u"none"));
}

inline void TestBed::ChangeAndFail(std::int32_t& lNumber, String& sText) {
    Variant ignored;
    Change(lNumber, sText, ignored);
    raise(RunTimeError::PathNotFound);
}

inline void TestBed::Fail(std::int32_t lNumber, const String& sSource, const String& sDescription) {
    throw Error(lNumber, sSource, sDescription);
}

inline void TestBed::FailOutOfMemory() {
    throw std::bad_alloc();
}

inline Variant TestBed::Item(const Variant& vIndex) const {
    const auto index = static_cast<std::size_t>(toLong(vIndex) - 1);
    if (index >= items_.size())
        raise(RunTimeError::SubscriptOutOfRange);
    return items_[index];
}

inline void TestBed::SetItem(const Variant& vIndex, const Variant& vValue) {
    const auto index = static_cast<std::size_t>(toLong(vIndex) - 1);
    if (index > items_.size())
        raise(RunTimeError::SubscriptOutOfRange);
    items_.resize(std::max(items_.size(), index + 1));
    items_[index] = vValue;
}

class TestBedEnumerator final : public Enumerator {
  public:
    explicit TestBedEnumerator(std::vector<Variant> items) : items_(std::move(items)) {}
    bool next(Variant& item) override {
        if (at_ == items_.size())
            return false;
        item = items_[at_++];
        return true;
    }
    void reset() override { at_ = 0; }
    Ref<Enumerator> clone() const override {
        auto copy = make<TestBedEnumerator>(items_);
        copy->at_ = at_;
        return copy;
    }

  private:
    std::vector<Variant> items_;
    std::size_t at_ = 0;
};

inline Ref<Enumerator> TestBed::NewEnum() {
    return make<TestBedEnumerator>(items_);
}

inline String TestBed::Tell(const String& sWhat) {
    Variant arguments[] = {sWhat};
    raiseEvent(1, arguments);
    return toText(arguments[0]);
}

} // namespace vlgs::test
