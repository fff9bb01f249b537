#include "tests/support/RunFixture.h"

namespace zt {
namespace {

class LogFile : public testing::Test {
  protected:
    LogFile() { m_app.m_strLogFile = Path(); }
    std::wstring Path() const { return m_folder.Path(L"run.log"); }
    std::string Text() const { return test::BytesOf(Path()); }

    test::TemporaryFolder m_folder;
    CZTInvisible m_app;
};

TEST_F(LogFile, IsMadeByTheFirstLine) {
    m_app.Log(L"Project '%s', '%ws'\n", L"P", L"Q");
    EXPECT_EQ(Text(), "Project 'P', 'Q'\r\n");
}

TEST_F(LogFile, GetsEachTextAtItsEnd) {
    test::WriteBytes(Path(), "earlier\r\n");
    m_app.Log(L"one\n");
    m_app.Log(L"two");
    m_app.Log(L" and three\n\n");
    EXPECT_EQ(Text(), "earlier\r\none\r\ntwo and three\r\n\r\n");
}

TEST_F(LogFile, HoldsTheCharactersOfTheRuntimesDefaultSet) {
    m_app.Log(L"\xC4pfel %s\n", L"\xE9\xFF");
    EXPECT_EQ(Text(), "\xC4pfel \xE9\xFF\r\n");
}

TEST_F(LogFile, LosesNothingBehindACharacterOutsideThatSet) {
    m_app.Log(L"'%s' is set\n", L"\x0416\xD83D\xDE00z\xD83D");
    EXPECT_EQ(Text(), "'??z?' is set\r\n");
}

TEST_F(LogFile, TakesTextsOfAnyLength) {
    const std::wstring value(30000, L'%');
    m_app.Log(L"<%s>\n", value.c_str());
    EXPECT_EQ(Text(), "<" + std::string(30000, '%') + ">\r\n");
}

TEST_F(LogFile, IsFreeForOthersBetweenTheLines) {
    m_app.Log(L"one\n");
    ASSERT_TRUE(MoveFileW(Path().c_str(), m_folder.Path(L"kept.log").c_str()));
    m_app.Log(L"two\n");
    EXPECT_EQ(test::BytesOf(m_folder.Path(L"kept.log")), "one\r\n");
    EXPECT_EQ(Text(), "two\r\n");
}

TEST_F(LogFile, MayBeReadByOthersWhileALineIsWritten) {
    m_app.Log(L"one\n");
    const HandleHolder reader =
        HoldHandle(CreateFileW(Path().c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                               nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    m_app.Log(L"two\n");
    EXPECT_EQ(Text(), "one\r\ntwo\r\n");
}

TEST_F(LogFile, LosesALineThatCannotBeWritten) {
    for (const std::wstring& path :
         {m_folder.Path(L"missing\\run.log"), m_folder.Path(), m_folder.Path(L"a|b"),
          m_folder.Path(std::wstring(300, L'x'))}) {
        m_app.m_strLogFile = path;
        m_app.Log(L"lost\n");
        EXPECT_FALSE(std::filesystem::is_regular_file(path));
    }
}

TEST_F(LogFile, IsNotKeptWhereNoneIsAskedFor) {
    m_app.m_strLogFile.clear();
    m_app.Log(L"lost\n");
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
}

class ReportedError : public testing::Test {
  protected:
    ReportedError() { m_app.m_strLogFile = m_folder.Path(L"run.log"); }
    void Report(const wchar_t* message) {
        testing::internal::CaptureStdout();
        m_app.LogError(message);
        m_output = testing::internal::GetCapturedStdout();
    }
    std::string Log() const { return test::BytesOf(m_folder.Path(L"run.log")); }
    std::string StatusText() const { return test::BytesOf(m_folder.Path(L"job_ERROR")); }

    test::TemporaryFolder m_folder;
    std::string m_output;
    CZTInvisible m_app;
};

TEST_F(ReportedError, StandsInTheLogWithoutALineEnd) {
    Report(L"Something of 100 % failed: %s");
    m_app.Log(L"next\n");
    EXPECT_EQ(Log(), "ERROR: Something of 100 % failed: %snext\r\n");
}

TEST_F(ReportedError, IsPrintedWithALineEndWithoutClientAndStatusFiles) {
    Report(L"Something of 100 % failed: %s");
    EXPECT_EQ(m_output, "Something of 100 % failed: %s\n");
}

TEST_F(ReportedError, IsAppendedToTheStatusFileAsItStands) {
    m_app.m_strStatusBase = m_folder.Path(L"job");
    Report(L"One \x0416 failed");
    Report(L"Two failed\n");
    EXPECT_EQ(StatusText(), "One ? failedTwo failed\r\n");
    EXPECT_EQ(m_output, "");
}

TEST_F(ReportedError, GoesToTheClientAloneWhenTheRunNotifies) {
    test::FakeClient client;
    client.Serve(m_folder.Path());
    client.whileReceiving = [this](const std::string&) { EXPECT_EQ(Log(), "ERROR: One ? failed"); };
    m_app.m_bNotify = true;
    m_app.m_strExchangePath = m_folder.Path();
    m_app.m_strStatusBase = m_folder.Path(L"job");
    Report(L"One \x0416 failed");
    EXPECT_THAT(client.Messages(), testing::ElementsAre("MESSAGE|One \xD0\x96 failed"));
    EXPECT_EQ(StatusText(), "(no file)");
    EXPECT_EQ(m_output, "");
}

TEST_F(ReportedError, IsNotPrintedWhenTheStatusFileCannotBeOpened) {
    m_app.m_strStatusBase = m_folder.Path(L"missing\\job");
    Report(L"One failed");
    EXPECT_EQ(m_output, "");
    EXPECT_EQ(Log(), "ERROR: One failed");
}

TEST_F(ReportedError, MayHaveNoText) {
    Report(nullptr);
    EXPECT_EQ(Log(), "ERROR: ");
    EXPECT_EQ(m_output, "\n");
}

} // namespace
} // namespace zt
