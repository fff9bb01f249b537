#include "support/Output.h"

#include "tests/support/Isolation.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cstdio>
#include <string>

namespace zt {
namespace {

std::string Captured(const wchar_t* format, const wchar_t* value) {
    testing::internal::CaptureStdout();
    ConsolePrint(format, value);
    return testing::internal::GetCapturedStdout();
}

TEST(ConsoleText, IsTheFormattedOne) {
    EXPECT_EQ(Captured(L"%s\n", L"100 % of it, %s too"), "100 % of it, %s too\n");
}

TEST(ConsoleText, KeepsItsEndBehindCharactersThatHaveNoForm) {
    EXPECT_EQ(Captured(L"<%s>\n", L"\x0416 \xE4 \xD83D\xDE00"), "<? \xE4 ?>\n");
}

TEST(ConsoleText, HasNoLimitOfLength) {
    const std::wstring value(30000, L'x');
    EXPECT_EQ(Captured(L"%s\n", value.c_str()), std::string(30000, 'x') + "\n");
}

TEST(ConsoleText, IsWrittenAtOnce) {
    const test::TemporaryFolder folder;
    std::fflush(stdout);
    const int output = _dup(1);
    const int file =
        _wopen(folder.Path(L"out").c_str(), _O_CREAT | _O_WRONLY, _S_IREAD | _S_IWRITE);
    _dup2(file, 1);
    ConsolePrint(L"%s\n", L"text");
    const long written = _filelength(1);
    std::fflush(stdout);
    _dup2(output, 1);
    _close(output);
    _close(file);
    EXPECT_GE(written, 5);
}

} // namespace
} // namespace zt
