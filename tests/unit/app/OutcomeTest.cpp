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

TEST_F(FailedRun, WithoutAProjectIsToldOnStandardOutputAndInTheLog) {
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
    Execute({L"-S"});
    EXPECT_THAT(m_calls, ElementsAre(L"notify MESSAGE Project name is not specified.",
                                     L"notify STATUS FAILED", L"notify CLOSE "));
    EXPECT_EQ(m_output, "");
}

TEST_F(FailedRun, WithoutAnyArgumentDoesNotCrash) {
    testing::internal::CaptureStdout();
    m_app.Execute(0, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Project name is not specified.\n");
}

TEST_F(FailedRun, NamesTheExchangeFolderThatCannotBe) {
    for (const std::wstring& projectFile :
         {std::wstring(L"P.zip"), L"zt-missing-folder\\" + std::wstring(L"P.zip"),
          m_folder.Path(L"a|b\\P.zip"), std::wstring(L"\\P.zip")}) {
        m_calls.clear();
        Execute({L"-IN", projectFile, L"-M", L"job", L"-S", L"-PUB"});
        EXPECT_THAT(m_calls, ElementsAre(L"notify MESSAGE Can't create exchange folder",
                                         L"notify STATUS FAILED", L"notify CLOSE P"));
    }
}

TEST_F(FailedRun, PrintsTheExchangeFoldersFailureAsNoStatusFileIsThereYet) {
    Execute({L"-IN", L"P.zip", L"-M", L"job"});
    EXPECT_EQ(m_output, "Can't create exchange folder\n");
}

TEST_F(FailedRun, OfAnExchangePathOf300CharactersIsToldOrRuns) {
    const std::wstring folder =
        m_folder.Path(std::wstring(150, L'a') + L"\\" + std::wstring(150, L'b'));
    Execute({L"-IN", folder + L"\\P.zip", L"-M", L"job"});
    const bool exists = GetFileAttributesW(folder.c_str()) != INVALID_FILE_ATTRIBUTES;
    EXPECT_EQ(m_output, exists ? "" : "Can't create exchange folder\n");
}

TEST_F(FailedRun, NamesALogWithoutAFolder) {
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", L"zt-missing\\run.log", L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't create log-file folder");

    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", L"zt-run.log", L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't create log-file folder");
    std::filesystem::remove(L"zt-run.log");
    EXPECT_THAT(m_calls, IsEmpty());
}

TEST_F(FailedRun, NamesALogThatCannotBeMade) {
    std::filesystem::create_directories(LogPath());
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", LogPath(), L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't create log file.");
    EXPECT_THAT(m_calls, IsEmpty());
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
    EXPECT_THAT(LogText(), EndsWith("'\r\nERROR: Can't insert metadata: 100 %s"));
    EXPECT_THAT(LogText(), Not(HasSubstr("SUCCESS")));
    EXPECT_EQ(m_output, "");
}

TEST_F(FailedRun, IsPrintedWithoutStatusFiles) {
    m_whileProcessing = [] { throw L"Can't open project"; };
    Execute({L"-IN", Exchange(L"P.zip"), L"-PUB"});
    EXPECT_EQ(m_output, "Can't open project\n");
}

TEST_F(FailedRun, IsToldToTheClientAndLeavesAnEmptyErrorFile) {
    m_whileProcessing = [] { throw L"Can't open project"; };
    m_whileNotifying = [this](const std::wstring&) {
        EXPECT_THAT(LogText(), EndsWith("ERROR: Can't open project"));
        EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "");
    };
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", LogPath(), L"-S", L"-PUB"});
    EXPECT_THAT(m_calls, ElementsAre(L"process P", L"notify MESSAGE Can't open project",
                                     L"notify STATUS FAILED", L"notify CLOSE P"));
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "");
    EXPECT_EQ(m_output, "");
}

TEST_F(FailedRun, IsToldOnceMoreWhenThePipelineReportedAnErrorItself) {
    m_whileProcessing = [this] {
        m_app.LogError(L"detail");
        throw L"Can't load specification - aborting...";
    };
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")),
              "detailCan't load specification - aborting...");
}

TEST_F(FailedRun, HasTheComponentsDescription) {
    m_whileProcessing = [] { throw new COleDispatchException(E_FAIL, L"Refused \x0416."); };
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-PUB"});
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Refused ?.");
}

TEST_F(FailedRun, OfAnUnknownKindIsNotReported) {
    m_whileProcessing = [] { throw 5; };
    EXPECT_THROW(
        Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-LOG", LogPath(), L"-S", L"-PUB"}),
        int);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_THAT(m_calls, ElementsAre(L"process P"));
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "");
    EXPECT_THAT(LogText(), Not(HasSubstr("ERROR")));
    EXPECT_THAT(LogText(), Not(HasSubstr("SUCCESS")));
}

} // namespace
} // namespace zt
