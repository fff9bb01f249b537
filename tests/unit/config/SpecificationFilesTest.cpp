#include "config/SpecificationFiles.h"

#include "components/Values.h"
#include "tests/support/SpecificationFixture.h"

namespace zt::test {
namespace {

class SpecificationFiles : public SpecificationTest {
  protected:
    SpecificationFiles() { m_folder = SpecPath(); }
    _bstr_t Resolve(const wchar_t* fileName) {
        return ResolveSpecificationFile(m_kernel.Get(), OrEmpty(m_language), fileName);
    }
};

TEST_F(SpecificationFiles, LieInTheFolderWithoutALanguage) {
    EXPECT_EQ(std::wstring(Resolve(L"Types.xml")), SpecPath(L"Types.xml"));
}

TEST_F(SpecificationFiles, LieInTheLanguageSubfolderWhereTheyAreThere) {
    WriteFile(SpecPath(L"de\\Types.xml"), "");
    m_language = L"de";
    EXPECT_EQ(std::wstring(Resolve(L"Types.xml")), SpecPath(L"de\\Types.xml"));
    EXPECT_EQ(std::wstring(Resolve(L"Metadata.xml")), SpecPath(L"Metadata.xml"));
    // A folder of that name counts as well.
    std::filesystem::create_directory(SpecPath(L"de\\Metadata.xml"));
    EXPECT_EQ(std::wstring(Resolve(L"Metadata.xml")), SpecPath(L"de\\Metadata.xml"));
}

TEST_F(SpecificationFiles, WithWildcardsNeverLieInTheLanguageSubfolder) {
    WriteFile(SpecPath(L"de\\Types.xml"), "");
    m_language = L"de";
    EXPECT_EQ(std::wstring(Resolve(L"*.xml")), SpecPath(L"*.xml"));
    EXPECT_EQ(std::wstring(Resolve(L"Type?.xml")), SpecPath(L"Type?.xml"));
}

TEST_F(SpecificationFiles, OfAHostileLanguageLieInTheFolder) {
    for (const std::wstring& language :
         {std::wstring(L"?"), std::wstring(L"\""), std::wstring(L"<|>"), std::wstring(300, L'x'),
          std::wstring(30'000, L'x')}) {
        m_language = language.c_str();
        EXPECT_EQ(std::wstring(Resolve(L"Types.xml")), SpecPath(L"Types.xml"));
    }
}

TEST_F(SpecificationFiles, AreAskedOfTheKernelEachTime) {
    Resolve(L"Types.xml");
    m_folder = L"C:\\elsewhere";
    EXPECT_STREQ(Resolve(L"Types.xml"), L"C:\\elsewhere\\Types.xml");
    EXPECT_THAT(m_calls, testing::ElementsAre("KernelAdmin.GetSpecificationFolder()",
                                              "KernelAdmin.GetSpecificationFolder()"));
}

TEST(ConfigurationElement, IsMissingWithAFailureCode) {
    const TemporaryFolder folder;
    WriteFile(folder.Path(L"a.xml"), "<other/>");
    XmlDocument document;
    ASSERT_EQ(document.Create(), S_OK);
    ASSERT_TRUE(document.Load(folder.Path(L"a.xml").c_str()));
    XmlElement element;
    EXPECT_EQ(SelectConfigurationElement(L"de", document, element), E_FAIL);
    EXPECT_FALSE(element);
}

TEST(ConfigurationElement, IsFoundByLanguageAnywhere) {
    const TemporaryFolder folder;
    WriteFile(folder.Path(L"a.xml"),
              "<other><configuration lang=\"de\">here</configuration></other>");
    XmlDocument document;
    ASSERT_EQ(document.Create(), S_OK);
    ASSERT_TRUE(document.Load(folder.Path(L"a.xml").c_str()));
    XmlElement element;
    EXPECT_EQ(SelectConfigurationElement(L"de", document, element), S_OK);
    EXPECT_STREQ(element.Text(), L"here");
}

class SelfRegistration : public testing::Test {
  protected:
    SelfRegistration() { SetEnvironmentVariableW(L"ZT_TEST_REGISTERED", nullptr); }
    ~SelfRegistration() override { SetEnvironmentVariableW(L"ZT_TEST_REGISTERED", nullptr); }

    static std::wstring Asked() {
        wchar_t text[8192] = {};
        GetEnvironmentVariableW(L"ZT_TEST_REGISTERED", text, 8192);
        return text;
    }
};

TEST_F(SelfRegistration, SucceedsAndDoesNotKeepTheLibrary) {
    const std::wstring path = FixturePath(L"handler-good.dll");
    EXPECT_TRUE(SelfRegisterLibrary(path.c_str()));
    EXPECT_EQ(Asked(), path + L";");
    EXPECT_EQ(GetModuleHandleW(path.c_str()), nullptr);
}

TEST_F(SelfRegistration, FailsWithTheLibrarysRegistration) {
    const std::wstring path = FixturePath(L"handler-refusing.dll");
    EXPECT_FALSE(SelfRegisterLibrary(path.c_str()));
    EXPECT_EQ(Asked(), path + L";");
    EXPECT_EQ(GetModuleHandleW(path.c_str()), nullptr);
}

TEST_F(SelfRegistration, FailsForALibraryThatHasNone) {
    const std::wstring path = FixturePath(L"handler-plain.dll");
    EXPECT_FALSE(SelfRegisterLibrary(path.c_str()));
    EXPECT_EQ(GetModuleHandleW(path.c_str()), nullptr);
}

TEST_F(SelfRegistration, FailsForWhatIsNoLibrary) {
    const TemporaryFolder folder;
    WriteFile(folder.Path(L"empty.dll"), "");
    WriteFile(folder.Path(L"text.dll"), "MZ and nothing else");
    for (const std::wstring& path :
         {folder.Path(L"missing.dll"), folder.Path(L"empty.dll"), folder.Path(L"text.dll"),
          folder.Path(), std::wstring(), L"C:\\" + std::wstring(300, L'x') + L".dll"})
        EXPECT_FALSE(SelfRegisterLibrary(path.c_str())) << testing::PrintToString(path);
}

TEST(ConfigurationElement, TakesThePlaceOfTheElementBefore) {
    const TemporaryFolder folder;
    WriteFile(folder.Path(L"old.xml"), "<configuration>old</configuration>");
    WriteFile(folder.Path(L"new.xml"), "<other/>");
    XmlDocument old;
    XmlDocument document;
    XmlElement element;
    ASSERT_EQ(old.Create(), S_OK);
    ASSERT_TRUE(old.Load(folder.Path(L"old.xml").c_str()));
    ASSERT_EQ(SelectConfigurationElement(L"", old, element), S_OK);
    ASSERT_EQ(document.Create(), S_OK);
    ASSERT_TRUE(document.Load(folder.Path(L"new.xml").c_str()));
    EXPECT_EQ(SelectConfigurationElement(L"", document, element), E_FAIL);
    EXPECT_FALSE(element);
}

} // namespace
} // namespace zt::test
