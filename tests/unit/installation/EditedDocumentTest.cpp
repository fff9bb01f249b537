// The development installation's document editor, its document: what it changes and what it keeps.
#include "installation/editor/EditedDocument.h"

#include "installation/runtime/Call.h"
#include "tests/support/Isolation.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace zt::test {
namespace {

using devinst::EditedDocument;

class EditedDocumentFile : public testing::Test {
  protected:
    void Write(const std::string& text) {
        std::ofstream(std::filesystem::path(m_path), std::ios::binary) << text;
    }
    // Without the line end that the platform writes behind the root element.
    std::string Read() const {
        std::ifstream stream(std::filesystem::path(m_path), std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(stream), {}};
        text.erase(text.find_last_not_of("\r\n") + 1);
        return text;
    }

    TemporaryFolder m_folder;
    std::wstring m_path = m_folder.Path(L"Manual.xml");
};

} // namespace

TEST_F(EditedDocumentFile, LosesWhatIsMarkedAsDeletedAndKeepsWhatIsMarkedAsInserted) {
    const struct {
        const char* marked;
        const char* clean;
    } rules[] = {
        {"<a>x<insert>y</insert>z</a>", "<a>xyz</a>"},
        {"<a>x<delete>y</delete>z</a>", "<a>xz</a>"},
        {"<a><insert><b/><c/></insert></a>", "<a><b/><c/></a>"},
        {"<a><insert/>x<delete/></a>", "<a>x</a>"},
        {"<a><b><insert>x<delete>y</delete></insert></b></a>", "<a><b>x</b></a>"},
        {"<a><insert><insert>x</insert></insert></a>", "<a>x</a>"},
        {"<a><delete>x<insert>y</insert></delete></a>", "<a/>"},
        {"<a><i>x</i> <insert><i>y</i></insert> <i>z</i></a>", "<a><i>x</i> <i>y</i> <i>z</i></a>"},
        {"<a><!--insert--><?insert x?></a>", "<a><!--insert--><?insert x?></a>"},
    };
    for (const auto& rule : rules) {
        Write(rule.marked);
        EditedDocument document(m_path, {});
        document.RemoveChangeMarks();
        document.Save();
        EXPECT_EQ(Read(), rule.clean) << rule.marked;
    }
}

TEST_F(EditedDocumentFile, HasNoUnsavedChangesWhereNothingDiffersFromTheProject) {
    Write("<a title=\"Pump\"/>");
    EditedDocument document(m_path, {L"Pump", L"A"});
    EXPECT_FALSE(document.HasUnsavedChanges());
    document.RemoveChangeMarks();
    EXPECT_FALSE(document.HasUnsavedChanges());
}

TEST_F(EditedDocumentFile, KeepsItsTitleWhereTheProjectHasNone) {
    Write("<a title=\"Pump\"/>");
    EXPECT_FALSE(EditedDocument(m_path, {L"", L"A"}).HasUnsavedChanges());
}

TEST_F(EditedDocumentFile, TakesTheProjectsTitleOverAndSavesItOnlyWhenTold) {
    Write("<a title=\"Pump\"/>");
    EditedDocument document(m_path, {L"Valve", L"A"});
    EXPECT_TRUE(document.HasUnsavedChanges());
    EXPECT_EQ(Read(), "<a title=\"Pump\"/>");
    document.Save();
    EXPECT_FALSE(document.HasUnsavedChanges());
    EXPECT_EQ(Read(), "<a title=\"Valve\"/>");
}

TEST_F(EditedDocumentFile, IsStampedWithTheNumberOfSavesAndTheRevision) {
    Write("<a saves=\"9\"/>");
    EditedDocument document(m_path, {L"", L"C"});
    document.StampSave();
    EXPECT_TRUE(document.HasUnsavedChanges());
    document.Save();
    EXPECT_EQ(Read(), "<a saves=\"10\" savedRevision=\"C\"/>");
}

TEST_F(EditedDocumentFile, IsNotLoadedWhereItIsNotWellFormed) {
    for (const char* text : {"", "text", "<a>", "<a></b>", "<a/><b/>"}) {
        Write(text);
        EXPECT_THROW(EditedDocument(m_path, {}), devinst::ComFailure) << text;
    }
    EXPECT_THROW(EditedDocument(m_folder.Path(L"missing.xml"), {}), devinst::ComFailure);
}

} // namespace zt::test
