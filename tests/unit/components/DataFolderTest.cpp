#include "components/Installation.h"

#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace zt::test {
namespace {

class DataFolder : public testing::Test {
  protected:
    static std::wstring CommonApplicationData() { return _wgetenv(L"ProgramData"); }

    void Store(const std::wstring& text, DWORD type = REG_SZ) {
        m_machine.SetText(L"Software\\Morvenit", L"ZeltorDataFolder", text, type);
    }
    void StoreBytes(const void* data, std::size_t size, DWORD type = REG_SZ) {
        m_machine.Set(L"Software\\Morvenit", L"ZeltorDataFolder", type, data, size);
    }

    RegistryOverride m_machine{HKEY_LOCAL_MACHINE};
};

TEST_F(DataFolder, IsTheRegistrys) {
    Store(L"D:\\Zeltor Data");
    EXPECT_EQ(GetDataFolder(), L"D:\\Zeltor Data");
}

TEST_F(DataFolder, IsTakenAsStoredWithoutExpansion) {
    Store(L"%SystemRoot%\\Data\\", REG_EXPAND_SZ);
    EXPECT_EQ(GetDataFolder(), L"%SystemRoot%\\Data\\");
}

TEST_F(DataFolder, IsEmptyWhenTheRegistrySaysSo) {
    Store(L"");
    EXPECT_EQ(GetDataFolder(), L"");
    StoreBytes(nullptr, 0);
    EXPECT_EQ(GetDataFolder(), L"");
    StoreBytes(nullptr, 0, REG_EXPAND_SZ);
    EXPECT_EQ(GetDataFolder(), L"");
}

TEST_F(DataFolder, IsTheCommonApplicationDataFolderWithoutAKey) {
    ASSERT_FALSE(CommonApplicationData().empty());
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
}

TEST_F(DataFolder, IsTheCommonApplicationDataFolderWithoutAValue) {
    m_machine.SetText(L"Software\\Morvenit", L"Another", L"D:\\Data");
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
}

TEST_F(DataFolder, IsTheCommonApplicationDataFolderForAValueOfAnotherType) {
    const wchar_t text[] = L"D:\\Data";
    const DWORD number = 0;
    for (const DWORD type : {REG_BINARY, REG_MULTI_SZ, REG_NONE, REG_LINK}) {
        StoreBytes(text, sizeof(text), type);
        EXPECT_EQ(GetDataFolder(), CommonApplicationData()) << type;
    }
    StoreBytes(&number, sizeof(number), REG_DWORD);
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
    StoreBytes(nullptr, 0, REG_BINARY);
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
}

TEST_F(DataFolder, MayBeAsLongAsAPath) {
    const std::wstring longest = L"D:\\" + std::wstring(256, L'x'); // 259 characters and the zero
    Store(longest);
    EXPECT_EQ(GetDataFolder(), longest);
}

TEST_F(DataFolder, IsTheCommonApplicationDataFolderForAValueThatIsTooLong) {
    Store(L"D:\\" + std::wstring(257, L'x'));
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
    Store(L"D:\\" + std::wstring(297, L'x'));
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
    Store(std::wstring(100'000, L'x'));
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
}

TEST_F(DataFolder, IsTheCommonApplicationDataFolderForAValueWithoutTerminator) {
    // Something follows: the registry completes a text whose terminator was only not counted.
    StoreBytes(L"D:\\DataX", 7 * sizeof(wchar_t));
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
    // 260 characters fill the whole buffer.
    StoreBytes(std::wstring(261, L'x').data(), 260 * sizeof(wchar_t));
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
}

TEST_F(DataFolder, IsTheCommonApplicationDataFolderForAnOddNumberOfBytes) {
    const char odd[] = "D\0:\0\0\0"; // the terminator and half a character
    StoreBytes(odd, 7);
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
    StoreBytes("x", 1);
    EXPECT_EQ(GetDataFolder(), CommonApplicationData());
}

TEST_F(DataFolder, EndsAtTheFirstZero) {
    StoreBytes(L"D:\\Data\0More", 13 * sizeof(wchar_t));
    EXPECT_EQ(GetDataFolder(), L"D:\\Data");
}

} // namespace
} // namespace zt::test
