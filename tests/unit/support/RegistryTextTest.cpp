#include "support/Registry.h"

#include "tests/support/Isolation.h"

namespace zt {
namespace {

class RegistryText : public testing::Test {
  protected:
    std::wstring Read() { return ReadRegistryText(HKEY_LOCAL_MACHINE, L"Software\\Some", L"Name"); }
    void Write(DWORD type, const void* data, std::size_t size) {
        m_registry.Set(L"Software\\Some", L"Name", type, data, size);
    }

    test::RegistryOverride m_registry{HKEY_LOCAL_MACHINE};
};

TEST_F(RegistryText, IsTheStoredText) {
    m_registry.SetText(L"Software\\Some", L"Name", L"d:\\exchange");
    EXPECT_EQ(Read(), L"d:\\exchange");
}

TEST_F(RegistryText, IsEmptyWithoutTheKey) {
    EXPECT_EQ(Read(), L"");
}

TEST_F(RegistryText, IsEmptyWithoutTheValue) {
    m_registry.SetText(L"Software\\Some", L"Another name", L"d:\\exchange");
    EXPECT_EQ(Read(), L"");
}

TEST_F(RegistryText, IsEmptyForAnEmptyValue) {
    Write(REG_SZ, L"", 0);
    EXPECT_EQ(Read(), L"");
}

TEST_F(RegistryText, IsEmptyForEveryOtherType) {
    for (const DWORD type : {REG_EXPAND_SZ, REG_MULTI_SZ, REG_BINARY, REG_DWORD, REG_NONE}) {
        Write(type, L"d\0", 4);
        EXPECT_EQ(Read(), L"") << "type " << type;
    }
}

TEST_F(RegistryText, NeedsNoTerminator) {
    Write(REG_SZ, L"d:\\ex", 10);
    EXPECT_EQ(Read(), L"d:\\ex");
}

TEST_F(RegistryText, EndsAtTheFirstZero) {
    Write(REG_SZ, L"d:\\ex\0tra", 20);
    EXPECT_EQ(Read(), L"d:\\ex");
}

TEST_F(RegistryText, LeavesALastHalfCharacterOut) {
    Write(REG_SZ, L"d:\\exit", 11);
    EXPECT_EQ(Read(), L"d:\\ex");
}

TEST_F(RegistryText, HasNoLimitOfLength) {
    const std::wstring text = L"d:\\" + std::wstring(40000, L'x');
    m_registry.SetText(L"Software\\Some", L"Name", text);
    EXPECT_EQ(Read(), text);
}

} // namespace
} // namespace zt
