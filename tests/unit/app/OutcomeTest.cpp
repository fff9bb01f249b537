// The outcome of a run that fails.
#include "tests/support/RunFixture.h"

#include "framework/Exceptions.h"

namespace zt {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class FailedRun : public test::RunFixture {};

TEST_F(FailedRun, WithoutAProjectIsReportedOnStandardOutputAndInTheLog) {
    std::filesystem::create_directory(m_folder.Path(L"log"));
    for (const auto& arguments :
         std::vector<std::vector<std::wstring>>{{L"-LOG", LogPath()},
                                                {L"-LOG", LogPath(), L"-IN"},
                                                {L"-LOG", LogPath(), L"-IN", L""},
                                                {L"-M", L"job", L"-LOG", LogPath()}}) {
        std::filesystem::remove(LogPath());
        Execute(arguments);
        EXPECT_EQ(m_output, "Project name is not specified.\n");
        EXPECT_EQ(LogText(), "ERROR: Project name is not specified.");
        EXPECT_EQ(m_app.m_strStatusBase, L"");
    }
}

TEST_F(FailedRun, IsAppendedToALogThatWasNotYetPrepared) {
    std::filesystem::create_directory(m_folder.Path(L"log"));
    test::WriteBytes(LogPath(), "earlier\r\n");
    Execute({L"-LOG", LogPath()});
    EXPECT_EQ(LogText(), "earlier\r\nERROR: Project name is not specified.");
}

TEST_F(FailedRun, MakesNoFolderForALogThatWasNotYetPrepared) {
    Execute({L"-LOG", LogPath()});
    EXPECT_FALSE(test::Exists(m_folder.Path(L"log")));
    EXPECT_EQ(m_output, "Project name is not specified.\n");
}

TEST_F(FailedRun, WithoutAProjectClosesNoNamedProject) {
    test::FakeClient client;
    client.Serve(ExchangeFolder());
    Execute({L"-EXCHANGEPATH", ExchangeFolder(), L"-S"});
    EXPECT_THAT(client.Messages(),
                ElementsAre("MESSAGE|Project name is not specified.", "STATUS|FAILED", "CLOSE|"));
    EXPECT_EQ(m_output, "");
}

TEST_F(FailedRun, WithoutAnyArgumentDoesNotCrash) {
    testing::internal::CaptureStdout();
    m_app.Execute(0, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Project name is not specified.\n");
}

TEST_F(FailedRun, ReportsTheExchangeFolderThatCannotBeMadeOnStandardOutput) {
    for (const std::wstring& projectFile :
         {std::wstring(L"P.zip"), std::wstring(L"zt-missing-folder\\P.zip"),
          m_folder.Path(L"a|b\\P.zip"), std::wstring(L"\\P.zip")}) {
        Execute({L"-IN", projectFile, L"-M", L"job", L"-PUB"});
        EXPECT_EQ(m_output, "Can't create exchange folder\n");
        EXPECT_THAT(m_kernelCalls, IsEmpty());
    }
}

TEST_F(FailedRun, ReportsAnExchangePathThatIsTooLong) {
    // 300 characters in one name: no file system takes that.
    const std::wstring folder = m_folder.Path(std::wstring(300, L'a'));
    Execute({L"-IN", folder + L"\\P.zip", L"-M", L"job"});
    EXPECT_EQ(m_output, "Can't create exchange folder\n");
}

TEST_F(FailedRun, NamesALogWithoutAFolder) {
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", L"zt-missing\\run.log", L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't create log-file folder");

    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", L"zt-run.log", L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't create log-file folder");
    std::filesystem::remove(L"zt-run.log");
    EXPECT_THAT(m_kernelCalls, IsEmpty());
}

TEST_F(FailedRun, NamesALogThatCannotBeMade) {
    std::filesystem::create_directories(LogPath());
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", LogPath(), L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't create log file.");
    EXPECT_THAT(m_kernelCalls, IsEmpty());
}

TEST_F(FailedRun, OfALogPathOf300CharactersDoesNotCrash) {
    const std::wstring log = m_folder.Path(std::wstring(300, L'x'));
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", log});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't create log file.");
}

TEST_F(FailedRun, LeavesTheErrorFileWithTheTextOfTheFailure) {
    m_whileProcessing = [] { throw CString(L"Can't insert metadata: ") + L"100 %s"; };
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", LogPath(), L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't insert metadata: 100 %s");
    EXPECT_FALSE(test::Exists(Exchange(L"job_DONE")));
    EXPECT_THAT(LogText(), EndsWith("\r\nERROR: Can't insert metadata: 100 %s"));
    EXPECT_THAT(LogText(), Not(HasSubstr("SUCCESS")));
    EXPECT_EQ(m_output, "");
}

TEST_F(FailedRun, IsPrintedWithoutStatusFiles) {
    Execute({L"-IN", Exchange(L"P.zip"), L"-PUB"});
    EXPECT_EQ(m_output, "Couldn't create KVAdmin\n");
}

TEST_F(FailedRun, IsReportedToTheClientAndLeavesAnEmptyErrorFile) {
    test::FakeClient client;
    client.Serve(ExchangeFolder());
    client.whileReceiving = [this](const std::string&) {
        EXPECT_THAT(LogText(), EndsWith("ERROR: Couldn't create KVAdmin"));
        EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "");
    };
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", LogPath(), L"-S", L"-PUB"});
    EXPECT_THAT(client.Messages(),
                ElementsAre("MESSAGE|Couldn't create KVAdmin", "STATUS|FAILED", "CLOSE|P"));
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "");
    EXPECT_EQ(m_output, "");
}

TEST_F(FailedRun, IsReportedOnceMoreWhenThePipelineReportedAnErrorItself) {
    m_whileProcessing = [this] { m_app.LogError(L"detail"); };
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "detailCouldn't create KVAdmin");
}

TEST_F(FailedRun, HasTheComponentsDescription) {
    m_whileProcessing = [] { throw new COleDispatchException(E_FAIL, L"Refused \x0416."); };
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Refused ?.");
}

TEST_F(FailedRun, OfAnUnknownTypeIsNotReported) {
    test::FakeClient client;
    client.Serve(ExchangeFolder());
    m_whileProcessing = [] { throw 5; };
    EXPECT_THROW(
        Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", LogPath(), L"-S", L"-PUB"}),
        int);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_THAT(client.Messages(), IsEmpty());
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "");
    EXPECT_THAT(LogText(), Not(HasSubstr("ERROR")));
    EXPECT_THAT(LogText(), Not(HasSubstr("SUCCESS")));
}

} // namespace
} // namespace zt
