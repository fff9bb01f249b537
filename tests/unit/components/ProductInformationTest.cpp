#include "components/Installation.h"

#include "tests/support/Fixtures.h"
#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

namespace zt::test {
namespace {

constexpr wchar_t Key[] = L"Software\\Morvenit\\ZeltorCompiler";
constexpr wchar_t ValueName[] = L"InstallPathLite";

class Product : public testing::Test {
  protected:
    // "FileVersion" as it stands in the executable that the stored text leads to.
    std::wstring FileVersionAfterStoring(const std::wstring& text) {
        m_machine.SetText(Key, ValueName, text);
        m_product.SetProduct(FactsOf(SpecificationClass::Proc));
        return m_product.GetVersionString(L"FileVersion");
    }
    std::wstring FileVersionAfterStoringBytes(DWORD type, const void* data, std::size_t size) {
        m_machine.Set(Key, ValueName, type, data, size);
        m_product.SetProduct(FactsOf(SpecificationClass::Proc));
        return m_product.GetVersionString(L"FileVersion");
    }

    const std::wstring m_executable = FixturePath(L"versioned-040904b0.exe");
    RegistryOverride m_machine{HKEY_LOCAL_MACHINE};
    ProductInformation m_product;
};

TEST_F(Product, HasTheVersionStringsOfTheInstalledExecutable) {
    EXPECT_EQ(FileVersionAfterStoring(m_executable), L"1, 4, 0, 12");
    EXPECT_EQ(m_product.GetVersionString(L"ProductVersion"), L"1.4 R2");
    EXPECT_EQ(m_product.GetVersionString(L"ProductName"), L"Zeltor \x00C4uthor");
    EXPECT_EQ(m_product.GetVersionString(L"Comments"), L"");
}

TEST_F(Product, HasItsFileVersionInDottedForm) {
    FileVersionAfterStoring(m_executable);
    EXPECT_EQ(m_product.GetFileVersion(), L"1.4.0.12");
}

TEST_F(Product, HasNoVersionStringThatTheResourceLacks) {
    FileVersionAfterStoring(m_executable);
    EXPECT_EQ(m_product.GetVersionString(L"LegalCopyright"), L"");
    EXPECT_EQ(m_product.GetVersionString(L""), L"");
}

TEST_F(Product, ReadsOnlyTheVersionStringsInUsEnglishAndUnicode) {
    EXPECT_EQ(FileVersionAfterStoring(FixturePath(L"versioned-040704b0.exe")), L"");
    EXPECT_EQ(m_product.GetFileVersion(), L"");
}

TEST_F(Product, KeepsOnlyTheQuotedPathOfACommand) {
    EXPECT_EQ(FileVersionAfterStoring(L"\"" + m_executable + L"\" /lite /x"), L"1, 4, 0, 12");
    EXPECT_EQ(FileVersionAfterStoring(L"\"" + m_executable + L"\""), L"1, 4, 0, 12");
}

TEST_F(Product, TakesATextWithoutQuotesAsThePathWithItsArguments) {
    EXPECT_EQ(FileVersionAfterStoring(m_executable + L" /lite"), L"");
}

TEST_F(Product, HasNoVersionWithoutAnInstalledExecutable) {
    m_product.SetProduct(FactsOf(SpecificationClass::Proc));
    EXPECT_EQ(m_product.GetVersionString(L"FileVersion"), L"");
    EXPECT_EQ(m_product.GetFileVersion(), L"");
    for (const wchar_t* useless : {L"", L"\"", L"\"\"", L"C:\\no\\such.exe", L"C:\\windows", L"\\"})
        EXPECT_EQ(FileVersionAfterStoring(useless), L"") << testing::PrintToString(useless);
    EXPECT_EQ(FileVersionAfterStoring(L"\"" + m_executable), L"");
    EXPECT_EQ(FileVersionAfterStoring(L"C:\\" + std::wstring(100'000, L'x')), L"");
}

TEST_F(Product, HasNoVersionBeforeItIsSet) {
    m_machine.SetText(Key, ValueName, m_executable);
    EXPECT_EQ(m_product.GetVersionString(L"FileVersion"), L"");
}

TEST_F(Product, HasNoVersionWhenTheExecutableHasNoVersionResource) {
    const TemporaryFolder folder;
    WriteFile(folder.Path(L"plain.exe"), "MZ, but not really a program");
    EXPECT_EQ(FileVersionAfterStoring(folder.Path(L"plain.exe")), L"");
    EXPECT_EQ(FileVersionAfterStoring(FixturePath(L"handler-plain.dll")), L"");
}

TEST_F(Product, AcceptsAPathOfTextTypeOnly) {
    const std::size_t size = (m_executable.size() + 1) * sizeof(wchar_t);
    EXPECT_EQ(FileVersionAfterStoringBytes(REG_SZ, m_executable.c_str(), size), L"1, 4, 0, 12");
    for (const DWORD type : {REG_EXPAND_SZ, REG_MULTI_SZ, REG_BINARY, REG_NONE})
        EXPECT_EQ(FileVersionAfterStoringBytes(type, m_executable.c_str(), size), L"") << type;
    const DWORD number = 1;
    EXPECT_EQ(FileVersionAfterStoringBytes(REG_DWORD, &number, sizeof(number)), L"");
}

TEST_F(Product, ReadsAPathWithoutTerminatorOrWithAnOddByte) {
    // Something follows: the registry completes a text whose terminator was only not counted.
    const std::wstring stored = m_executable + L"X";
    const std::size_t size = m_executable.size() * sizeof(wchar_t);
    EXPECT_EQ(FileVersionAfterStoringBytes(REG_SZ, stored.c_str(), size), L"1, 4, 0, 12");
    EXPECT_EQ(FileVersionAfterStoringBytes(REG_SZ, stored.c_str(), size + 1), L"1, 4, 0, 12");
    EXPECT_EQ(FileVersionAfterStoringBytes(REG_SZ, nullptr, 0), L"");
    EXPECT_EQ(FileVersionAfterStoringBytes(REG_SZ, "x", 1), L"");
}

TEST_F(Product, ForgetsTheExecutableThatIsNoLongerInTheRegistry) {
    ASSERT_EQ(FileVersionAfterStoring(m_executable), L"1, 4, 0, 12");
    EXPECT_EQ(FileVersionAfterStoring(L""), L"");
}

TEST_F(Product, NamesItsRegistryKey) {
    m_product.SetProduct(FactsOf(SpecificationClass::Proc));
    EXPECT_EQ(m_product.GetProductRegistryKey(false), L"Software\\Morvenit\\ZeltorManual\\1.4");
    EXPECT_EQ(m_product.GetProductRegistryKey(true), L"Software\\Morvenit\\ZeltorManual");
    m_product.SetProduct(FactsOf(SpecificationClass::Text));
    EXPECT_EQ(m_product.GetProductRegistryKey(false), L"Software\\Morvenit\\ZeltorText\\1.0");
}

} // namespace
} // namespace zt::test
