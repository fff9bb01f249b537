#include "config/Configuration.h"

#include "framework/String.h"
#include "tests/support/FakeKernel.h"
#include "tests/support/Fixtures.h"
#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>

namespace zt::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ConfigurationFile : public testing::Test {
  protected:
    ConfigurationFile() { m_kernel.Return<KernelAdmin::SetProjectsLocation>(S_OK); }
    HRESULT LoadBytes(std::string_view bytes) {
        m_calls.clear();
        WriteFile(m_path, bytes);
        return ReadConfiguration(m_path.c_str(), m_kernel.Get(), m_publicationLocation);
    }
    // The text that loading the path raises; none when it raises no composed text.
    std::optional<std::wstring> TextRaisedFor(const wchar_t* path) {
        try {
            ReadConfiguration(path, m_kernel.Get(), m_publicationLocation);
        } catch (const CString& text) {
            return text.GetString();
        }
        return std::nullopt;
    }

    CallList m_calls;
    FakeObject<KernelAdmin> m_kernel{m_calls};
    _bstr_t m_publicationLocation{L"before"};
    TemporaryFolder m_folder;
    const std::wstring m_path = m_folder.Path(L"site.cfg");
};

TEST_F(ConfigurationFile, GivesTheLocationsOfProjectsAndPublications) {
    EXPECT_EQ(LoadBytes("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<configuration>\n"
                        "<other><proj-location>C:\\wrong</proj-location></other>\n"
                        "<proj-location>C:\\projects\\\xC3\xA4</proj-location>\n"
                        "<pub-location>%TEMP%\\pub</pub-location>\n</configuration>"),
              S_OK);
    EXPECT_THAT(m_calls,
                ElementsAre("KernelAdmin.SetProjectsLocation(\"C:\\projects\\\xC3\xA4\")"));
    EXPECT_STREQ(m_publicationLocation, L"%TEMP%\\pub");
}

TEST_F(ConfigurationFile, GivesTheWholeTextOfAnElement) {
    EXPECT_EQ(LoadBytes("<configuration><proj-location>C:\\<b>a</b> &amp; <![CDATA[<b>]]>"
                        "</proj-location><pub-location>d:\\x<!-- no -->y</pub-location>"
                        "</configuration>"),
              S_OK);
    EXPECT_THAT(m_calls, ElementsAre("KernelAdmin.SetProjectsLocation(\"C:\\a & <b>\")"));
    EXPECT_STREQ(m_publicationLocation, L"d:\\xy");
}

TEST_F(ConfigurationFile, GivesTheFirstElementOfAName) {
    LoadBytes("<configuration><proj-location>a</proj-location><proj-location>b</proj-location>"
              "<pub-location>c</pub-location><pub-location>d</pub-location></configuration>");
    EXPECT_THAT(m_calls, ElementsAre("KernelAdmin.SetProjectsLocation(\"a\")"));
    EXPECT_STREQ(m_publicationLocation, L"c");
}

TEST_F(ConfigurationFile, WithoutLocationsGivesTheKernelANullText) {
    for (const char* bytes : {"<configuration/>", "<other><proj-location>a</proj-location></other>",
                              "<all><configuration><proj-location>a</proj-location>"
                              "<pub-location>b</pub-location></configuration></all>",
                              "<Configuration><proj-location>a</proj-location></Configuration>",
                              "<configuration><Proj-Location>a</Proj-Location></configuration>"}) {
        EXPECT_EQ(LoadBytes(bytes), S_OK) << bytes;
        EXPECT_THAT(m_calls, ElementsAre("KernelAdmin.SetProjectsLocation(null)")) << bytes;
        EXPECT_STREQ(m_publicationLocation, L"before") << bytes;
    }
}

TEST_F(ConfigurationFile, WithEmptyLocationsGivesEmptyTexts) {
    LoadBytes("<configuration><proj-location/><pub-location/></configuration>");
    EXPECT_THAT(m_calls, ElementsAre("KernelAdmin.SetProjectsLocation(\"\")"));
    EXPECT_STREQ(m_publicationLocation, L"");
}

TEST_F(ConfigurationFile, ReturnsWhatTheKernelReturned) {
    m_kernel.Return<KernelAdmin::SetProjectsLocation>(S_FALSE);
    EXPECT_EQ(LoadBytes("<configuration/>"), S_FALSE);
}

TEST_F(ConfigurationFile, IsRaisedWhenTheKernelRefusesTheProjectsLocation) {
    m_kernel.Return<KernelAdmin::SetProjectsLocation>(E_ACCESSDENIED);
    const wchar_t* raised = nullptr;
    try {
        LoadBytes("<configuration><pub-location>d:\\pub</pub-location></configuration>");
    } catch (const wchar_t* text) {
        raised = text;
    }
    EXPECT_STREQ(raised, L"Projects location cannot be set.");
    // It was stored before the kernel was asked.
    EXPECT_STREQ(m_publicationLocation, L"d:\\pub");
}

TEST_F(ConfigurationFile, StoresThePublicationLocationBeforeItAsksTheKernel) {
    std::wstring seen;
    m_kernel.On<KernelAdmin::SetProjectsLocation>([&](BSTR) {
        seen = m_publicationLocation;
        return S_OK;
    });
    LoadBytes("<configuration><pub-location>d:\\pub</pub-location></configuration>");
    EXPECT_EQ(seen, L"d:\\pub");
}

TEST_F(ConfigurationFile, IsRaisedWhenItIsMissing) {
    EXPECT_EQ(TextRaisedFor(m_path.c_str()), L"Configuration file does not exist: " + m_path);
    EXPECT_EQ(TextRaisedFor(L""), L"Configuration file does not exist: ");
    EXPECT_EQ(TextRaisedFor(nullptr), L"Configuration file does not exist: ");
    EXPECT_EQ(TextRaisedFor(L"Q:\\no \"such\" %s\\site.cfg"),
              L"Configuration file does not exist: Q:\\no \"such\" %s\\site.cfg");
    const std::wstring longPath = m_folder.Path(std::wstring(300, L'x'));
    EXPECT_EQ(TextRaisedFor(longPath.c_str()), L"Configuration file does not exist: " + longPath);
    EXPECT_THAT(m_calls, IsEmpty());
    EXPECT_STREQ(m_publicationLocation, L"before");
}

TEST_F(ConfigurationFile, IsRaisedWhenItIsNoXml) {
    const std::string bad[] = {"",
                               "[locations]\r\nproj=C:\\x\r\n",
                               "<configuration>",
                               "<configuration><proj-location>a</configuration>",
                               "<configuration/><configuration/>",
                               "<configuration>&unknown;</configuration>",
                               "<?xml version=\"1.0\" encoding=\"UTF-8\"?><configuration>\xFF"
                               "</configuration>"};
    for (const std::string& bytes : bad) {
        WriteFile(m_path, bytes);
        EXPECT_EQ(TextRaisedFor(m_path.c_str()), L"Invalid configuration file format: " + m_path)
            << bytes;
    }
    EXPECT_THAT(m_calls, IsEmpty());
    EXPECT_STREQ(m_publicationLocation, L"before");
}

TEST_F(ConfigurationFile, IsRaisedWhenItIsAFolder) {
    const std::wstring folder = m_folder.Path();
    EXPECT_EQ(TextRaisedFor(folder.c_str()), L"Invalid configuration file format: " + folder);
}

TEST_F(ConfigurationFile, MayBeLargeAndHoldLongTexts) {
    std::string filler;
    for (int i = 0; i < 60'000; ++i)
        filler += "<entry number=\"" + std::to_string(i) + "\">some text of no interest</entry>\n";
    const std::string location(30'000, 'x');
    LoadBytes("<configuration>" + filler + "<proj-location>" + location +
              "</proj-location></configuration>");
    EXPECT_THAT(m_calls, ElementsAre("KernelAdmin.SetProjectsLocation(\"" + location + "\")"));
}

TEST_F(ConfigurationFile, MayBeInUtf16) {
    const std::wstring text = L"\xFEFF<?xml version=\"1.0\" encoding=\"UTF-16\"?>"
                              L"<configuration><proj-location>C:\\\x0416</proj-location>"
                              L"</configuration>";
    LoadBytes({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
    EXPECT_THAT(m_calls, ElementsAre("KernelAdmin.SetProjectsLocation(\"C:\\\xD0\x96\")"));
}

} // namespace
} // namespace zt::test
