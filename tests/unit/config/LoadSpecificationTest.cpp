// Which specification is found and whether it may be used.
#include "tests/support/SpecificationFixture.h"

namespace zt::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LoadSpecificationTest : public SpecificationTest {
  protected:
    void DescribeClass(const std::string& word, const std::string& content = {}) {
        Describe("<configuration class=\"" + word + "\">" + content + "</configuration>");
    }
};

// ---- finding and reading the description ----

TEST_F(LoadSpecificationTest, NeedsTheDescriptionFile) {
    EXPECT_FALSE(Load());
    EXPECT_THAT(AllCalls(),
                ElementsAre("LogError(\"Specification cfg-file does not exist: SPEC.cfg\")"));
}

TEST_F(LoadSpecificationTest, NeedsTheSpecificationFolder) {
    DescribeClass("TEXT");
    std::filesystem::remove(SpecPath());
    EXPECT_FALSE(Load());
    EXPECT_THAT(AllCalls(), ElementsAre("LogError(\"Specification S is not valid.\n"
                                        "Data folder does not exist:\n\nSPEC\")"));
}

TEST_F(LoadSpecificationTest, MissesTheDescriptionFileBeforeTheFolder) {
    std::filesystem::remove(SpecPath());
    EXPECT_FALSE(Load());
    EXPECT_THAT(AllCalls(),
                ElementsAre("LogError(\"Specification cfg-file does not exist: SPEC.cfg\")"));
}

TEST_F(LoadSpecificationTest, LooksAtTheRootWhenTheDataFolderIsEmpty) {
    m_machine.SetText(L"Software\\Morvenit", L"ZeltorDataFolder", L"");
    EXPECT_FALSE(Load(L"1", L"no \"such\" %s S"));
    EXPECT_THAT(AllCalls(), ElementsAre("LogError(\"Specification cfg-file does not exist: "
                                        "\\Morvenit\\KVProductFamily\\IPCCFG\\"
                                        "no \"such\" %s S.cfg\")"));
}

TEST_F(LoadSpecificationTest, RefusesADescriptionThatIsNoXml) {
    const std::string bad[] = {"",
                               " ",
                               "plain text",
                               "<configuration",
                               "<configuration class=\"TEXT\">",
                               "<configuration class=\"TEXT\"></Configuration>",
                               "<configuration class=TEXT/>",
                               "<configuration/><configuration/>",
                               "<configuration class=\"TEXT\"/>trailing",
                               std::string("\0\0\0\0", 4),
                               "\xFF\xFE\xFF",
                               "PK\x03\x04"};
    for (const std::string& bytes : bad) {
        m_calls.clear();
        Describe(bytes);
        EXPECT_FALSE(Load()) << bytes;
        EXPECT_THAT(AllCalls(),
                    ElementsAre("LogError(\"Invalid specification cfg-file format: SPEC.cfg\")"))
            << bytes;
    }
}

TEST_F(LoadSpecificationTest, RefusesAFolderInPlaceOfTheDescription) {
    std::filesystem::create_directory(SpecPath() + L".cfg");
    EXPECT_FALSE(Load());
    EXPECT_THAT(AllCalls(),
                ElementsAre("LogError(\"Invalid specification cfg-file format: SPEC.cfg\")"));
}

TEST_F(LoadSpecificationTest, RefusesADescriptionWithoutAConfiguration) {
    // Only the root counts when no language is asked for.
    for (const char* bytes : {"<specification class=\"TEXT\"/>", "<Configuration class=\"TEXT\"/>",
                              "<all><configuration lang=\"en\" class=\"TEXT\"/></all>"}) {
        m_calls.clear();
        Describe(bytes);
        EXPECT_FALSE(Load()) << bytes;
        EXPECT_THAT(AllCalls(),
                    ElementsAre("LogError(\"Invalid specification cfg-file format: SPEC.cfg\")"));
    }
}

TEST_F(LoadSpecificationTest, AcceptsAFileAsTheSpecificationFolder) {
    std::filesystem::remove(SpecPath());
    WriteFile(SpecPath(), "");
    DescribeClass("TEXT");
    EXPECT_TRUE(Load());
}

TEST_F(LoadSpecificationTest, ReadsALargeDescription) {
    std::string filler;
    for (int i = 0; i < 60'000; ++i)
        filler += "<entry number=\"" + std::to_string(i) + "\">some text of no interest</entry>\n";
    DescribeClass("TEXT", filler + "<version>7</version>");
    EXPECT_TRUE(Load(L"7"));
    EXPECT_THAT(Failures(), IsEmpty());
}

// ---- version ----

TEST_F(LoadSpecificationTest, IsNotDoneWithAnOlderSpecificationThanTheProjectRequires) {
    DescribeClass("TEXT", "<version>9</version>");
    EXPECT_FALSE(Load(L"10"));
    EXPECT_THAT(AllCalls(),
                ElementsAre("LogError(\"Project requires specification version 10. Current version "
                            "is 9. Please install the required version of specification.\")"));
}

TEST_F(LoadSpecificationTest, QuotesTheVersionsAsTheyStand) {
    DescribeClass("TEXT", "<version>1.9 beta</version>");
    EXPECT_FALSE(Load(L" 2%s\"a"));
    EXPECT_THAT(AllCalls(), ElementsAre("LogError(\"Project requires specification version  2%s\"a."
                                        " Current version is 1.9 beta. Please install the required "
                                        "version of specification.\")"));
}

TEST_F(LoadSpecificationTest, TakesAMissingVersionForZero) {
    DescribeClass("TEXT");
    EXPECT_FALSE(Load(L"1"));
    EXPECT_THAT(AllCalls(),
                ElementsAre("LogError(\"Project requires specification version 1. Current version "
                            "is . Please install the required version of specification.\")"));
}

TEST_F(LoadSpecificationTest, AcceptsAVersionThatIsNewEnough) {
    const struct {
        const wchar_t* required;
        const char* installed;
    } rules[] = {
        {nullptr, "0"},        {nullptr, ""}, {L"", "0"},    {L"9", "10"},
        {L"10", "10"},         {L"2a", "2"},  {L"2", "2a"},  {L"2.9", "2.1"},
        {L"one", "0"},         {L"-1", "0"},  {L" +3", "3"}, {L"99999999999", "2147483647"},
        {L"1", "99999999999"},
    };
    for (const auto& rule : rules) {
        m_calls.clear();
        DescribeClass("TEXT", std::string("<version>") + rule.installed + "</version>");
        EXPECT_TRUE(Load(rule.required)) << rule.installed;
        EXPECT_THAT(Failures(), IsEmpty()) << rule.installed;
    }
}

TEST_F(LoadSpecificationTest, ReadsTheVersionOfTheConfigurationItselfOnly) {
    DescribeClass("TEXT", "<old><version>1</version></old><version>5</version>");
    EXPECT_TRUE(Load(L"5"));
}

// ---- language ----

constexpr char TwoLanguages[] = "<configuration lang=\"en\" class=\"TEXT\"><version>1</version>"
                                "<configuration lang=\"de\" class=\"TRNG\"/>"
                                "<more><configuration lang=\"sv\" class=\"PROC\"/></more>"
                                "</configuration>";

TEST_F(LoadSpecificationTest, TakesTheConfigurationOfTheRunsLanguage) {
    const struct {
        const wchar_t* language;
        SpecificationClass expected;
    } rules[] = {
        {L"en", SpecificationClass::Text},  {L"de", SpecificationClass::Trng},
        {L"sv", SpecificationClass::Proc},  {L"fr", SpecificationClass::Text},
        {L"DE", SpecificationClass::Text},  {L"de ", SpecificationClass::Text},
        {L"d'e", SpecificationClass::Text}, {L"*", SpecificationClass::Text},
    };
    Describe(TwoLanguages);
    for (const auto& rule : rules) {
        m_language = rule.language;
        EXPECT_TRUE(Load());
        EXPECT_EQ(m_class, rule.expected) << ToUtf8(rule.language, -1);
        EXPECT_STREQ(m_language, rule.language);
    }
}

TEST_F(LoadSpecificationTest, TakesTheFirstConfigurationOfTheLanguageWhereverItStands) {
    Describe("<all><a><configuration lang=\"de\" class=\"TRNG\"/></a>"
             "<configuration lang=\"de\" class=\"PROC\"/></all>");
    m_language = L"de";
    EXPECT_TRUE(Load());
    EXPECT_EQ(m_class, SpecificationClass::Trng);
}

TEST_F(LoadSpecificationTest, TakesTheRootForALanguageThatCannotBeSelected) {
    Describe("<configuration class=\"TEXT\"><configuration lang='\"' class=\"PROC\"/>"
             "<configuration lang=\"de\" class=\"PROC\"/></configuration>");
    for (const std::wstring& hostile :
         {std::wstring(L"\""), std::wstring(L"de\"] | //configuration[\"\"=\""),
          std::wstring(L"x\" or \"1\"=\"1"), std::wstring(L"\x01"),
          std::wstring(L"d\x1F"
                       L"e"),
          std::wstring(L"]"), std::wstring(L"\\"), std::wstring(1, L'\xD800'),
          std::wstring(30'000, L'x'), std::wstring(30'000, L'"')}) {
        m_language = hostile.c_str();
        m_class = SpecificationClass::Ipc;
        EXPECT_TRUE(Load());
        EXPECT_EQ(m_class, SpecificationClass::Text);
    }
    EXPECT_THAT(Failures(), IsEmpty());
}

TEST_F(LoadSpecificationTest, TakesTheRootsLanguageForTheRunWhenThereIsNone) {
    Describe(TwoLanguages);
    EXPECT_TRUE(Load());
    EXPECT_EQ(m_class, SpecificationClass::Text);
    EXPECT_STREQ(m_language, L"en");
}

TEST_F(LoadSpecificationTest, LeavesTheRunWithoutALanguageWhenTheConfigurationHasNone) {
    DescribeClass("TEXT");
    EXPECT_TRUE(Load());
    EXPECT_EQ(m_language.length(), 0U);
}

TEST_F(LoadSpecificationTest, SetsTheLanguageOnlyOnceTheVersionFits) {
    Describe(TwoLanguages);
    EXPECT_FALSE(Load(L"2"));
    EXPECT_EQ(m_language.length(), 0U);
}

// ---- class ----

TEST_F(LoadSpecificationTest, KnowsFiveClasses) {
    const struct {
        const char* word;
        SpecificationClass expected;
    } rules[] = {
        {"IPC", SpecificationClass::Ipc},     {"PROC", SpecificationClass::Proc},
        {"TRNG", SpecificationClass::Trng},   {"TEXT", SpecificationClass::Text},
        {"ILLUS", SpecificationClass::Illus},
    };
    for (const auto& rule : rules) {
        DescribeClass(rule.word);
        EXPECT_TRUE(Load()) << rule.word;
        EXPECT_EQ(m_class, rule.expected) << rule.word;
    }
}

TEST_F(LoadSpecificationTest, FailsForAnUnknownClass) {
    for (const char* bytes :
         {"<configuration lang=\"en\"/>", "<configuration lang=\"en\" class=\"\"/>",
          "<configuration lang=\"en\" class=\"ipc\"/>",
          "<configuration lang=\"en\" class=\"Text\"/>",
          "<configuration lang=\"en\" class=\"IPC \"/>", "<configuration lang=\"en\" class=\"3\"/>",
          "<configuration lang=\"en\" class=\"IPCX\"/>",
          "<configuration lang=\"en\"><class>IPC</class></configuration>"}) {
        m_calls.clear();
        m_language = L"";
        m_class = SpecificationClass::Trng;
        Describe(bytes);
        EXPECT_FALSE(Load()) << bytes;
        // The language and the kernel's folder are set by then.
        EXPECT_THAT(AllCalls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                            "LogError(\"Project specification class unknown\")"));
        EXPECT_STREQ(m_language, L"en");
        EXPECT_EQ(m_class, SpecificationClass::Trng);
    }
}

} // namespace
} // namespace zt::test
