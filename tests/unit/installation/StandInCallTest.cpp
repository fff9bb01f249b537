#include "tests/unit/installation/Automation.h"
#include "tests/unit/installation/Probe.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace devinst::test {
namespace {

TEST(StandInCall, EarlyBoundCallReachesTheOperationOfItsIndex) {
    const ProbeHolder probe;
    _bstr_t text;
    EXPECT_EQ(ProbeInterface::GiveText::Call(probe.Interface(), 12, text.GetAddress()), S_OK);
    EXPECT_STREQ(text, L"text 12");
    int calls = 0;
    probe->work = [&]() -> HRESULT { return ++calls, S_FALSE; };
    EXPECT_EQ(ProbeInterface::Work::Call(probe.Interface()), S_FALSE);
    EXPECT_EQ(calls, 1);
}

TEST(StandInCall, ReturnedObjectBelongsToTheCaller) {
    const ProbeHolder probe;
    ProbeInterface* child = nullptr;
    ASSERT_EQ(ProbeInterface::GiveObject::Call(probe.Interface(), &child), S_OK);
    EXPECT_EQ(child->AddRef(), 2u);
    EXPECT_EQ(child->Release(), 1u);
    EXPECT_EQ(child->Release(), 0u);
}

TEST(StandInCall, EveryInterfaceLeadsBackToTheSameObject) {
    const ProbeHolder probe;
    Microsoft::WRL::ComPtr<IDispatch> dispatch;
    ASSERT_EQ(probe.Interface()->QueryInterface(IID_PPV_ARGS(&dispatch)), S_OK);
    EXPECT_NE(static_cast<void*>(dispatch.Get()), static_cast<void*>(probe.Interface()));
    Microsoft::WRL::ComPtr<IUnknown> identity;
    ASSERT_EQ(dispatch.As(&identity), S_OK);
    Microsoft::WRL::ComPtr<IUnknown> again;
    ASSERT_EQ(probe.Interface()->QueryInterface(IID_PPV_ARGS(&again)), S_OK);
    EXPECT_EQ(identity, again);
}

TEST(StandInCall, AutomationCallReachesTheOperationOfItsDispidAndKind) {
    const ProbeHolder probe;
    IDispatch* const object = probe.Interface();
    EXPECT_EQ(Invoke(object, 1, DISPATCH_PROPERTYPUT, {L"second"}).code, S_OK);
    EXPECT_EQ(probe->title, L"second");
    EXPECT_STREQ(Invoke(object, 1, DISPATCH_PROPERTYGET).result.bstrVal, L"second");
    EXPECT_STREQ(Invoke(object, 3, DISPATCH_METHOD, {L"a", 3L, true}).result.bstrVal, L"a 3 true");
}

TEST(StandInCall, PropertyIsReadByCallersThatLeaveTheKindOpen) {
    const ProbeHolder probe;
    const Outcome outcome = Invoke(probe.Interface(), 1, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
    EXPECT_EQ(outcome.code, S_OK);
    EXPECT_STREQ(outcome.result.bstrVal, L"first");
}

TEST(StandInCall, NamesArePropertiesAndMethodsWithoutRegardToCase) {
    const ProbeHolder probe;
    EXPECT_EQ(IdOf(probe.Interface(), L"Title"), 1);
    EXPECT_EQ(IdOf(probe.Interface(), L"host"), 2);
    EXPECT_EQ(IdOf(probe.Interface(), L"COMBINE"), 3);
    EXPECT_EQ(IdOf(probe.Interface(), L"GetState"), 6);
    EXPECT_EQ(IdOf(probe.Interface(), L"nothing"), DISPID_UNKNOWN);
}

struct RefusedCase {
    const char* what;
    DISPID id;
    WORD kind;
    std::vector<_variant_t> arguments;
    HRESULT code;
};

TEST(StandInCall, ArgumentsOtherThanTheTableHasThemAreRefused) {
    const ProbeHolder probe;
    IDispatch* const object = probe.Interface();
    const RefusedCase cases[] = {
        {"too few", 3, DISPATCH_METHOD, {L"a", 3L}, DISP_E_BADPARAMCOUNT},
        {"too many", 3, DISPATCH_METHOD, {L"a", 3L, true, 1L}, DISP_E_BADPARAMCOUNT},
        {"a number for a text", 3, DISPATCH_METHOD, {1L, 3L, true}, DISP_E_TYPEMISMATCH},
        {"a short number for a long one",
         3,
         DISPATCH_METHOD,
         {L"a", _variant_t(static_cast<short>(3)), true},
         DISP_E_TYPEMISMATCH},
        {"a number for a boolean", 3, DISPATCH_METHOD, {L"a", 3L, -1L}, DISP_E_TYPEMISMATCH},
        {"a text for an object", 2, DISPATCH_PROPERTYPUT, {L"host"}, DISP_E_TYPEMISMATCH},
        {"an unknown object for an automation object",
         2,
         DISPATCH_PROPERTYPUT,
         {_variant_t(static_cast<IUnknown*>(object))},
         DISP_E_TYPEMISMATCH},
        {"an argument for a property that is read",
         1,
         DISPATCH_PROPERTYGET,
         {1L},
         DISP_E_BADPARAMCOUNT},
    };
    for (const RefusedCase& known : cases) {
        SCOPED_TRACE(known.what);
        const Outcome outcome = Invoke(object, known.id, known.kind, known.arguments);
        EXPECT_EQ(outcome.code, known.code);
        EXPECT_EQ(outcome.result.vt, VT_EMPTY);
    }
}

TEST(StandInCall, PropertyPutWithoutItsNamedArgumentIsRefused) {
    const ProbeHolder probe;
    _variant_t argument(L"second");
    DISPPARAMS unnamed = {&argument, nullptr, 1, 0};
    EXPECT_EQ(probe.Interface()->Invoke(1, IID_NULL, 0x400, DISPATCH_PROPERTYPUT, &unnamed, nullptr,
                                        nullptr, nullptr),
              DISP_E_NONAMEDARGS);
    EXPECT_EQ(probe->title, L"first");
}

TEST(StandInCall, ListedDispidOfAnotherKindIsNotFound) {
    const ProbeHolder probe;
    EXPECT_EQ(Invoke(probe.Interface(), 3, DISPATCH_PROPERTYGET).code, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Invoke(probe.Interface(), 1, DISPATCH_PROPERTYPUTREF, {L"x"}).code,
              DISP_E_MEMBERNOTFOUND);
}

TEST(StandInCall, ScriptsReferencesToVariantsAreFollowed) {
    const ProbeHolder probe;
    _variant_t text(L"a");
    VARIANT reference = {};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &text;
    VARIANT arguments[] = {_variant_t(true), _variant_t(3L), reference};
    DISPPARAMS parameters = {arguments, nullptr, 3, 0};
    _variant_t result;
    ASSERT_EQ(probe.Interface()->Invoke(3, IID_NULL, 0x400, DISPATCH_METHOD, &parameters, &result,
                                        nullptr, nullptr),
              S_OK);
    EXPECT_STREQ(result.bstrVal, L"a 3 true");
}

TEST(StandInCall, ResultThatTheCallerDoesNotWantIsFreed) {
    const ProbeHolder probe;
    DISPPARAMS none = {};
    EXPECT_EQ(probe.Interface()->Invoke(4, IID_NULL, 0x400, DISPATCH_METHOD, &none, nullptr,
                                        nullptr, nullptr),
              S_OK);
    EXPECT_EQ(probe.Interface()->Invoke(1, IID_NULL, 0x400, DISPATCH_PROPERTYGET, &none, nullptr,
                                        nullptr, nullptr),
              S_OK);
}

TEST(StandInCall, FailureInsideAnAutomationCallIsAnExceptionWithItsDescription) {
    const ProbeHolder probe;
    probe->work = []() -> HRESULT { throw ComFailure{E_ACCESSDENIED, L"The door is locked."}; };
    const Outcome outcome = Call(probe.Interface(), L"GetState", {});
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.scode, E_ACCESSDENIED);
    EXPECT_EQ(outcome.description, L"The door is locked.");
}

TEST(StandInCall, FailureInsideAnEarlyBoundCallGivesItsCode) {
    const ProbeHolder probe;
    probe->work = []() -> HRESULT { throw ComFailure{E_ACCESSDENIED, L"The door is locked."}; };
    EXPECT_EQ(ProbeInterface::Work::Call(probe.Interface()), E_ACCESSDENIED);
    probe->work = []() -> HRESULT { throw std::runtime_error("broken"); };
    EXPECT_EQ(ProbeInterface::Work::Call(probe.Interface()), E_UNEXPECTED);
    probe->work = []() -> HRESULT { throw _com_error(E_OUTOFMEMORY); };
    EXPECT_EQ(ProbeInterface::Work::Call(probe.Interface()), E_OUTOFMEMORY);
}

} // namespace
} // namespace devinst::test
