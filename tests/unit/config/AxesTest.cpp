#include "config/Axes.h"

#include "tests/support/Fixtures.h"
#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

namespace zt::test {
namespace {

class AxesModel : public testing::Test {
  protected:
    AxesModel() { m_machine.SetText(L"Software\\Morvenit", L"ZeltorDataFolder", m_data.Path()); }

    void Catalogue(std::string_view bytes) {
        WriteFile(m_data.Path(L"Morvenit\\KVProductFamily\\Axes\\axes.xml"), bytes);
    }

    TemporaryFolder m_data;
    RegistryOverride m_machine{HKEY_LOCAL_MACHINE};
};

TEST_F(AxesModel, IsTheFileThatTheCatalogueNames) {
    Catalogue("<models><axes id=\"a\"><vrmlfile>one.wrl</vrmlfile></axes>"
              "<axes id=\"b\"><other/><vrmlfile>sub\\two %s.vrml</vrmlfile></axes></models>");
    EXPECT_EQ(FindAxesModel(L"a"), L"one.wrl");
    EXPECT_EQ(FindAxesModel(L"b"), L"sub\\two %s.vrml");
}

TEST_F(AxesModel, IsFoundByTheExactId) {
    Catalogue("<models><axes id=\"Std\"><vrmlfile>wrong.wrl</vrmlfile></axes></models>");
    EXPECT_EQ(FindAxesModel(L"std"), L"std.wrl");
    EXPECT_EQ(FindAxesModel(L"Std "), L"Std .wrl");
}

TEST_F(AxesModel, IsTheFirstOneOfItsId) {
    Catalogue("<models><axes id=\"a\"><vrmlfile>one.wrl</vrmlfile><vrmlfile>x</vrmlfile></axes>"
              "<axes id=\"a\"><vrmlfile>two.wrl</vrmlfile></axes></models>");
    EXPECT_EQ(FindAxesModel(L"a"), L"one.wrl");
}

TEST_F(AxesModel, IsNamedAfterItsIdWhenTheCatalogueDoesNotTell) {
    for (const char* catalogue :
         {"<models/>", "<models><axes id=\"std\"/></models>",
          "<models><axes id=\"std\"><vrmlfile/></axes></models>",
          "<models><axes><vrmlfile>x.wrl</vrmlfile></axes></models>",
          "<models><group><axes id=\"std\"><vrmlfile>x.wrl</vrmlfile></axes></group></models>",
          "<all><axes id=\"std\"><vrmlfile>x.wrl</vrmlfile></axes></all>"}) {
        Catalogue(catalogue);
        EXPECT_EQ(FindAxesModel(L"std"), L"std.wrl") << catalogue;
    }
}

TEST_F(AxesModel, IsNamedAfterItsIdWithoutACatalogue) {
    EXPECT_EQ(FindAxesModel(L"std"), L"std.wrl");
    EXPECT_EQ(FindAxesModel(L""), L".wrl");
}

TEST_F(AxesModel, IsNamedAfterItsIdWhenTheCatalogueCannotBeRead) {
    for (const char* catalogue :
         {"", "text", "<models>", "<models><axes id=\"std\"><vrmlfile>x.wrl</vrmlfile></models>"}) {
        Catalogue(catalogue);
        EXPECT_EQ(FindAxesModel(L"std"), L"std.wrl") << catalogue;
    }
    std::filesystem::remove(m_data.Path(L"Morvenit\\KVProductFamily\\Axes\\axes.xml"));
    std::filesystem::create_directory(m_data.Path(L"Morvenit\\KVProductFamily\\Axes\\axes.xml"));
    EXPECT_EQ(FindAxesModel(L"std"), L"std.wrl");
}

TEST_F(AxesModel, IsNamedAfterAnIdThatCannotBeSelected) {
    Catalogue("<models><axes id=\"it's\"><vrmlfile>wrong.wrl</vrmlfile></axes>"
              "<axes id=\"1\"><vrmlfile>wrong.wrl</vrmlfile></axes></models>");
    for (const std::wstring& id :
         {std::wstring(L"it's"), std::wstring(L"'"), std::wstring(L"x' or '1'='1"),
          std::wstring(L"1']/vrmlfile | //vrmlfile['"), std::wstring(L"\x02"),
          std::wstring(30'000, L'\'')})
        EXPECT_EQ(FindAxesModel(id), id + L".wrl");
}

TEST_F(AxesModel, IsFoundByAnIdOfAnyOtherCharacters) {
    Catalogue("<models><axes id=\"a&quot;]|/*\\&lt;\xC3\xA4\"><vrmlfile>odd.wrl</vrmlfile></axes>"
              "<axes id=\"\"><vrmlfile>empty.wrl</vrmlfile></axes></models>");
    EXPECT_EQ(FindAxesModel(L"a\"]|/*\\<\x00E4"), L"odd.wrl");
    EXPECT_EQ(FindAxesModel(L""), L"empty.wrl");
    const std::wstring longId(30'000, L'x');
    EXPECT_EQ(FindAxesModel(longId), longId + L".wrl");
}

TEST_F(AxesModel, IsLookedForBelowTheRootWhenTheDataFolderIsEmpty) {
    Catalogue("<models><axes id=\"std\"><vrmlfile>wrong.wrl</vrmlfile></axes></models>");
    m_machine.SetText(L"Software\\Morvenit", L"ZeltorDataFolder", L"");
    EXPECT_EQ(FindAxesModel(L"std"), L"std.wrl");
}

} // namespace
} // namespace zt::test
