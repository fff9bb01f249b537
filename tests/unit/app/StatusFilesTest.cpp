#include "app/Outcome.h"

#include "tests/support/Files.h"
#include "tests/support/Isolation.h"

namespace zt {
namespace {

class StatusFiles : public testing::Test {
  protected:
    std::wstring Base() const { return m_folder.Path(L"job42"); }
    std::wstring ErrorPath() const { return m_folder.Path(L"job42_ERROR"); }
    std::wstring DonePath() const { return m_folder.Path(L"job42_DONE"); }
    std::string Error() const { return test::BytesOf(ErrorPath()); }
    std::string Done() const { return test::BytesOf(DonePath()); }

    test::TemporaryFolder m_folder;
};

TEST_F(StatusFiles, ShowARunningJobByAnEmptyErrorFile) {
    MarkRunning(Base());
    EXPECT_EQ(Error(), "");
    EXPECT_EQ(Done(), "(no file)");
}

TEST_F(StatusFiles, OfAnEarlierRunAreEmptiedAndDeleted) {
    test::WriteBytes(ErrorPath(), "earlier");
    test::WriteBytes(DonePath(), "");
    MarkRunning(Base());
    EXPECT_EQ(Error(), "");
    EXPECT_EQ(Done(), "(no file)");
}

TEST_F(StatusFiles, StayAsTheyAreWhereTheFileSystemRefuses) {
    std::filesystem::create_directory(ErrorPath());
    std::filesystem::create_directory(DonePath());
    MarkRunning(Base());
    AppendFailure(Base(), L"lost");
    EXPECT_TRUE(std::filesystem::is_directory(ErrorPath()));
    EXPECT_TRUE(std::filesystem::is_directory(DonePath()));
}

TEST_F(StatusFiles, HoldTheTextOfAFailure) {
    MarkRunning(Base());
    AppendFailure(Base(), L"one");
    AppendFailure(Base(), L"two\n");
    EXPECT_EQ(Error(), "onetwo\r\n");
}

TEST_F(StatusFiles, ShowSuccessByTheDoneFileAlone) {
    MarkRunning(Base());
    MarkSucceeded(Base());
    EXPECT_EQ(Error(), "(no file)");
    EXPECT_EQ(Done(), "");
}

TEST_F(StatusFiles, AreNotReplacedBySuccess) {
    MarkRunning(Base());
    test::WriteBytes(DonePath(), "another's");
    MarkSucceeded(Base());
    EXPECT_EQ(Error(), "");
    EXPECT_EQ(Done(), "another's");
}

TEST_F(StatusFiles, NeedNoErrorFileToSucceed) {
    MarkSucceeded(Base());
    EXPECT_EQ(Done(), "(no file)");
}

} // namespace
} // namespace zt
