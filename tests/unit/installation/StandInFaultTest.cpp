#include "tests/unit/installation/Automation.h"
#include "tests/unit/installation/Probe.h"
#include "tests/unit/installation/TraceCapture.h"

#include "installation/runtime/Faults.h"

#include <gmock/gmock.h>

#include <cstring>

namespace devinst::test {
namespace {

class StandInFault : public testing::Test {
  protected:
    ~StandInFault() override { ReplaceFaultPlan({}); }

    static void Plan(const std::string& text) {
        std::string complaint;
        std::optional<std::vector<FaultRule>> rules = ParseFaultPlan(text, &complaint);
        ASSERT_TRUE(rules.has_value()) << complaint;
        ReplaceFaultPlan(*std::move(rules));
    }

    // GiveText with the number 1: its result code and text; "(null)" for none.
    HRESULT GiveText() {
        BSTR given = nullptr;
        const HRESULT result = ProbeInterface::GiveText::Call(m_probe.Interface(), 1, &given);
        m_text = given != nullptr ? given : L"(null)";
        SysFreeString(given);
        return result;
    }
    // GiveVariant into a variant full of garbage.
    HRESULT GiveVariant() {
        std::memset(static_cast<VARIANT*>(&m_value), 0xcc, sizeof(VARIANT));
        return ProbeInterface::GiveVariant::Call(m_probe.Interface(), &m_value);
    }

    ProbeHolder m_probe;
    std::wstring m_text;
    _variant_t m_value;
};

// The thread's error information, taken away; "(none)" without one.
std::wstring TakeErrorText() {
    Microsoft::WRL::ComPtr<IErrorInfo> information;
    if (GetErrorInfo(0, &information) != S_OK)
        return L"(none)";
    _bstr_t text;
    information->GetDescription(text.GetAddress());
    return text.length() != 0 ? static_cast<const wchar_t*>(text) : L"";
}

TEST_F(StandInFault, WithoutAPlanTheWorkIsDone) {
    Plan("");
    EXPECT_EQ(GiveText(), S_OK);
    EXPECT_EQ(m_text, L"text 1");
}

TEST_F(StandInFault, HitsTheCallThatThePlanCounts) {
    Plan("Probe.GiveText 2 result E_FAIL");
    EXPECT_EQ(GiveText(), S_OK);
    EXPECT_EQ(GiveText(), E_FAIL);
    EXPECT_EQ(GiveText(), S_OK);
}

TEST_F(StandInFault, HitsEveryCallFromTheCountedOneOn) {
    Plan("Probe.GiveText 2+ result E_FAIL");
    EXPECT_EQ(GiveText(), S_OK);
    EXPECT_EQ(GiveText(), E_FAIL);
    EXPECT_EQ(GiveText(), E_FAIL);
}

TEST_F(StandInFault, HitsOnlyTheNamedObjectAndOperation) {
    Plan("Prob.GiveText * result E_FAIL\nProbe.GiveTex * result E_FAIL\n");
    EXPECT_EQ(GiveText(), S_OK);
}

TEST_F(StandInFault, StarsStandForAnyObjectAndOperation) {
    Plan("*.GiveText 1 result E_FAIL\nProbe.* 2 result E_ACCESSDENIED\n");
    EXPECT_EQ(GiveText(), E_FAIL);
    EXPECT_EQ(GiveVariant(), E_ACCESSDENIED);
    EXPECT_EQ(GiveText(), S_OK);
}

TEST_F(StandInFault, FirstOfTwoMatchingLinesHolds) {
    Plan("Probe.GiveText 1 result E_FAIL\nProbe.GiveText 1+ result E_ACCESSDENIED\n");
    EXPECT_EQ(GiveText(), E_FAIL);
    EXPECT_EQ(GiveText(), E_ACCESSDENIED);
}

TEST_F(StandInFault, ResultIsReturnedWithoutWorkOrOutputs) {
    Plan("Probe.GiveText 1 result S_FALSE\nProbe.GiveVariant * result E_FAIL\n");
    EXPECT_EQ(GiveText(), S_FALSE);
    EXPECT_EQ(m_text, L"(null)");
    EXPECT_EQ(GiveVariant(), E_FAIL);
    EXPECT_EQ(m_value.vt, VT_EMPTY);
}

TEST_F(StandInFault, ErrorOfAnEarlyBoundCallLeavesItsDescriptionInTheErrorInformation) {
    Plan("Probe.GiveText * error E_ACCESSDENIED The door is locked.");
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(GiveText(), E_ACCESSDENIED);
    EXPECT_EQ(TakeErrorText(), L"The door is locked.");
}

TEST_F(StandInFault, ResultLeavesNoErrorInformation) {
    Plan("Probe.GiveText * result E_ACCESSDENIED");
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(GiveText(), E_ACCESSDENIED);
    EXPECT_EQ(TakeErrorText(), L"(none)");
}

TEST_F(StandInFault, ErrorOfAnAutomationCallIsAnException) {
    Plan("Probe.GetTitle * error E_ACCESSDENIED The door is locked.");
    const Outcome outcome = Invoke(m_probe.Interface(), 1, DISPATCH_PROPERTYGET);
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.scode, E_ACCESSDENIED);
    EXPECT_EQ(outcome.description, L"The door is locked.");
    EXPECT_EQ(outcome.result.vt, VT_EMPTY);
}

TEST_F(StandInFault, ErrorWithoutADescriptionIsAnExceptionWithoutOne) {
    Plan("Probe.GetTitle * error E_ACCESSDENIED");
    const Outcome outcome = Invoke(m_probe.Interface(), 1, DISPATCH_PROPERTYGET);
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.description, L"(null)");
}

TEST_F(StandInFault, ResultOfAnAutomationCallIsNoException) {
    Plan("Probe.GetTitle * result E_ACCESSDENIED");
    const Outcome outcome = Invoke(m_probe.Interface(), 1, DISPATCH_PROPERTYGET);
    EXPECT_EQ(outcome.code, E_ACCESSDENIED);
    EXPECT_EQ(outcome.scode, S_OK);
}

TEST_F(StandInFault, NullSucceedsWithNullOutputs) {
    Plan("Probe.* * null");
    EXPECT_EQ(GiveText(), S_OK);
    EXPECT_EQ(m_text, L"(null)");
    EXPECT_EQ(GiveVariant(), S_OK);
    EXPECT_EQ(m_value.vt, VT_EMPTY);
    auto* object = reinterpret_cast<ProbeInterface*>(1);
    EXPECT_EQ(ProbeInterface::GiveObject::Call(m_probe.Interface(), &object), S_OK);
    EXPECT_EQ(object, nullptr);
}

TEST_F(StandInFault, NullOfAnAutomationCallHasTheTypeOfItsResult) {
    Plan("Probe.* * null");
    const Outcome text = Invoke(m_probe.Interface(), 1, DISPATCH_PROPERTYGET);
    EXPECT_EQ(text.result.vt, VT_BSTR);
    EXPECT_EQ(text.result.bstrVal, nullptr);
    const Outcome object = Invoke(m_probe.Interface(), 4, DISPATCH_METHOD);
    EXPECT_EQ(object.result.vt, VT_DISPATCH);
    EXPECT_EQ(object.result.pdispVal, nullptr);
    const Outcome value = Invoke(m_probe.Interface(), 5, DISPATCH_METHOD, {7L});
    EXPECT_EQ(value.result.vt, VT_EMPTY);
}

TEST_F(StandInFault, EmptySucceedsWithEmptyOutputs) {
    Plan("Probe.* * empty");
    EXPECT_EQ(GiveText(), S_OK);
    EXPECT_EQ(m_text, L"");
    EXPECT_EQ(GiveVariant(), S_OK);
    EXPECT_EQ(m_value.vt, VT_EMPTY);
    const Outcome text = Invoke(m_probe.Interface(), 1, DISPATCH_PROPERTYGET);
    ASSERT_EQ(text.result.vt, VT_BSTR);
    ASSERT_NE(text.result.bstrVal, nullptr);
    EXPECT_EQ(SysStringLen(text.result.bstrVal), 0u);
}

TEST_F(StandInFault, TextTakesThePlaceOfTextOutputs) {
    Plan("Probe.* * text Z\xc3\xbcrich");
    EXPECT_EQ(GiveText(), S_OK);
    EXPECT_EQ(m_text, L"Z\u00fcrich");
    const Outcome text = Invoke(m_probe.Interface(), 1, DISPATCH_PROPERTYGET);
    ASSERT_EQ(text.result.vt, VT_BSTR);
    EXPECT_STREQ(text.result.bstrVal, L"Z\u00fcrich");
}

struct VariantForm {
    const char* form;
    VARTYPE type;
    UINT dimensions;
};

TEST_F(StandInFault, VariantGivesTheNamedForm) {
    const VariantForm forms[] = {
        {"empty", VT_EMPTY, 0},
        {"null", VT_NULL, 0},
        {"i4", VT_I4, 0},
        {"bstr", VT_BSTR, 0},
        {"text some words", VT_BSTR, 0},
        {"true", VT_BOOL, 0},
        {"false", VT_BOOL, 0},
        {"no-object", VT_DISPATCH, 0},
        {"error", VT_ERROR, 0},
        {"array-i4", VT_ARRAY | VT_I4, 2},
        {"array-bstr-1", VT_ARRAY | VT_BSTR, 1},
        {"array-bstr-2", VT_ARRAY | VT_BSTR, 2},
        {"array-bstr-2-empty", VT_ARRAY | VT_BSTR, 2},
    };
    for (const VariantForm& known : forms) {
        SCOPED_TRACE(known.form);
        Plan(std::string("Probe.* * variant ") + known.form);
        EXPECT_EQ(GiveVariant(), S_OK);
        EXPECT_EQ(m_value.vt, known.type);
        if (known.dimensions != 0) {
            EXPECT_EQ(SafeArrayGetDim(m_value.parray), known.dimensions);
        }
        const Outcome late = Invoke(m_probe.Interface(), 5, DISPATCH_METHOD, {7L});
        EXPECT_EQ(late.code, S_OK);
        EXPECT_EQ(late.result.vt, known.type);
    }
}

TEST_F(StandInFault, VariantWithATextHoldsIt) {
    Plan("Probe.* * variant text some words");
    GiveVariant();
    EXPECT_STREQ(m_value.bstrVal, L"some words");
}

TEST_F(StandInFault, VariantLeavesPlainTextOutputsNull) {
    Plan("Probe.* * variant i4");
    EXPECT_EQ(GiveText(), S_OK);
    EXPECT_EQ(m_text, L"(null)");
}

TEST_F(StandInFault, ThenDoesTheWorkAndReturnsTheCode) {
    Plan("Probe.GiveText 1 then S_FALSE\nProbe.GiveText 2 then E_FAIL\nProbe.Work * then S_OK\n");
    EXPECT_EQ(GiveText(), S_FALSE);
    EXPECT_EQ(m_text, L"text 1");
    EXPECT_EQ(GiveText(), E_FAIL);
    EXPECT_EQ(m_text, L"(null)");
    m_probe->work = []() -> HRESULT { return E_ACCESSDENIED; };
    EXPECT_EQ(ProbeInterface::Work::Call(m_probe.Interface()), E_ACCESSDENIED);
}

TEST_F(StandInFault, SleepWaitsAndDoesTheWork) {
    Plan("Probe.GiveText 1 sleep 150");
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(GiveText(), S_OK);
    EXPECT_GE(GetTickCount64() - start, 130u);
    EXPECT_EQ(m_text, L"text 1");
}

TEST_F(StandInFault, ThrowLeavesTheCallWithAnExceptionOfNoKnownKind) {
    Plan("Probe.* * throw");
    EXPECT_ANY_THROW(GiveText());
    EXPECT_ANY_THROW(Invoke(m_probe.Interface(), 5, DISPATCH_METHOD, {7L}));
}

TEST_F(StandInFault, IsAnnouncedInTheTrace) {
    const TraceCapture trace;
    Plan("Probe.Work 1 result E_FAIL");
    ProbeInterface::Work::Call(m_probe.Interface());
    const std::string label = m_probe->Label();
    EXPECT_THAT(trace.Lines(), testing::ElementsAre("fault " + label + " Work",
                                                    label + " Work [97] () -> E_FAIL"));
}

TEST_F(StandInFault, HitsNameLookupsAndInterfaceQueriesToo) {
    Plan("Probe.GetIDsOfNames 1 result DISP_E_UNKNOWNNAME\nProbe.QueryInterface 1 result E_FAIL\n");
    EXPECT_EQ(IdOf(m_probe.Interface(), L"Combine"), DISPID_UNKNOWN);
    EXPECT_EQ(IdOf(m_probe.Interface(), L"Combine"), 3);
    Microsoft::WRL::ComPtr<IDispatch> dispatch;
    EXPECT_EQ(m_probe.Interface()->QueryInterface(IID_PPV_ARGS(&dispatch)), E_FAIL);
    EXPECT_EQ(dispatch, nullptr);
    EXPECT_EQ(m_probe.Interface()->QueryInterface(IID_PPV_ARGS(&dispatch)), S_OK);
}

} // namespace
} // namespace devinst::test
