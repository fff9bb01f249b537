#include "installation/runtime/Faults.h"

#include <gtest/gtest.h>

#include <limits>

namespace devinst::test {
namespace {

constexpr unsigned Forever = std::numeric_limits<unsigned>::max();

struct PlanCase {
    const char* line = nullptr;
    FaultRule rule;
};

FaultRule Rule(const char* object, const char* operation, unsigned first, unsigned last,
               FaultKind kind, HRESULT code = S_OK, const wchar_t* text = L"",
               unsigned milliseconds = 0) {
    return {object, operation, first, last, {kind, code, milliseconds, text}};
}

TEST(FaultPlan, EveryKindOfLineIsRead) {
    const PlanCase cases[] = {
        {"KernelAdmin.OpenProject 1 result E_FAIL",
         Rule("KernelAdmin", "OpenProject", 1, 1, FaultKind::Result, E_FAIL)},
        {"KernelAdmin.OpenProject 3+ result 0x80040154",
         Rule("KernelAdmin", "OpenProject", 3, Forever, FaultKind::Result,
              static_cast<HRESULT>(0x80040154))},
        {"*.* * result S_FALSE", Rule("*", "*", 1, Forever, FaultKind::Result, S_FALSE)},
        {"A.B 2 error E_FAIL It broke.",
         Rule("A", "B", 2, 2, FaultKind::Error, E_FAIL, L"It broke.")},
        {"A.B 2 raise E_FAIL \" quoted \"",
         Rule("A", "B", 2, 2, FaultKind::Error, E_FAIL, L" quoted ")},
        {"A.B 2 error E_FAIL", Rule("A", "B", 2, 2, FaultKind::Error, E_FAIL)},
        {"A.B * null", Rule("A", "B", 1, Forever, FaultKind::Null)},
        {"A.B * empty", Rule("A", "B", 1, Forever, FaultKind::Empty)},
        {"A.B * text Z\xc3\xbcrich",
         Rule("A", "B", 1, Forever, FaultKind::Text, S_OK, L"Z\u00fcrich")},
        {"A.B * text", Rule("A", "B", 1, Forever, FaultKind::Text)},
        {"A.B * variant array-i4",
         Rule("A", "B", 1, Forever, FaultKind::Variant, S_OK, L"array-i4")},
        {"A.B * variant text some words",
         Rule("A", "B", 1, Forever, FaultKind::Variant, S_OK, L"text some words")},
        {"A.B 1 then S_FALSE", Rule("A", "B", 1, 1, FaultKind::Then, S_FALSE)},
        {"A.B 1 sleep 250", Rule("A", "B", 1, 1, FaultKind::Sleep, S_OK, L"", 250)},
        {"A.B 1 exit 3", Rule("A", "B", 1, 1, FaultKind::Exit, 3)},
        {"A.B 1 throw", Rule("A", "B", 1, 1, FaultKind::Throw)},
        {"A.B 1 leak", Rule("A", "B", 1, 1, FaultKind::Leak)},
        {" \tA.B   1\tnull  \r", Rule("A", "B", 1, 1, FaultKind::Null)},
    };
    for (const PlanCase& known : cases) {
        SCOPED_TRACE(known.line);
        std::string complaint;
        const auto rules = ParseFaultPlan(known.line, &complaint);
        ASSERT_TRUE(rules.has_value());
        ASSERT_EQ(rules->size(), 1u);
        const FaultRule& rule = rules->front();
        EXPECT_EQ(rule.object, known.rule.object);
        EXPECT_EQ(rule.operation, known.rule.operation);
        EXPECT_EQ(rule.first, known.rule.first);
        EXPECT_EQ(rule.last, known.rule.last);
        EXPECT_EQ(rule.fault.kind, known.rule.fault.kind);
        EXPECT_EQ(rule.fault.code, known.rule.fault.code);
        EXPECT_EQ(rule.fault.milliseconds, known.rule.fault.milliseconds);
        EXPECT_EQ(rule.fault.text, known.rule.fault.text);
    }
}

TEST(FaultPlan, EmptyLinesAndCommentsAreSkipped) {
    std::string complaint;
    const auto rules =
        ParseFaultPlan("# a comment\r\n\r\n   \nA.B 1 null\n  # another\nC.D 1 empty", &complaint);
    ASSERT_TRUE(rules.has_value());
    ASSERT_EQ(rules->size(), 2u);
    EXPECT_EQ((*rules)[0].object, "A");
    EXPECT_EQ((*rules)[1].object, "C");
}

TEST(FaultPlan, LineWithoutSenseIsNamed) {
    const char* const lines[] = {
        "A",
        "AB 1 null",
        ".B 1 null",
        "A. 1 null",
        "A.B",
        "A.B null",
        "A.B 0 null",
        "A.B + null",
        "A.B -1 null",
        "A.B 1",
        "A.B 1 explode",
        "A.B 1 null and void",
        "A.B 1 result",
        "A.B 1 result E_UNHEARD_OF",
        "A.B 1 result E_FAIL twice",
        "A.B 1 then",
        "A.B 1 error",
        "A.B 1 error It broke.",
        "A.B 1 sleep",
        "A.B 1 sleep long",
        "A.B 1 exit now",
        "A.B 1 throw 5",
        "A.B 1 variant",
        "A.B 1 variant banana",
    };
    for (const char* const line : lines) {
        SCOPED_TRACE(line);
        std::string complaint;
        EXPECT_FALSE(
            ParseFaultPlan("A.B 1 null\n" + std::string(line) + "\nC.D 1 null\n", &complaint));
        EXPECT_EQ(complaint, line);
    }
}

} // namespace
} // namespace devinst::test
