#include "cms/ActionMessage.h"
#include "cms/Response.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zt::BuildActionMessage;
using zt::FailureInResponse;
using zt::SplitFields;

TEST(ActionMessage, HoldsActionAndArgument) {
    EXPECT_EQ(BuildActionMessage(L"STATUS", L"SUCCESS"),
              L"TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|SUCCESS");
}

TEST(ActionMessage, EndsWithTheActionWhenThereIsNoArgument) {
    EXPECT_EQ(BuildActionMessage(L"CLOSE", nullptr), L"TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|CLOSE");
}

TEST(ActionMessage, EndsWithABarWhenTheArgumentIsEmpty) {
    EXPECT_EQ(BuildActionMessage(L"CLOSE", L""), L"TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|CLOSE|");
}

TEST(ActionMessage, TakesBarsInTheArgumentAsTheyAre) {
    EXPECT_EQ(BuildActionMessage(L"MESSAGE", L"a|b"),
              L"TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|MESSAGE|a|b");
}

TEST(Fields, StandBetweenBars) {
    EXPECT_THAT(SplitFields(L"a|b c|d", 9), ElementsAre(L"a", L"b c", L"d"));
}

TEST(Fields, AreOneWithoutABar) {
    EXPECT_THAT(SplitFields(L"a", 9), ElementsAre(L"a"));
}

TEST(Fields, AreNoneInAnEmptyText) {
    EXPECT_THAT(SplitFields(L"", 9), IsEmpty());
}

TEST(Fields, AreNoneBetweenBarsAlone) {
    EXPECT_THAT(SplitFields(L"|||", 9), IsEmpty());
}

TEST(Fields, LeaveOutEmptyOnes) {
    EXPECT_THAT(SplitFields(L"||a|||b||", 9), ElementsAre(L"a", L"b"));
}

TEST(Fields, KeepBlanks) {
    EXPECT_THAT(SplitFields(L" a | ", 9), ElementsAre(L" a ", L" "));
}

TEST(Fields, StopAtTheMaximum) {
    EXPECT_THAT(SplitFields(L"a|b|c|d", 3), ElementsAre(L"a", L"b", L"c"));
}

struct Answer {
    const char* name;
    const wchar_t* text;
    const wchar_t* failure; // null for success
};

class ClientAnswer : public testing::TestWithParam<Answer> {};

TEST_P(ClientAnswer, IsJudged) {
    const auto failure = FailureInResponse(GetParam().text);
    if (GetParam().failure == nullptr)
        EXPECT_EQ(failure, std::nullopt);
    else
        EXPECT_EQ(failure, std::wstring(GetParam().failure));
}

constexpr const wchar_t* Malformed = L"Invalid response from CMS client";
constexpr const wchar_t* BarePrefix = L"CMS client reported error: ";

INSTANTIATE_TEST_SUITE_P(
    Cms, ClientAnswer,
    testing::Values(
        Answer{"Ok", L"TOOL_RESPONSE_MESSAGE|OK", nullptr},
        Answer{"OkInLowerCase", L"tool_response_message|ok", nullptr},
        Answer{"OkInMixedCase", L"Tool_Response_Message|oK", nullptr},
        Answer{"OkWithMoreFields", L"TOOL_RESPONSE_MESSAGE|OK|x|y", nullptr},
        Answer{"OkBetweenEmptyFields", L"||TOOL_RESPONSE_MESSAGE||OK||", nullptr},
        Answer{"Empty", L"", Malformed}, Answer{"BarsAlone", L"||", Malformed},
        Answer{"TagAlone", L"TOOL_RESPONSE_MESSAGE", Malformed},
        Answer{"TagAndBar", L"TOOL_RESPONSE_MESSAGE|", Malformed},
        Answer{"OtherTag", L"TOOL_ACTION_MESSAGE|OK", Malformed},
        Answer{"TagWithMore", L"TOOL_RESPONSE_MESSAGES|OK", Malformed},
        Answer{"TagCut", L"TOOL_RESPONSE_MESSAG|OK", Malformed},
        Answer{"TagWithBlank", L" TOOL_RESPONSE_MESSAGE|OK", Malformed},
        Answer{"OkAlone", L"OK", Malformed},
        Answer{"Error", L"TOOL_RESPONSE_MESSAGE|ERROR|Disk full",
               L"CMS client reported error: Disk full"},
        Answer{"ErrorInLowerCase", L"tool_response_message|error|Disk full",
               L"CMS client reported error: Disk full"},
        Answer{"ErrorOfFourFields", L"TOOL_RESPONSE_MESSAGE|ERROR|Disk full|more",
               L"CMS client reported error: Disk full"},
        Answer{"ErrorBehindEmptyFields", L"TOOL_RESPONSE_MESSAGE|ERROR||Disk full",
               L"CMS client reported error: Disk full"},
        Answer{"ErrorAlone", L"TOOL_RESPONSE_MESSAGE|ERROR", BarePrefix},
        Answer{"ErrorAndBar", L"TOOL_RESPONSE_MESSAGE|ERROR|", BarePrefix},
        Answer{"OtherWord", L"TOOL_RESPONSE_MESSAGE|BUSY|Disk full", BarePrefix},
        Answer{"OkWithMore", L"TOOL_RESPONSE_MESSAGE|OKAY", BarePrefix},
        // U+212A, the sign for kelvin, folds to "k" in Unicode; the words are plain letters.
        Answer{"OkWithKelvinSign", L"TOOL_RESPONSE_MESSAGE|O\u212A", BarePrefix},
        Answer{"Percent", L"TOOL_RESPONSE_MESSAGE|ERROR|100%s %n",
               L"CMS client reported error: 100%s %n"},
        Answer{"NonLatin", L"TOOL_RESPONSE_MESSAGE|ERROR|\u65E5\u672C",
               L"CMS client reported error: \u65E5\u672C"}),
    [](const auto& testCase) { return testCase.param.name; });

} // namespace
