// What the entry function is composed of.
#include "app/Program.h"

#include "tests/support/RunFixture.h"

#include <new>

namespace zt {
namespace {

class Program : public test::RunFixture {
  protected:
    int RunWith(bool started, std::vector<std::wstring> arguments) {
        std::vector<wchar_t*> pointers;
        for (std::wstring& argument : arguments)
            pointers.push_back(argument.data());
        testing::internal::CaptureStdout();
        const int code =
            RunProgram(started, m_app, static_cast<int>(pointers.size()), pointers.data());
        m_output = testing::internal::GetCapturedStdout();
        return code;
    }
};

TEST_F(Program, EndsWith1WhenTheFrameworkDoesNotStart) {
    EXPECT_EQ(RunWith(false, {L"Z.exe", L"-IN", Exchange(L"P.zip"), L"-M", L"job"}), 1);
    EXPECT_EQ(m_output, "Fatal Error: MFC initialization failed\n");
    EXPECT_FALSE(test::Exists(ExchangeFolder()));
}

TEST_F(Program, EndsWith0AfterASuccess) {
    EXPECT_EQ(RunWith(true, {L"Z.exe", L"-IN", Exchange(L"P.zip"), L"-M", L"job"}), 0);
    EXPECT_TRUE(test::Exists(Exchange(L"job_DONE")));
}

TEST_F(Program, EndsWith0AfterAFailure) {
    EXPECT_EQ(RunWith(true, {L"Z.exe", L"-IN", Exchange(L"P.zip"), L"-PUB"}), 0);
    EXPECT_EQ(m_output, "Couldn't create KVAdmin\n");
}

class AbnormalEnd : public Program {
  protected:
    static void SetUpTestSuite() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    // Performs a run whose pipeline raises the exception, as the entry function does.
    void RunInto(const std::function<void()>& raise) {
        EndAbnormallyOnUnknownExceptions();
        m_whileProcessing = raise;
        std::vector<std::wstring> arguments = {L"Z.exe", L"-IN", Exchange(L"P.zip"),
                                               L"-M",    L"job", L"-PUB"};
        std::vector<wchar_t*> pointers;
        for (std::wstring& argument : arguments)
            pointers.push_back(argument.data());
        RunProgram(true, m_app, static_cast<int>(pointers.size()), pointers.data());
    }
};

TEST_F(AbnormalEnd, FollowsAnExceptionOfUnknownTypeAtOnceAndSilently) {
    EXPECT_EXIT(RunInto([] { throw std::bad_alloc(); }), testing::ExitedWithCode(3), "^$");
    EXPECT_EXIT(RunInto([] { throw 5; }), testing::ExitedWithCode(3), "^$");
    EXPECT_EXIT(RunInto([] { AfxThrowMemoryException(); }), testing::ExitedWithCode(3), "^$");
}

} // namespace
} // namespace zt
