// What the stand-in for the content-management client understands and prints.
#include "tools/cms-client/Answer.h"
#include "tools/cms-client/Message.h"
#include "tools/cms-client/Options.h"
#include "tools/cms-client/Program.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace {

using namespace zt::cmsclient;
using namespace std::string_literals;
using std::chrono::milliseconds;
using std::chrono::seconds;

// The text of the failure that action ends with.
template <class Action>
std::string FailureOf(Action action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

const std::string OkFrame = "\x00\x1BTOOL_RESPONSE_MESSAGE|OK\x00"s;

// ---- answers ----

TEST(ClientToolAnswer, OkIsTheFrameOfSuccess) {
    const Answer answer = ParseAnswer("ok");
    EXPECT_EQ(answer.bytes, OkFrame);
    EXPECT_EQ(answer.delay, milliseconds(0));
    EXPECT_EQ(answer.gap, milliseconds(0));
    EXPECT_EQ(answer.end, Answer::End::WhenTheSenderLeaves);
    EXPECT_EQ(answer.name, "ok");
}

TEST(ClientToolAnswer, ErrorCarriesItsDescription) {
    const Answer answer = ParseAnswer("  error   Disk  full ");
    EXPECT_EQ(answer.bytes, "\x00\x29TOOL_RESPONSE_MESSAGE|ERROR|Disk  full\x00"s);
    EXPECT_EQ(answer.name, "error   Disk  full");
}

TEST(ClientToolAnswer, ErrorNeedsNoDescription) {
    EXPECT_EQ(ParseAnswer("error").bytes, "\x00\x1ETOOL_RESPONSE_MESSAGE|ERROR\x00"s);
}

TEST(ClientToolAnswer, TextIsFramed) {
    EXPECT_EQ(ParseAnswer("text A|B").bytes, "\x00\x06\x41|\x42\x00"s);
}

TEST(ClientToolAnswer, TextMustFitIntoAFrame) {
    EXPECT_EQ(FailureOf([] { ParseAnswer("text " + std::string(65528, 'x')); }),
              "the answer is too long for a frame");
}

TEST(ClientToolAnswer, RawBytesAreSentAsTheyAre) {
    EXPECT_EQ(ParseAnswer("raw 00 5 fF").bytes, "\x00\x05\xFF"s);
}

TEST(ClientToolAnswer, RawBytesAreHexadecimal) {
    EXPECT_EQ(FailureOf([] { ParseAnswer("raw 00 100"); }), "no number up to 255: \"100\"");
    EXPECT_EQ(FailureOf([] { ParseAnswer("raw 0g"); }), "no number up to 255: \"0g\"");
    EXPECT_EQ(FailureOf([] { ParseAnswer("raw -1"); }), "no number up to 255: \"-1\"");
}

TEST(ClientToolAnswer, LateIsOkAfterSeconds) {
    const Answer answer = ParseAnswer("late 3");
    EXPECT_EQ(answer.bytes, OkFrame);
    EXPECT_EQ(answer.delay, seconds(3));
}

TEST(ClientToolAnswer, PiecesAreOkWithGapsOfMilliseconds) {
    const Answer answer = ParseAnswer("pieces 250");
    EXPECT_EQ(answer.bytes, OkFrame);
    EXPECT_EQ(answer.gap, milliseconds(250));
}

TEST(ClientToolAnswer, WaitsNeedANumber) {
    EXPECT_EQ(FailureOf([] { ParseAnswer("late"); }), "no number up to 86400: \"\"");
    EXPECT_EQ(FailureOf([] { ParseAnswer("pieces 1s"); }), "no number up to 86400: \"1s\"");
}

TEST(ClientToolAnswer, NothingHasNoBytesAndWaits) {
    EXPECT_EQ(ParseAnswer("nothing").bytes, "");
    EXPECT_EQ(ParseAnswer("nothing").end, Answer::End::WhenTheSenderLeaves);
}

TEST(ClientToolAnswer, CloseAndResetHaveNoBytesAndDoNotWait) {
    EXPECT_EQ(ParseAnswer("close").bytes, "");
    EXPECT_EQ(ParseAnswer("close").end, Answer::End::AtOnce);
    EXPECT_EQ(ParseAnswer("reset").bytes, "");
    EXPECT_EQ(ParseAnswer("reset").end, Answer::End::Reset);
}

TEST(ClientToolAnswer, GarbageIsNoFrame) {
    const std::string bytes = ParseAnswer("garbage").bytes;
    ASSERT_GT(bytes.size(), 4u);
    EXPECT_NE(static_cast<unsigned char>(bytes[0]) * 256u + static_cast<unsigned char>(bytes[1]),
              bytes.size());
}

TEST(ClientToolAnswer, OfAnotherNameIsRefused) {
    EXPECT_EQ(FailureOf([] { ParseAnswer("okay"); }), "no such answer: \"okay\"");
    EXPECT_EQ(FailureOf([] { ParseAnswer(""); }), "no such answer: \"\"");
    EXPECT_EQ(FailureOf([] { ParseAnswer("ok later"); }), "\"ok\" takes nothing behind it");
}

TEST(ClientToolScript, HasOneAnswerALine) {
    const auto answers = ParseScript("# first the failure\r\nerror x\r\n\r\n  ok\nclose");
    ASSERT_EQ(answers.size(), 3u);
    EXPECT_EQ(answers[0].name, "error x");
    EXPECT_EQ(answers[1].name, "ok");
    EXPECT_EQ(answers[2].name, "close");
}

TEST(ClientToolScript, ReportsTheLineOfAMistake) {
    EXPECT_EQ(FailureOf([] { ParseScript("ok\n# comment\nfine\n"); }),
              "line 3: no such answer: \"fine\"");
}

TEST(ClientToolScript, NeedsAnAnswer) {
    EXPECT_EQ(FailureOf([] { ParseScript("# nothing\n"); }), "the script holds no answer");
}

// ---- messages ----

TEST(ClientToolMessage, IsShownWithoutItsHead) {
    EXPECT_EQ(Describe("TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|SUCCESS"),
              "\"STATUS\" \"SUCCESS\"");
    EXPECT_EQ(Describe("TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|CLOSE"), "\"CLOSE\"");
}

TEST(ClientToolMessage, IsShownWithItsEmptyFields) {
    EXPECT_EQ(Describe("TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|CLOSE|"), "\"CLOSE\" \"\"");
}

TEST(ClientToolMessage, OfAnotherKindIsShownWhole) {
    EXPECT_EQ(Describe("HELLO||X"), "unknown message: \"HELLO\" \"\" \"X\"");
}

TEST(ClientToolMessage, OfAStatusIsAVerdict) {
    EXPECT_EQ(VerdictOf("TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|SUCCESS"), Verdict::Success);
    EXPECT_EQ(VerdictOf("TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|FAILED"), Verdict::Failure);
}

TEST(ClientToolMessage, OfAnotherKindIsNoVerdict) {
    EXPECT_EQ(VerdictOf("TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS"), Verdict::None);
    EXPECT_EQ(VerdictOf("TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|SUCCESS|more"), Verdict::None);
    EXPECT_EQ(VerdictOf("TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|SAVE_AND_CLOSE|P.kvp"), Verdict::None);
    EXPECT_EQ(VerdictOf("STATUS|SUCCESS"), Verdict::None);
}

// ---- command line ----

TEST(ClientToolOptions, AnswerOkOnAFreePortByDefault) {
    const Options options = ParseOptions({L"--exchange", L"C:\\ex"});
    EXPECT_EQ(options.exchangeFolder, L"C:\\ex");
    EXPECT_EQ(options.port, 0);
    EXPECT_EQ(options.timeout, std::nullopt);
    EXPECT_EQ(options.messages, std::nullopt);
    ASSERT_EQ(options.answers.size(), 1u);
    EXPECT_EQ(options.answers[0].name, "ok");
    EXPECT_EQ(options.commandLine, L"");
}

TEST(ClientToolOptions, TakeTheirValues) {
    const Options options = ParseOptions({L"--exchange", L"ex", L"--port", L"4711", L"--timeout",
                                          L"0", L"--messages", L"3", L"--answer", L"error \u65E5"});
    EXPECT_EQ(options.port, 4711);
    EXPECT_EQ(options.timeout, 0);
    EXPECT_EQ(options.messages, 3);
    ASSERT_EQ(options.answers.size(), 1u);
    EXPECT_EQ(options.answers[0].name, "error \xE6\x97\xA5");
}

TEST(ClientToolOptions, LeaveTheAnswersToTheScript) {
    const Options options = ParseOptions({L"--exchange", L"ex", L"--script", L"answers.txt"});
    EXPECT_EQ(options.scriptFile, L"answers.txt");
    EXPECT_TRUE(options.answers.empty());
}

TEST(ClientToolOptions, GiveAllBehindRunToTheProgram) {
    const Options options =
        ParseOptions({L"--exchange", L"ex", L"--run", L"a.exe", L"--port", L"x y"});
    EXPECT_EQ(options.commandLine, L"a.exe --port \"x y\"");
    EXPECT_EQ(options.port, 0);
}

TEST(ClientToolOptions, AreRefusedWhenInvalid) {
    const auto failure = [](const std::vector<std::wstring>& arguments) {
        return FailureOf([&] { ParseOptions(arguments); });
    };
    EXPECT_EQ(failure({}), "--exchange is missing");
    EXPECT_EQ(failure({L"--exchange"}), "--exchange needs a value");
    EXPECT_EQ(failure({L"--exchange", L"ex", L"--run"}), "--run needs a command line");
    EXPECT_EQ(failure({L"--colour"}), "no such option: --colour");
    EXPECT_EQ(failure({L"--port", L"0"}), "--port needs a number from 1 to 65535");
    EXPECT_EQ(failure({L"--port", L"65536"}), "--port needs a number from 1 to 65535");
    EXPECT_EQ(failure({L"--port", L"99999999999"}), "--port needs a number from 1 to 65535");
    EXPECT_EQ(failure({L"--timeout", L"-1"}), "--timeout needs a number from 0 to 99999999");
    EXPECT_EQ(failure({L"--answer", L"fine"}), "no such answer: \"fine\"");
    EXPECT_EQ(failure({L"--exchange", L"ex", L"--answer", L"ok", L"--script", L"a"}),
              "--answer and --script exclude each other");
}

TEST(ClientToolOptions, RequestHelpWithoutAnythingElse) {
    EXPECT_TRUE(ParseOptions({L"--help"}).wantsHelp);
    EXPECT_TRUE(ParseOptions({L"/?"}).wantsHelp);
}

TEST(ClientToolHelp, FitsOnAScreen) {
    const std::string usage = Usage;
    EXPECT_LE(std::count(usage.begin(), usage.end(), '\n'), 25);
}

TEST(ClientToolCommandLine, OfOneArgumentStandsAsItIs) {
    EXPECT_EQ(JoinCommandLine({L"\"a b.exe\" -IN \"x y\""}), L"\"a b.exe\" -IN \"x y\"");
}

TEST(ClientToolCommandLine, QuotesSeveralArgumentsWhereTheyNeedIt) {
    EXPECT_EQ(
        JoinCommandLine({L"a b.exe", L"-IN", L"", L"say \"x\"", L"c:\\x y\\", L"\\\"", L"t\tu"}),
        L"\"a b.exe\" -IN \"\" \"say \\\"x\\\"\" \"c:\\x y\\\\\" \"\\\\\\\"\" \"t\tu\"");
}

} // namespace
