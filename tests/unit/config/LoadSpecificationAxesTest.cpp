// The axes that a specification names.
#include "tests/support/SpecificationFixture.h"

namespace zt::test {
namespace {

class SpecificationAxes : public SpecificationTest {
  protected:
    SpecificationAxes() {
        Catalogue("<models><axes id=\"std\"><vrmlfile>std axes.wrl</vrmlfile></axes></models>");
        m_axesModelPath = L"old.wrl";
        m_axesPosition = 0x11112222;
    }
    void LoadWith(const std::string& word, const std::string& axis) {
        Describe("<configuration class=\"" + word + "\">" + axis + "</configuration>");
        EXPECT_TRUE(Load());
    }
    std::uint32_t PositionWith(const std::string& attributes) {
        LoadWith("IPC", "<axis " + attributes + ">std</axis>");
        return m_axesPosition;
    }
};

TEST_F(SpecificationAxes, AreLookedUpInTheCatalogue) {
    for (const char* word : {"IPC", "PROC", "TRNG", "ILLUS"}) {
        m_axesModelPath = L"old.wrl";
        LoadWith(word, "<axis xpos=\"1\" ypos=\"2\">std</axis>");
        EXPECT_STREQ(m_axesModelPath, L"std axes.wrl") << word;
        EXPECT_EQ(m_axesPosition, 0x00020001U) << word;
    }
}

TEST_F(SpecificationAxes, AreNamedAfterTheirIdOutsideTheCatalogue) {
    LoadWith("PROC", "<axis>other</axis>");
    EXPECT_STREQ(m_axesModelPath, L"other.wrl");
    LoadWith("PROC", "<axis/>");
    EXPECT_STREQ(m_axesModelPath, L".wrl");
}

TEST_F(SpecificationAxes, AreResetWhenTheSpecificationHasNone) {
    LoadWith("PROC", "");
    EXPECT_EQ(m_axesModelPath.length(), 0U);
    EXPECT_EQ(m_axesPosition, 0x000F0055U);
}

TEST_F(SpecificationAxes, AreLeftAloneForAText) {
    LoadWith("TEXT", "<axis xpos=\"1\" ypos=\"2\">std</axis>");
    EXPECT_STREQ(m_axesModelPath, L"old.wrl");
    EXPECT_EQ(m_axesPosition, 0x11112222U);
}

TEST_F(SpecificationAxes, StandAtTheGivenPlace) {
    EXPECT_EQ(PositionWith(""), 0x000F0055U);
    EXPECT_EQ(PositionWith("xpos=\"10\""), 0x000F000AU);
    EXPECT_EQ(PositionWith("ypos=\"10\""), 0x000A0055U);
    EXPECT_EQ(PositionWith("xpos=\"16\" ypos=\"32\""), 0x00200010U);
    EXPECT_EQ(PositionWith("xpos=\" 12px\" ypos=\"+3.9\""), 0x0003000CU);
}

TEST_F(SpecificationAxes, StandAtZeroForATextThatIsNoNumber) {
    EXPECT_EQ(PositionWith("xpos=\"\""), 0x000F0000U);
    EXPECT_EQ(PositionWith("ypos=\"\""), 0x00000055U);
    EXPECT_EQ(PositionWith("xpos=\"left\" ypos=\"top\""), 0x00000000U);
}

TEST_F(SpecificationAxes, HaveAnXThatSpillsIntoY) {
    EXPECT_EQ(PositionWith("xpos=\"65536\""), 0x000F0000U);
    EXPECT_EQ(PositionWith("xpos=\"1048576\""), 0x001F0000U);
    EXPECT_EQ(PositionWith("xpos=\"-1\""), 0xFFFFFFFFU);
    // y replaces what x spilled.
    EXPECT_EQ(PositionWith("xpos=\"-1\" ypos=\"2\""), 0x0002FFFFU);
    EXPECT_EQ(PositionWith("xpos=\"99999999999\""), 0x7FFFFFFFU);
    EXPECT_EQ(PositionWith("ypos=\"-99999999999\""), 0x00000055U);
    EXPECT_EQ(PositionWith("ypos=\"65537\""), 0x00010055U);
}

} // namespace
} // namespace zt::test
