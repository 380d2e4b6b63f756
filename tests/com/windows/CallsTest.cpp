// SPDX-License-Identifier: MIT
// Calls in both directions: late bound, through a generated table, of a caller's objects, and events.
#include "support/LateBoundCases.h"
#include "support/Raised.h"

#include "automation/Dictionary.h"
#include "com/DictionaryTable.h"
#include "com/Face.h"
#include "com/Failure.h"
#include "com/Foreign.h"
#include "com/References.h"
#include "com/Thunks.h"
#include "com/Values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <olectl.h>

namespace vlgs::com {
namespace {

using test::TestBed;

/// A caller's object whose every call goes to a function.
class Caller final : public IDispatch {
  public:
    using Action = std::function<HRESULT(DISPID, WORD, DISPPARAMS&, VARIANT*, EXCEPINFO*)>;
    explicit Caller(Action action) : action_(std::move(action)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
        *result = known ? this : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, OLECHAR** names, UINT, LCID, DISPID* ids) override {
        *ids = std::wstring_view(names[0]) == L"Known" ? 5 : DISPID_UNKNOWN;
        return *ids == 5 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given, VARIANT* result,
                                     EXCEPINFO* failure, UINT*) override {
        return action_(id, flags, *given, result, failure);
    }
    ULONG references = 1;

  private:
    Action action_;
};

/// What a late-bound call gives.
struct Outcome {
    HRESULT status = S_OK;
    Variant value;
    std::int32_t number = 0;
    String source;
    String description;
    UINT argument = 99;
};

class Calls : public ::testing::Test {
  protected:
    Calls() : bed(ComPtr<IDispatch>::attach(DualObject::wrap(make<TestBed>().get()))) {}
    ~Calls() override {
        bed.reset();
        EXPECT_FALSE(ModuleLock::any()) << "something still lives";
    }

    DISPID idOf(const char16_t* name) {
        auto* text = const_cast<wchar_t*>(wide(name));
        DISPID id = DISPID_UNKNOWN;
        EXPECT_EQ(bed->GetIDsOfNames(IID_NULL, &text, 1, 0, &id), S_OK) << String(name).toUtf8();
        return id;
    }
    /// `arguments` in their usual order.
    Outcome call(const char16_t* name, std::vector<VARIANT> arguments, WORD flags = DISPATCH_METHOD,
                 std::vector<DISPID> named = {}) {
        std::reverse(arguments.begin(), arguments.end());
        DISPPARAMS given{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                         static_cast<UINT>(named.size())};
        Outcome outcome;
        OleVariant result;
        EXCEPINFO failure{};
        outcome.status =
            bed->Invoke(idOf(name), IID_NULL, 0, flags, &given, result.put(), &failure, &outcome.argument);
        outcome.value = fromVariant(result.get());
        outcome.number = toNumber(failure.scode);
        outcome.source = toString(failure.bstrSource);
        outcome.description = toString(failure.bstrDescription);
        SysFreeString(failure.bstrSource);
        SysFreeString(failure.bstrDescription);
        return outcome;
    }
    static VARIANT number(LONG value) {
        VARIANT result;
        result.vt = VT_I4;
        result.lVal = value;
        return result;
    }
    static VARIANT left() {
        VARIANT result;
        result.vt = VT_ERROR;
        result.scode = DISP_E_PARAMNOTFOUND;
        return result;
    }
    static VARIANT text(const OleVariant& holder) { return const_cast<OleVariant&>(holder).get(); }

    ComPtr<IDispatch> bed;
};

/// The number and description that a caller learns from a failed call and takes over.
void takeFailure(HRESULT status, EXCEPINFO& failure, test::LateBoundOutcome& outcome) {
    outcome.error = toNumber(status == DISP_E_EXCEPTION ? failure.scode : status);
    ComPtr<IErrorInfo> told;
    if (status != DISP_E_EXCEPTION && GetErrorInfo(0, told.put()) == S_OK)
        told->GetDescription(&failure.bstrDescription);
    outcome.description = toString(failure.bstrDescription).toUtf8();
    SysFreeString(failure.bstrSource);
    SysFreeString(failure.bstrDescription);
}

test::LateBoundOutcome callByDispatch(IDispatch* target, const test::LateBoundCall& asked) {
    std::vector<LPOLESTR> names{const_cast<LPOLESTR>(wide(asked.member))};
    std::vector<Variant> arguments = asked.positional;
    for (const auto& [name, value] : asked.named) {
        names.push_back(const_cast<LPOLESTR>(wide(name)));
        arguments.push_back(value);
    }
    std::vector<DISPID> ids(names.size());
    const HRESULT found =
        target->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()), 0, ids.data());
    test::LateBoundOutcome outcome;
    if (ids[0] == DISPID_UNKNOWN) {
        outcome.error = toNumber(found);
        return outcome;
    }
    // Last first, the named ones before the others; each a variable of the caller.
    const std::size_t named = asked.named.size();
    const auto placeOf = [&](std::size_t i) {
        return i < asked.positional.size() ? arguments.size() - 1 - i : i - asked.positional.size();
    };
    std::vector<OleVariant> variables(arguments.size());
    std::vector<VARIANT> given(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        toVariant(arguments[i], variables[i].get());
        given[placeOf(i)].vt = VT_BYREF | VT_VARIANT;
        given[placeOf(i)].pvarVal = &variables[i].get();
    }
    std::vector<DISPID> places(ids.begin() + 1, ids.end());
    if (writes(asked.kind) && named == 0 && !arguments.empty())
        places.push_back(DISPID_PROPERTYPUT);
    DISPPARAMS parameters{given.data(), places.data(), static_cast<UINT>(given.size()),
                          static_cast<UINT>(places.size())};
    OleVariant result;
    EXCEPINFO failure{};
    const HRESULT status = target->Invoke(ids[0], IID_NULL, 0, static_cast<WORD>(asked.kind), &parameters,
                                          result.put(), &failure, nullptr);
    if (FAILED(status))
        takeFailure(status, failure, outcome);
    outcome.result = fromVariant(result.get());
    for (auto& variable : variables)
        outcome.arguments.push_back(fromVariant(variable.get()));
    return outcome;
}

TEST_F(Calls, EveryCallComesOutAsOnEveryFace) {
    test::checkLateBoundCalls([](const Ref<Object>& target, const test::LateBoundCall& asked) {
        const auto dispatch = ComPtr<IDispatch>::attach(DualObject::wrap(target.get()));
        return callByDispatch(dispatch.get(), asked);
    });
}

TEST_F(Calls, NamesAndReferencesThatAreNoneAreRefused) {
    wchar_t text[] = L"Optionals", nothing[] = L"nothing", last[] = L"LD";
    OLECHAR* names[] = {text, nothing, last};
    DISPID ids[3];
    EXPECT_EQ(bed->GetIDsOfNames(IID_NULL, names, 3, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], 4);
    EXPECT_EQ(ids[1], DISPID_UNKNOWN);
    EXPECT_EQ(ids[2], 3) << "known whatever stands before it";
    EXPECT_EQ(bed->GetIDsOfNames(IID_IDispatch, names, 1, 0, ids), DISP_E_UNKNOWNINTERFACE);
    VARIANT dangling;
    dangling.vt = VT_BYREF | VT_VARIANT;
    dangling.pvarVal = nullptr;
    EXPECT_EQ(call(u"Echo", {dangling}).number, 5);
}

TEST_F(Calls, AnArrayOfFixedSizeStaysAndTheCallSucceeds) {
    SAFEARRAYBOUND bound{3, 0};
    SAFEARRAY* fixed = SafeArrayCreate(VT_VARIANT, 1, &bound);
    fixed->fFeatures |= FADF_FIXEDSIZE;
    VARIANT numberVariable = number(2), textVariable{}, array;
    array.vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
    array.pparray = &fixed;
    SAFEARRAY* const before = fixed;
    EXPECT_EQ(call(u"Change", {numberVariable, textVariable, array}).status, S_OK);
    EXPECT_EQ(fixed, before);
    EXPECT_EQ(fromSafeArray(fixed).size(), 3u);
    fixed->fFeatures &= static_cast<USHORT>(~FADF_FIXEDSIZE);
    SafeArrayDestroy(fixed);
}

TEST_F(Calls, StatusesTellWhatIsWrongWithTheArguments) {
    OleVariant word;
    toVariant(u"word", word.get());
    EXPECT_EQ(call(u"Echo", {number(1)}, DISPATCH_METHOD, {9}).status, DISP_E_PARAMNOTFOUND);
    const auto mismatch = call(u"Fail", {text(word), number(1), number(2)});
    EXPECT_EQ(mismatch.status, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(mismatch.argument, 2u);
    DISPPARAMS none{};
    EXPECT_EQ(bed->Invoke(4711, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(bed->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_INVALIDARG);
    EXPECT_EQ(bed->Invoke(1, IID_IUnknown, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

TEST_F(Calls, ErrorsCarryNumberSourceAndDescription) {
    OleVariant source;
    OleVariant description;
    toVariant(u"Here", source.get());
    toVariant(u"What\r\nhappened", description.get());
    for (const std::int32_t raised : {5, 457, 10000, -2147209996}) {
        const auto outcome = call(u"Fail", {number(raised), text(source), text(description)});
        EXPECT_EQ(outcome.status, DISP_E_EXCEPTION);
        EXPECT_EQ(outcome.number, raised);
        EXPECT_EQ(outcome.source, u"Here");
        EXPECT_EQ(outcome.description, u"What\r\nhappened");
    }
    EXPECT_EQ(call(u"FailOutOfMemory", {}).number, 7);
}

TEST_F(Calls, CallersObjectsKeepTheirIdentity) {
    Caller caller([](DISPID, WORD, DISPPARAMS&, VARIANT*, EXCEPINFO*) { return S_OK; });
    {
        VARIANT argument;
        argument.vt = VT_DISPATCH;
        argument.pdispVal = &caller;
        const auto back = call(u"Echo", {argument}).value;
        EXPECT_EQ(ComPtr<IDispatch>::attach(toDispatch(back.object())).get(), &caller);
        EXPECT_EQ(fromInterface(&caller).get(), back.object()) << "one stands for it";
    }
    EXPECT_EQ(caller.references, 1u);
}

TEST_F(Calls, CallersFailuresAreRaised) {
    Caller caller([](DISPID, WORD, DISPPARAMS&, VARIANT*, EXCEPINFO* failure) {
        failure->scode = static_cast<SCODE>(0x800A0009);
        failure->bstrSource = SysAllocString(L"Caller");
        failure->bstrDescription = SysAllocString(L"No room");
        return DISP_E_EXCEPTION;
    });
    const auto object = fromInterface(&caller);
    EXPECT_EQ(test::raised([&] { vlgs::call(object, u"Known", 1); }), (test::Raised{9, "Caller", "No room"}));
    EXPECT_EQ(test::errorOf([&] { vlgs::call(object, u"Unknown"); }), 438);
}

TEST_F(Calls, EventsReachTheSinkAndBringBackWhatItWrites) {
    Caller sink([](DISPID, WORD, DISPPARAMS& given, VARIANT*, EXCEPINFO*) {
        EXPECT_EQ(given.rgvarg[0].vt, VT_BYREF | VT_BSTR);
        SysReAllocString(given.rgvarg[0].pbstrVal, L"answer");
        return S_OK;
    });
    const auto container = queryFor<IConnectionPointContainer>(bed.get());
    ASSERT_TRUE(container);
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(
        container->FindConnectionPoint(toGuid(TestBed::description().header().eventInterfaceId), point.put()),
        S_OK);
    DWORD cookie = 0;
    ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
    OleVariant word;
    toVariant(u"question", word.get());
    EXPECT_EQ(call(u"Tell", {text(word)}).value, Variant(u"answer"));
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(call(u"Tell", {text(word)}).value, Variant(u"question"));
    EXPECT_EQ(sink.references, 1u);
}

template <class Function>
Function entry(std::size_t row) {
    return reinterpret_cast<Function>(const_cast<void*>(VtableOf<TestBed>::entries[dispatchEntries + row]));
}

TEST_F(Calls, TablesTakeWireTypes) {
    const auto object = make<TestBed>();
    Face face{VtableOf<TestBed>::entries.data(), object.get(), nullptr};
    const auto change = entry<HRESULT(STDMETHODCALLTYPE*)(Face*, LONG*, BSTR*, VARIANT*)>(2);
    LONG changed = 4;
    BSTR word = SysAllocString(L"go");
    OleVariant any;
    EXPECT_EQ(change(&face, &changed, &word, &any.get()), S_OK);
    EXPECT_EQ(changed, 8);
    EXPECT_EQ(toString(word), u"go!");
    EXPECT_EQ(change(&face, nullptr, &word, &any.get()), E_POINTER);

    const auto changeAndFail = entry<HRESULT(STDMETHODCALLTYPE*)(Face*, LONG*, BSTR*)>(19);
    EXPECT_EQ(changeAndFail(&face, &changed, &word), static_cast<HRESULT>(0x800A004C));
    EXPECT_EQ(changed, 16) << "written back though the member raised";
    EXPECT_EQ(toString(word), u"go!!");
    SysFreeString(word);

    const auto optionals = entry<HRESULT(STDMETHODCALLTYPE*)(Face*, LONG, BSTR, VARIANT, LONG*, BSTR*)>(3);
    BSTR result = nullptr;
    EXPECT_EQ(optionals(&face, 1, nullptr, left(), nullptr, &result), S_OK);
    EXPECT_EQ(toString(result), u"a=1;b=;c=missing;d=none");
    SysFreeString(result);
    EXPECT_EQ(optionals(&face, 1, nullptr, left(), nullptr, nullptr), E_POINTER);

    const auto fail = entry<HRESULT(STDMETHODCALLTYPE*)(Face*, LONG, BSTR, BSTR)>(4);
    EXPECT_EQ(fail(&face, 5, nullptr, nullptr), static_cast<HRESULT>(0x800A0005));
    EXPECT_EQ(fail(&face, 0, nullptr, nullptr), E_FAIL);
    EXPECT_EQ(fail(&face, -2147209996, nullptr, nullptr), -2147209996);
    const auto exhaust = entry<HRESULT(STDMETHODCALLTYPE*)(Face*)>(5);
    EXPECT_EQ(exhaust(&face), static_cast<HRESULT>(0x800A0007));
}

TEST_F(Calls, ADictionaryHasThePlatformsTable) {
    const auto wrapped = ComPtr<IDispatch>::attach(DualObject::wrap(make<Dictionary>().get()));
    ComPtr<IDispatch> typed;
    ASSERT_EQ(wrapped->QueryInterface(dictionaryInterface, reinterpret_cast<void**>(typed.put())), S_OK);
    void** const table = *reinterpret_cast<void***>(typed.get());
    using OfTwo = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, VARIANT*, VARIANT*);
    const auto item = reinterpret_cast<OfTwo>(table[9]), add = reinterpret_cast<OfTwo>(table[10]),
               hash = reinterpret_cast<OfTwo>(table[21]);
    const auto count = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(IDispatch*, LONG*)>(table[11]);
    const auto keys = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(IDispatch*, VARIANT*)>(table[15]);
    OleVariant key, value, result;
    toVariant(u"k", key.get());
    toVariant(5, value.get());
    EXPECT_EQ(add(typed.get(), &key.get(), &value.get()), S_OK);
    EXPECT_EQ(add(typed.get(), &key.get(), &value.get()), static_cast<HRESULT>(0x800A01C9));
    EXPECT_EQ(item(typed.get(), &key.get(), &result.get()), S_OK);
    EXPECT_EQ(fromVariant(result.get()), Variant(5));
    EXPECT_EQ(item(typed.get(), nullptr, &result.get()), E_POINTER);
    LONG found = 0;
    EXPECT_EQ(count(typed.get(), &found), S_OK);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(keys(typed.get(), &result.get()), S_OK);
    EXPECT_EQ(fromVariant(result.get()), Variant(Array::ofVariants({u"k"})));
    OleVariant first, same;
    EXPECT_EQ(hash(typed.get(), &value.get(), &first.get()), S_OK);
    toVariant(5.0, value.get());
    EXPECT_EQ(hash(typed.get(), &value.get(), &same.get()), S_OK);
    EXPECT_EQ(fromVariant(first.get()), fromVariant(same.get()));
}

} // namespace
} // namespace vlgs::com
