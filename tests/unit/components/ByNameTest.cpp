#include "components/ByName.h"

#include "tests/support/FakeDispatch.h"

#include <gtest/gtest.h>
#include <wrl/client.h>

namespace zt::test {
namespace {

using Microsoft::WRL::ComPtr;
using testing::ElementsAre;

constexpr HRESULT SomeFailure = static_cast<HRESULT>(0x80045678);

// FakeDispatch itself expects of every lookup: IID_NULL, one name, locale 0x400.
FakeDispatch& Knowing(FakeDispatch& object, const wchar_t* name, DISPID id) {
    object.names[name] = id;
    return object;
}

const std::vector<DISPID> NoNames = {};

// ---- GetPropertyByName ----

TEST(GetPropertyByName, ReadsThePropertyWithoutArgumentsAndKeepsAnObject) {
    FakeDispatch value;
    FakeDispatch object;
    Knowing(object, L"XMED", 17).answer = Give(_variant_t(&value));
    ComPtr<IDispatch> read;
    GetPropertyByName(&object, L"XMED", &read);
    EXPECT_EQ(read.Get(), &value);
    read.Reset();
    object.answer = nullptr;
    EXPECT_EQ(value.References(), 0);

    EXPECT_THAT(object.lookups, ElementsAre(L"XMED"));
    ASSERT_EQ(object.invocations.size(), 1u);
    const Invocation& call = object.invocations[0];
    EXPECT_EQ(call.id, 17);
    EXPECT_EQ(call.iid, IID_NULL);
    EXPECT_EQ(call.locale, 0x400u);
    EXPECT_EQ(call.kind, DISPATCH_PROPERTYGET);
    EXPECT_TRUE(call.arguments.empty());
    EXPECT_EQ(call.named, NoNames);
    EXPECT_TRUE(call.asksResult);
}

TEST(GetPropertyByName, GivesNullForEveryOtherType) {
    FakeDispatch held;
    const std::vector<_variant_t> others = {_variant_t(), _variant_t(L"text"), _variant_t(true),
                                            _variant_t(static_cast<IUnknown*>(&held))};
    for (const _variant_t& other : others) {
        FakeDispatch object;
        Knowing(object, L"XMED", 1).answer = Give(other);
        IDispatch* read = &object;
        GetPropertyByName(&object, L"XMED", &read);
        EXPECT_EQ(read, nullptr) << other.vt;
    }
    EXPECT_EQ(held.References(), 1) << "only the table's own";
}

TEST(GetPropertyByName, GivesNullWhereTheLookupOrTheReadFails) {
    FakeDispatch value;
    FakeDispatch object;
    IDispatch* read = &object;
    GetPropertyByName(&object, L"XMED", &read);
    EXPECT_EQ(read, nullptr);
    EXPECT_TRUE(object.invocations.empty());

    Knowing(object, L"XMED", 1).answer = Succeed(SomeFailure);
    read = &object;
    GetPropertyByName(&object, L"XMED", &read);
    EXPECT_EQ(read, nullptr);

    read = &object;
    GetPropertyByName(nullptr, L"XMED", &read);
    EXPECT_EQ(read, nullptr);
}

TEST(GetPropertyByName, LeavesNoReferenceWhereAFailingReadGaveAnObject) {
    FakeDispatch value;
    FakeDispatch object;
    Knowing(object, L"XMED", 1).answer = [&](const Invocation&, VARIANT* result, EXCEPINFO*) {
        *result = _variant_t(&value).Detach();
        return SomeFailure;
    };
    IDispatch* read = nullptr;
    GetPropertyByName(&object, L"XMED", &read);
    EXPECT_EQ(read, nullptr);
    EXPECT_EQ(value.References(), 0);
}

// ---- PutProperty ----

TEST(PutProperty, NeedsAValueAndAnObject) {
    FakeDispatch object;
    const _variant_t value(true);
    EXPECT_EQ(PutProperty(&object, 5, nullptr), static_cast<HRESULT>(0x80004003));
    EXPECT_EQ(PutProperty(nullptr, 5, &value), static_cast<HRESULT>(0x80070057));
    EXPECT_EQ(PutProperty(nullptr, 5, nullptr), static_cast<HRESULT>(0x80004003));
    EXPECT_TRUE(object.invocations.empty());
}

std::vector<WORD> KindsOfPutting(const VARIANT& value, HRESULT first, HRESULT second,
                                 HRESULT* returned) {
    FakeDispatch object;
    object.answer = [&](const Invocation&, VARIANT*, EXCEPINFO*) {
        return object.invocations.size() == 1 ? first : second;
    };
    *returned = PutProperty(&object, 23, &value);
    std::vector<WORD> kinds;
    for (const Invocation& call : object.invocations) {
        EXPECT_EQ(call.id, 23);
        EXPECT_EQ(call.iid, IID_NULL);
        EXPECT_EQ(call.locale, 0x400u);
        EXPECT_EQ(call.named, std::vector<DISPID>{-3});
        EXPECT_EQ(call.arguments.size(), 1u);
        EXPECT_EQ(call.arguments.at(0).vt, value.vt);
        kinds.push_back(call.kind);
    }
    return kinds;
}

TEST(PutProperty, PutsPlainValuesPlainly) {
    for (const _variant_t& value : {_variant_t(true), _variant_t(L"text"), _variant_t(7L)}) {
        HRESULT returned = S_OK;
        EXPECT_THAT(KindsOfPutting(value, SomeFailure, S_OK, &returned),
                    ElementsAre(DISPATCH_PROPERTYPUT));
        EXPECT_EQ(returned, SomeFailure);
        EXPECT_THAT(KindsOfPutting(value, S_FALSE, S_OK, &returned),
                    ElementsAre(DISPATCH_PROPERTYPUT));
        EXPECT_EQ(returned, S_FALSE);
    }
}

struct ReferenceValues {
    FakeDispatch object;
    LONG number = 7;
    _variant_t values[4];

    ReferenceValues() {
        values[0] = _variant_t(static_cast<IDispatch*>(&object));
        values[1] = _variant_t(static_cast<IUnknown*>(&object));
        SAFEARRAY* const array = SafeArrayCreateVector(VT_I4, 0, 2);
        values[2].vt = VT_ARRAY | VT_I4;
        values[2].parray = array;
        values[3].vt = VT_BYREF | VT_I4;
        values[3].plVal = &number;
    }
};

TEST(PutProperty, PutsObjectsArraysAndReferencesByReference) {
    const ReferenceValues reference;
    for (const _variant_t& value : reference.values) {
        HRESULT returned = S_OK;
        EXPECT_THAT(KindsOfPutting(value, S_FALSE, S_OK, &returned),
                    ElementsAre(DISPATCH_PROPERTYPUTREF));
        EXPECT_EQ(returned, S_FALSE);
    }
}

TEST(PutProperty, PutsPlainlyWhatIsRefusedByReference) {
    const ReferenceValues reference;
    for (const _variant_t& value : reference.values) {
        HRESULT returned = S_OK;
        EXPECT_THAT(KindsOfPutting(value, DISP_E_MEMBERNOTFOUND, SomeFailure, &returned),
                    ElementsAre(DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT));
        EXPECT_EQ(returned, SomeFailure);
    }
}

TEST(PutPropertyByName, PutsUnderTheIdOfTheName) {
    FakeDispatch object;
    Knowing(object, L"cmdSave", 31);
    const _variant_t value(true);
    EXPECT_EQ(PutPropertyByName(&object, L"cmdSave", &value), S_OK);
    ASSERT_EQ(object.invocations.size(), 1u);
    EXPECT_EQ(object.invocations[0].id, 31);
    EXPECT_EQ(object.invocations[0].kind, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(object.invocations[0].arguments.at(0).boolVal, VARIANT_TRUE);
}

TEST(PutPropertyByName, ReturnsTheResultOfAFailingLookup) {
    FakeDispatch object;
    object.lookupFailure = SomeFailure;
    const _variant_t value(true);
    EXPECT_EQ(PutPropertyByName(&object, L"cmdSave", &value), SomeFailure);
    EXPECT_TRUE(object.invocations.empty());
}

// ---- InvokeByName ----

TEST(InvokeByName, CallsTheMethodWithOnePositionalArgument) {
    FakeDispatch object;
    Knowing(object, L"Run", 41).answer = Give(_variant_t(12L));
    _variant_t result(L"old");
    EXPECT_EQ(InvokeByName(&object, L"Run", _variant_t(L"OnSaveToCMS"), &result), S_OK);
    EXPECT_EQ(result.lVal, 12);
    ASSERT_EQ(object.invocations.size(), 1u);
    const Invocation& call = object.invocations[0];
    EXPECT_EQ(call.id, 41);
    EXPECT_EQ(call.iid, IID_NULL);
    EXPECT_EQ(call.locale, 0x400u);
    EXPECT_EQ(call.kind, DISPATCH_METHOD);
    EXPECT_EQ(call.named, NoNames);
    ASSERT_EQ(call.arguments.size(), 1u);
    EXPECT_STREQ(call.arguments[0].bstrVal, L"OnSaveToCMS");
    EXPECT_TRUE(call.asksResult);
}

TEST(InvokeByName, AsksForNoResultWhereNoneIsWanted) {
    FakeDispatch object;
    Knowing(object, L"Run", 41);
    EXPECT_EQ(InvokeByName(&object, L"Run", _variant_t(L"x"), nullptr), S_OK);
    EXPECT_FALSE(object.invocations.at(0).asksResult);
}

TEST(InvokeByName, ReturnsTheResultOfAFailingLookupOrCall) {
    FakeDispatch object;
    object.lookupFailure = SomeFailure;
    EXPECT_EQ(InvokeByName(&object, L"Run", _variant_t(), nullptr), SomeFailure);
    EXPECT_TRUE(object.invocations.empty());
    Knowing(object, L"Run", 41).answer = Raise(L"never shown");
    EXPECT_EQ(InvokeByName(&object, L"Run", _variant_t(), nullptr), DISP_E_EXCEPTION);
    EXPECT_EQ(InvokeByName(nullptr, L"Run", _variant_t(), nullptr), E_INVALIDARG);
}

TEST(InvokeMethod, TellsWhatTheComponentSaysOfAFailure) {
    FakeDispatch object;
    object.answer = Raise(L"the pump leaks");
    _variant_t result(7L);
    ExceptionInfo info;
    EXPECT_EQ(InvokeMethod(&object, 3, _variant_t(true), &result, &info), DISP_E_EXCEPTION);
    EXPECT_STREQ(info.bstrDescription, L"the pump leaks");
    EXPECT_EQ(result.vt, VT_EMPTY);
    EXPECT_EQ(result.lVal, 0) << "a method that returns nothing leaves no data of before";
}

} // namespace
} // namespace zt::test
