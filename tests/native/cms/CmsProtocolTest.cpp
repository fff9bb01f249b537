#include "cms/Protocol.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using namespace zt;
using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

std::string Frame(char high, char low, const std::string& rest) {
    return std::string{high, low} + rest;
}

TEST(CmsFrame, OfTwoLettersIsFiveBytesLong) {
    EXPECT_EQ(BuildFrame("AB"), "\x00\x05\x41\x42\x00"s);
}

TEST(CmsFrame, OfNoTextIsItsLengthAndTheZero) {
    EXPECT_EQ(BuildFrame(""), "\x00\x03\x00"s);
}

TEST(CmsFrame, BeginsWithItsLengthHighByteFirst) {
    const auto frame = BuildFrame(std::string(0x1234 - 3, 'x'));
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->size(), 0x1234u);
    EXPECT_EQ(frame->substr(0, 3), "\x12\x34x");
    EXPECT_EQ(frame->substr(0x1234 - 2), "x\0"s);
}

TEST(CmsFrame, TakesUtf8BytesAsTheyAre) {
    EXPECT_EQ(BuildFrame("\xC3\xA4\xE2\x82\xAC"), "\x00\x08\xC3\xA4\xE2\x82\xAC\x00"s);
}

TEST(CmsFrame, MayBe65530BytesLong) {
    const auto frame = BuildFrame(std::string(65527, 'x'));
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->size(), 65530u);
    EXPECT_EQ(frame->substr(0, 2), "\xFF\xFA");
    EXPECT_EQ(frame->back(), '\0');
}

TEST(CmsFrame, IsNotBuiltWhenItWouldBe65531BytesLong) {
    EXPECT_EQ(BuildFrame(std::string(65528, 'x')), std::nullopt);
}

TEST(ReceivedFrame, GivesItsText) {
    EXPECT_EQ(TextInFrame("\x00\x05\x41\x42\x00"s), "AB");
}

TEST(ReceivedFrame, MayBe65535BytesLong) {
    const std::string text(65532, 'x');
    EXPECT_EQ(TextInFrame(Frame('\xFF', '\xFF', text + '\0')), text);
}

TEST(ReceivedFrame, EndsItsTextAtTheFirstZero) {
    EXPECT_EQ(TextInFrame("\x00\x07"
                          "A\0BC\0"s),
              "A");
}

TEST(ReceivedFrame, MayHoldAnEmptyTextBeforeItsZeros) {
    EXPECT_EQ(TextInFrame("\x00\x04\x00\x00"s), "");
}

struct Invalid {
    const char* why;
    std::string bytes;
};

class ReceivedBytes : public testing::TestWithParam<Invalid> {};

TEST_P(ReceivedBytes, AreNoFrame) {
    EXPECT_EQ(TextInFrame(GetParam().bytes), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Invalid, ReceivedBytes,
    testing::Values(Invalid{"NoBytes", ""}, Invalid{"OneByte", "\x01"s},
                    Invalid{"LengthAlone", "\x00\x02"s}, Invalid{"ThreeBytes", "\x00\x03\x00"s},
                    Invalid{"LengthOneTooSmall", "\x00\x04\x41\x42\x00"s},
                    Invalid{"LengthOneTooLarge", "\x00\x06\x41\x42\x00"s},
                    Invalid{"LengthWithoutItsOwnBytes", "\x00\x03\x41\x42\x00"s},
                    Invalid{"LengthLowByteFirst", "\x05\x00\x41\x42\x00"s},
                    Invalid{"NoClosingZero", "\x00\x05\x41\x42\x43"s},
                    Invalid{"TwoFrames", "\x00\x04\x41\x00\x00\x04\x41\x00"s},
                    Invalid{"LengthOf65536", Frame('\0', '\0', std::string(65534, '\0'))}),
    [](const auto& testCase) { return testCase.param.why; });

// ---- texts ----

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
