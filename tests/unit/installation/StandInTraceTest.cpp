#include "tests/unit/installation/Automation.h"
#include "tests/unit/installation/Probe.h"
#include "tests/unit/installation/TraceCapture.h"

#include "installation/runtime/LiveObjects.h"
#include "installation/runtime/Trace.h"

#include <gmock/gmock.h>

#include <regex>

namespace devinst::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The lines with the objects' running numbers left out: "Probe#7 Work" becomes "Probe# Work".
std::vector<std::string> WithoutNumbers(std::vector<std::string> lines) {
    for (std::string& line : lines)
        line = std::regex_replace(line, std::regex("#[0-9]+"), "#");
    return lines;
}

TEST(StandInTrace, LineOfAnEarlyBoundCallHasObjectOperationIndexArgumentsAndResult) {
    const TraceCapture trace;
    const ProbeHolder probe;
    const _bstr_t text(L"a \"quoted\"\r\ntext\\ \u00e9");
    ProbeInterface::TakeAll::Call(probe.Interface(), -1, text, _variant_t(3L), probe.Interface());
    EXPECT_THAT(WithoutNumbers(trace.Lines()),
                ElementsAre("Probe# TakeAll [7] (-1, \"a \\\"quoted\\\"\\r\\ntext\\\\ \u00e9\", "
                            "VT_I4 3, Probe#) -> S_OK"));
}

TEST(StandInTrace, MissingTextsAndObjectsStandAsNull) {
    const TraceCapture trace;
    const ProbeHolder probe;
    ProbeInterface::TakeAll::Call(probe.Interface(), 0, nullptr, _variant_t(), nullptr);
    EXPECT_THAT(WithoutNumbers(trace.Lines()),
                ElementsAre("Probe# TakeAll [7] (0, null, empty, null) -> S_OK"));
}

TEST(StandInTrace, OutputsStandBehindTheResult) {
    const TraceCapture trace;
    const ProbeHolder probe;
    _bstr_t text;
    ProbeInterface::GiveText::Call(probe.Interface(), 5, text.GetAddress());
    _variant_t value;
    ProbeInterface::GiveVariant::Call(probe.Interface(), &value);
    EXPECT_THAT(WithoutNumbers(trace.Lines()),
                ElementsAre("Probe# GiveText [9] (5) -> S_OK, \"text 5\"",
                            "Probe# GiveVariant [12] () -> S_OK, VT_I4 42"));
}

TEST(StandInTrace, FailingCallShowsItsResultAndNoOutputs) {
    const TraceCapture trace;
    const ProbeHolder probe;
    probe->work = []() -> HRESULT { return E_ACCESSDENIED; };
    ProbeInterface::Work::Call(probe.Interface());
    probe->work = []() -> HRESULT { return static_cast<HRESULT>(0x80040123); };
    ProbeInterface::Work::Call(probe.Interface());
    EXPECT_THAT(WithoutNumbers(trace.Lines()), ElementsAre("Probe# Work [97] () -> E_ACCESSDENIED",
                                                           "Probe# Work [97] () -> 0x80040123"));
}

TEST(StandInTrace, LinesOfAutomationCallsHaveKindAndDispid) {
    const TraceCapture trace;
    const ProbeHolder probe;
    IDispatch* const object = probe.Interface();
    Invoke(object, 1, DISPATCH_PROPERTYGET);
    Invoke(object, 1, DISPATCH_PROPERTYPUT, {L"second"});
    Invoke(object, 2, DISPATCH_PROPERTYPUTREF, {_variant_t(object)});
    Invoke(object, 3, DISPATCH_METHOD, {L"a", 3L, true});
    EXPECT_THAT(
        WithoutNumbers(trace.Lines()),
        ElementsAre("Probe# GetTitle [get 1] () -> S_OK, VT_BSTR \"first\"",
                    "Probe# PutTitle [put 1] (\"second\") -> S_OK",
                    "Probe# PutRefHost [putref 2] (Probe#) -> S_OK",
                    "Probe# Combine [method 3] (\"a\", 3, true) -> S_OK, VT_BSTR \"a 3 true\""));
}

TEST(StandInTrace, NameLookupsAndInterfaceQueriesAreTraced) {
    const TraceCapture trace;
    const ProbeHolder probe;
    IdOf(probe.Interface(), L"combine");
    IdOf(probe.Interface(), L"unknown");
    Microsoft::WRL::ComPtr<IDispatch> dispatch;
    probe.Interface()->QueryInterface(IID_PPV_ARGS(&dispatch));
    Microsoft::WRL::ComPtr<IClassFactory> factory;
    probe.Interface()->QueryInterface(IID_PPV_ARGS(&factory));
    EXPECT_THAT(WithoutNumbers(trace.Lines()),
                ElementsAre("Probe# GetIDsOfNames (\"combine\") -> S_OK, 3",
                            "Probe# GetIDsOfNames (\"unknown\") -> DISP_E_UNKNOWNNAME",
                            "Probe# QueryInterface (IDispatch) -> S_OK, Probe#",
                            "Probe# QueryInterface (IClassFactory) -> E_NOINTERFACE"));
}

TEST(StandInTrace, ReferenceCountingIsNotTraced) {
    const ProbeHolder probe;
    const TraceCapture trace;
    probe.Interface()->AddRef();
    probe.Interface()->Release();
    EXPECT_THAT(trace.Lines(), IsEmpty());
}

TEST(StandInTrace, EachObjectOfAClassHasItsOwnNumber) {
    const ProbeHolder first;
    const ProbeHolder second;
    const TraceCapture trace;
    ProbeInterface::Work::Call(first.Interface());
    ProbeInterface::Work::Call(second.Interface());
    ProbeInterface::Work::Call(first.Interface());
    const std::vector<std::string> lines = trace.Lines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], first->Label() + " Work [97] () -> S_OK");
    EXPECT_EQ(lines[1], second->Label() + " Work [97] () -> S_OK");
    EXPECT_EQ(lines[2], lines[0]);
    EXPECT_NE(first->Label(), second->Label());
}

TEST(StandInTrace, CallBackIntoTheProgramIsALineOfItsOwn) {
    const TraceCapture trace;
    TraceCallback("ShowMessage", {"\"Really?\"", "4"}, S_OK, {"6"});
    EXPECT_EQ(trace.Last(), "program ShowMessage (\"Really?\", 4) -> S_OK, 6");
}

TEST(StandInTrace, ClosingLineCountsTheObjectsThatAreAlive) {
    const TraceCapture trace;
    TraceLiveObjects("zt-test.dll");
    EXPECT_EQ(trace.Last(), "live zt-test.dll: 0");
    {
        const ProbeHolder first;
        const ProbeHolder second;
        TraceLiveObjects("zt-test.dll");
        EXPECT_EQ(trace.Last(), "live zt-test.dll: Probe 2");
    }
    TraceLiveObjects("zt-test.dll");
    EXPECT_EQ(trace.Last(), "live zt-test.dll: 0");
}

TEST(StandInTrace, ForgottenReferenceShowsInTheClosingLine) {
    const TraceCapture trace;
    ProbeInterface* forgotten = nullptr;
    {
        const ProbeHolder probe;
        ProbeInterface::GiveObject::Call(probe.Interface(), &forgotten);
    }
    TraceLiveObjects("zt-test.dll");
    EXPECT_EQ(trace.Last(), "live zt-test.dll: Probe 1");
    forgotten->Release();
    TraceLiveObjects("zt-test.dll");
    EXPECT_EQ(trace.Last(), "live zt-test.dll: 0");
}

struct VariantCase {
    _variant_t value;
    const char* text;
};

TEST(StandInTrace, VariantsStandWithTheirTypeAndValue) {
    _variant_t shortNumber(static_cast<short>(2));
    const VariantCase cases[] = {
        {_variant_t(), "empty"},
        {_variant_t(7L), "VT_I4 7"},
        {shortNumber, "VT_I2 2"},
        {_variant_t(true), "VT_BOOL true"},
        {_variant_t(false), "VT_BOOL false"},
        {_variant_t(L"x"), "VT_BSTR \"x\""},
        {_variant_t(1.5), "variant of type 5"},
    };
    for (const VariantCase& known : cases)
        EXPECT_EQ(Described(static_cast<const VARIANT&>(known.value)), known.text);
}

} // namespace
} // namespace devinst::test
