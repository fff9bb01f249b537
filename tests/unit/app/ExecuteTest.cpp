// The sequence of a run.
#include "tests/support/RunFixture.h"

#include <regex>

namespace zt {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Run : public test::RunFixture {};

TEST_F(Run, LogsItsStartAndItsEnd) {
    m_app.m_lpCmdLine = L"\"c:\\Program Files\\Z.exe\" -IN 100 %s \x0416";
    Execute({L"-IN", Exchange(L"P.zip"), L"-LOG", LogPath()});
    const std::regex lines(
        "ZeltorAuthorInvisible started at ([01]\\d|2[0-3]):[0-5]\\d:[0-5]\\d with command line: "
        "' -IN 100 %s \\?'\r\n"
        "SUCCESS: ZeltorAuthorInvisible finished successfully at "
        "([01]\\d|2[0-3]):[0-5]\\d:[0-5]\\d\r\n");
    EXPECT_TRUE(std::regex_match(LogText(), lines)) << LogText();
    EXPECT_EQ(m_output, "");
}

TEST_F(Run, LogsACommandLineOf30000Characters) {
    const std::wstring line = L"Z.exe -META Title " + std::wstring(30000, L'x');
    m_app.m_lpCmdLine = line.c_str();
    Execute({L"-IN", Exchange(L"P.zip"), L"-LOG", LogPath()});
    EXPECT_THAT(LogText(),
                testing::HasSubstr("' -META Title " + std::string(30000, 'x') + "'\r\n"));
}

TEST_F(Run, MakesTheLogsFolderAndEmptiesTheLog) {
    std::filesystem::create_directory(m_folder.Path(L"log"));
    test::WriteBytes(LogPath(), "earlier");
    Execute({L"-IN", Exchange(L"P.zip"), L"-LOG", LogPath()});
    EXPECT_EQ(LogText().find("ZeltorAuthorInvisible started"), 0U);

    const std::wstring other = m_folder.Path(L"new\\a\\b\\run.log");
    Execute({L"-IN", Exchange(L"P.zip"), L"-LOG", other});
    EXPECT_EQ(test::BytesOf(other).find("ZeltorAuthorInvisible started"), 0U);
}

TEST_F(Run, KeepsNeitherLogNorStatusFilesWithoutBeingAsked) {
    for (const auto& more : std::vector<std::vector<std::wstring>>{{}, {L"-M", L""}}) {
        std::vector<std::wstring> arguments = {L"-IN", Exchange(L"P.zip")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        Execute(arguments);
        EXPECT_EQ(m_app.m_strStatusBase, L"");
        EXPECT_FALSE(test::Exists(m_folder.Path(L"log")));
        EXPECT_TRUE(std::filesystem::is_empty(ExchangeFolder()));
    }
}

TEST_F(Run, TakesTheFolderOfTheProjectFileAsExchangeFolder) {
    for (const auto& arguments : std::vector<std::vector<std::wstring>>{
             {L"-IN", Exchange(L"P.zip"), L"-EXCHANGEPATH", m_folder.Path(L"other")},
             {L"-EXCHANGEPATH", m_folder.Path(L"other"), L"/in", Exchange(L"P.zip")}}) {
        Execute(arguments);
        EXPECT_EQ(m_app.m_strExchangePath, ExchangeFolder());
        EXPECT_TRUE(std::filesystem::is_directory(ExchangeFolder()));
        EXPECT_FALSE(test::Exists(m_folder.Path(L"other")));
    }
}

TEST_F(Run, TakesTheGivenExchangeFolderWithoutOneTrailingBackslash) {
    m_registry.SetText(L"Software\\Morvenit\\CMSTC", L"ExchangePath", m_folder.Path(L"registry"));
    Execute({L"-IN", L"P.zip", L"-EXCHANGEPATH", ExchangeFolder() + L"\\"});
    EXPECT_EQ(m_app.m_strExchangePath, ExchangeFolder());
    EXPECT_FALSE(test::Exists(m_folder.Path(L"registry")));
}

TEST_F(Run, TakesTheRegistrysExchangeFolderWithoutAnother) {
    m_registry.SetText(L"Software\\Morvenit\\CMSTC", L"ExchangePath", ExchangeFolder() + L"\\");
    Execute({L"-IN", L"P.zip"});
    EXPECT_EQ(m_app.m_strExchangePath, ExchangeFolder());
    EXPECT_TRUE(std::filesystem::is_directory(ExchangeFolder()));
}

TEST_F(Run, AcceptsAFileInPlaceOfTheExchangeFolder) {
    test::WriteBytes(ExchangeFolder(), "file");
    Execute({L"-IN", Exchange(L"P.zip"), L"-LOG", LogPath()});
    EXPECT_THAT(LogText(), testing::HasSubstr("SUCCESS: "));
    EXPECT_EQ(test::BytesOf(ExchangeFolder()), "file");
}

TEST_F(Run, ShowsByStatusFilesThatItGoesOnAndHasSucceeded) {
    std::filesystem::create_directory(ExchangeFolder());
    test::WriteBytes(Exchange(L"job42_ERROR"), "earlier");
    test::WriteBytes(Exchange(L"job42_DONE"), "");
    m_whileProcessing = [this] {
        EXPECT_EQ(m_app.m_strStatusBase, Exchange(L"job42"));
        EXPECT_EQ(test::BytesOf(Exchange(L"job42_ERROR")), "");
        EXPECT_FALSE(test::Exists(Exchange(L"job42_DONE")));
    };
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job42", L"-PUB"});
    EXPECT_THAT(m_kernelCalls, testing::Contains(testing::StartsWith("KernelAdmin.PutClientName")));
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job42"});
    EXPECT_FALSE(test::Exists(Exchange(L"job42_ERROR")));
    EXPECT_EQ(test::BytesOf(Exchange(L"job42_DONE")), "");
}

TEST_F(Run, NotifiesTheClientOfSuccessAfterEverythingElse) {
    test::FakeClient client;
    client.Serve(ExchangeFolder());
    client.whileReceiving = [this](const std::string&) {
        EXPECT_THAT(LogText(), testing::HasSubstr("SUCCESS: "));
        EXPECT_TRUE(test::Exists(Exchange(L"job_DONE")));
    };
    Execute({L"-IN", Exchange(L"P.rev2.zip"), L"-M", L"job", L"-LOG", LogPath(), L"-S"});
    EXPECT_THAT(client.Messages(), ElementsAre("STATUS|SUCCESS", "SAVE_AND_CLOSE|P.rev2.kvp"));
}

TEST_F(Run, NotifiesNobodyWithoutBeingAsked) {
    test::FakeClient client;
    client.Serve(ExchangeFolder());
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job"});
    EXPECT_THAT(client.Messages(), IsEmpty());
}

TEST_F(Run, SucceedsWithoutProjectWork) {
    Execute({L"-IN", Exchange(L"P.zip"), L"-UPDATEDOC", L"-NR", L"-S", L"-LOG", LogPath()});
    EXPECT_THAT(m_kernelCalls, IsEmpty());
    EXPECT_THAT(LogText(), testing::HasSubstr("SUCCESS: "));
}

TEST_F(Run, LeavesTheFlagsToTheRestOfTheProgram) {
    Execute({L"-IN", Exchange(L"P.zip"), L"-KVB"});
    EXPECT_TRUE(m_app.m_bPublish && m_app.m_bPackage);
    EXPECT_FALSE(m_app.m_bUpdateDoc || m_app.m_bNewRevision || m_app.m_bNotify);
    Execute({L"-IN", Exchange(L"P.zip"), L"-PUB", L"-UPDATEDOC", L"-NR", L"-S"});
    EXPECT_TRUE(m_app.m_bPublish && m_app.m_bUpdateDoc && m_app.m_bNewRevision && m_app.m_bNotify);
    EXPECT_FALSE(m_app.m_bPackage);
}

TEST_F(Run, GoesOnWithoutAProjectNameBehindTheFolder) {
    test::FakeClient client;
    client.Serve(ExchangeFolder());
    Execute({L"-IN", ExchangeFolder() + L"\\", L"-S"});
    EXPECT_THAT(client.Messages(), ElementsAre("STATUS|SUCCESS", "SAVE_AND_CLOSE|.kvp"));
}

} // namespace
} // namespace zt
