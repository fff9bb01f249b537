#include "tests/support/Isolation.h"

#include "installation/zip/Zip.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace devinst::test {
namespace {

namespace fs = std::filesystem;
using testing::StrEq;
using testing::ThrowsMessage;

class Zip : public testing::Test {
  protected:
    std::wstring Path() const { return m_folder.Path(L"a.zip"); }

    // An archive of one file, "name" with "content", 500 times over.
    std::string SampleBytes(const std::string& name = "name") const {
        std::string content;
        for (int i = 0; i < 500; ++i)
            content += "content";
        ZipWriter writer(Path());
        writer.AddText(name, content);
        writer.Close();
        return Bytes();
    }
    std::string Bytes() const {
        std::ifstream file(fs::path(Path()), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    void Write(const std::string& bytes) const {
        std::ofstream(fs::path(Path()), std::ios::binary) << bytes;
    }
    void ReadAll() const {
        ZipReader reader(Path());
        for (const ZipEntry& entry : reader.Entries())
            reader.Read(entry.name);
    }

    zt::test::TemporaryFolder m_folder;
};

TEST_F(Zip, GivesBackWhatWasPutIn) {
    std::string large;
    for (int i = 0; i < 100000; ++i)
        large += static_cast<char>((i * 7919) >> 3);
    {
        ZipWriter writer(Path());
        writer.AddText("text.xml", "<a/>");
        writer.AddText("empty", "");
        writer.AddText("folder/\u00fc \u4e2d.bin", large);
        writer.Close();
    }
    ZipReader reader(Path());
    ASSERT_EQ(reader.Entries().size(), 3u);
    EXPECT_EQ(reader.Read("text.xml"), "<a/>");
    EXPECT_EQ(reader.Read("empty"), "");
    EXPECT_EQ(reader.Read("folder/\u00fc \u4e2d.bin"), large);
    EXPECT_TRUE(reader.Has("empty"));
    EXPECT_FALSE(reader.Has("folder"));
}

TEST_F(Zip, CompressesItsEntries) {
    EXPECT_LT(SampleBytes().size(), 300u);
}

TEST_F(Zip, OfTheSameContentIsTheSameBytes) {
    const std::string first = SampleBytes();
    EXPECT_EQ(SampleBytes(), first);
}

TEST_F(Zip, WithoutEntriesIsAnArchive) {
    ZipWriter(Path()).Close();
    EXPECT_TRUE(ZipReader(Path()).Entries().empty());
}

TEST_F(Zip, ExtractsTheFilesBelowAPrefix) {
    {
        ZipWriter writer(Path());
        writer.AddText("other.txt", "other");
        writer.AddText("in/", "");
        writer.AddText("in/a.txt", "a");
        writer.AddText("in/deep/\u00fc.txt", "b");
        writer.Close();
    }
    const fs::path target = m_folder.Path(L"out");
    ZipReader(Path()).Extract("in/", target);
    EXPECT_TRUE(fs::is_regular_file(target / L"a.txt"));
    EXPECT_EQ(fs::file_size(target / L"deep" / L"\u00fc.txt"), 1u);
    EXPECT_FALSE(fs::exists(target / L"other.txt"));
}

TEST_F(Zip, NameThatLeadsOutOfTheFolderIsRefused) {
    for (const char* const name : {"../out.txt", "a/../../out.txt", "/out.txt", "C:/out.txt",
                                   "a\\..\\..\\out.txt", "a/.."}) {
        SampleBytes(name);
        ZipReader reader(Path());
        EXPECT_THAT([&] { reader.Extract("", m_folder.Path(L"deep\\er")); },
                    ThrowsMessage<ZipError>(StrEq("the archive has a name that leads out of it")))
            << name;
    }
    EXPECT_FALSE(fs::exists(m_folder.Path(L"out.txt")));
    EXPECT_FALSE(fs::exists(m_folder.Path(L"deep\\out.txt")));
}

TEST_F(Zip, FileThatIsNoArchiveIsRefused) {
    const std::string cases[] = {"", "PK", "<project/>", std::string(70000, 'x')};
    for (const std::string& bytes : cases) {
        Write(bytes);
        EXPECT_THAT([&] { ReadAll(); }, ThrowsMessage<ZipError>(StrEq("the file is no archive")));
    }
}

TEST_F(Zip, MissingFileAndFolderAreRefused) {
    EXPECT_THROW(ReadAll(), ZipError);
    EXPECT_THROW(ZipReader{m_folder.Path()}, ZipError);
}

TEST_F(Zip, CutOffAnywhereIsRefused) {
    const std::string whole = SampleBytes();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Write(whole.substr(0, size));
        EXPECT_THROW(ReadAll(), ZipError) << size;
    }
}

TEST_F(Zip, DamagedContentIsRefused) {
    const std::string whole = SampleBytes();
    constexpr std::size_t Content = 30 + 4;
    for (const std::size_t at : {Content + 2, Content + 8}) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x55);
        Write(damaged);
        EXPECT_THAT([&] { ReadAll(); },
                    ThrowsMessage<ZipError>(StrEq("an entry of the archive is damaged")));
    }
}

TEST_F(Zip, ChangedByteNeverDoesMoreThanFail) {
    const std::string whole = SampleBytes();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0xff);
        Write(damaged);
        try {
            ReadAll();
        } catch (const ZipError&) {
        }
    }
}

TEST_F(Zip, CannotBeCreatedInAMissingFolder) {
    EXPECT_THAT([&] { ZipWriter(m_folder.Path(L"missing\\a.zip")); },
                ThrowsMessage<ZipError>(StrEq("the archive cannot be created")));
}

} // namespace
} // namespace devinst::test
