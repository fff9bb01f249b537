// The publication as a whole: where it goes and how it becomes a package.
#include "components/ComponentIds.h"
#include "publish/Package.h"
#include "tests/support/PublishFixture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace zt::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::Not;
using ::testing::StartsWith;

// Redirects the system's temporary folder for this process.
class TemporaryVariables {
  public:
    explicit TemporaryVariables(const std::wstring& folder)
        : m_tmp(Get(L"TMP")), m_temp(Get(L"TEMP")) {
        Set(folder, folder);
    }
    ~TemporaryVariables() { Set(m_tmp, m_temp); }
    TemporaryVariables(const TemporaryVariables&) = delete;
    TemporaryVariables& operator=(const TemporaryVariables&) = delete;

  private:
    static std::wstring Get(const wchar_t* name) {
        wchar_t value[1024] = {};
        GetEnvironmentVariableW(name, value, 1024);
        return value;
    }
    static void Set(const std::wstring& tmp, const std::wstring& temp) {
        SetEnvironmentVariableW(L"TMP", tmp.c_str());
        SetEnvironmentVariableW(L"TEMP", temp.c_str());
    }

    std::wstring m_tmp, m_temp;
};

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

class Package : public PublishTest {
  protected:
    Package() {
        publication.isPackage = true;
        std::filesystem::create_directory(folder.Path(L"temp"));
        // The exporter publishes two files.
        exporter.On<Exporter::PutDestinationFolder>([this](BSTR given) {
            destination = given;
            existedBefore = Exists(destination);
            std::filesystem::create_directories(destination + L"\\sub");
            std::ofstream(std::filesystem::path(destination + L"\\index.html")) << "x";
            std::ofstream(std::filesystem::path(destination + L"\\sub\\a.txt")) << "x";
            return S_OK;
        });
    }
    std::string PackagePath() const {
        const std::wstring path = folder.Path(L"Pump.kvb");
        return ToUtf8(path.c_str(), static_cast<int>(path.size()));
    }
    CallList ArchiveCalls() const {
        CallList found;
        for (const std::string& call : calls)
            if (call.find("Archive") != std::string::npos)
                found.push_back(call);
        return found;
    }

    std::wstring destination;
    bool existedBefore = false;
    TemporaryVariables temporary{folder.Path(L"temp")};
};

TEST_F(Package, IsMadeOfAFolderInTheTemporaryFolder) {
    EXPECT_EQ(Publish(), L"done");
    const std::wstring name = std::filesystem::path(destination).filename();
    EXPECT_EQ(std::filesystem::path(destination).parent_path(), folder.Path(L"temp"));
    EXPECT_EQ(name.substr(0, 3), L"KVE");
    EXPECT_FALSE(existedBefore);
}

TEST_F(Package, IsCreatedFilledAndClosedAfterThePublication) {
    EXPECT_EQ(Publish(), L"done");
    const CallList made = ArchiveCalls();
    ASSERT_EQ(made.size(), 5U);
    EXPECT_EQ(made[0], "create Archive");
    EXPECT_EQ(made[1], "ArchiveComponent.Create(\"" + PackagePath() + "\", 2)");
    EXPECT_THAT((CallList{made[2], made[3]}),
                testing::UnorderedElementsAre(EndsWith("\\index.html\", \"index.html\", -1)"),
                                              EndsWith("\\sub\\a.txt\", \"sub\\a.txt\", -1)")));
    EXPECT_EQ(made[4], "ArchiveComponent.Close()");
    EXPECT_THAT(archiveClass->Asked(), ElementsAre(IID_Archive));
    EXPECT_THAT(logged, ElementsAre("log: Project published successfully",
                                    "log: KVB file created sucessfully"));
}

TEST_F(Package, IsCreatedWhenTheExporterIsGone) {
    archive.On<ArchiveComponent::Create>([this](BSTR, LONG) {
        EXPECT_EQ(exporter.References(), 0);
        return S_OK;
    });
    EXPECT_EQ(Publish(), L"done");
}

TEST_F(Package, LeavesNothingInTheTemporaryFolder) {
    archive.On<ArchiveComponent::Close>([this] {
        EXPECT_TRUE(Exists(destination));
        return S_OK;
    });
    EXPECT_EQ(Publish(), L"done");
    EXPECT_FALSE(Exists(destination));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path(L"temp")));
}

TEST_F(Package, IsNotMadeWithoutAnArchiveComponent) {
    archiveClass.reset();
    EXPECT_EQ(Publish(), L"text: Can't create KVZip");
    EXPECT_TRUE(Exists(destination + L"\\index.html"));
    EXPECT_THAT(logged, ElementsAre("log: Project published successfully"));
}

TEST_F(Package, IsNotMadeWhereTheComponentCannotBeCreated) {
    archiveClass.reset();
    const TestClass empty(CLSID_Archive, TestClass::GivesNothing());
    EXPECT_EQ(Publish(), L"text: Can't create KVZip");
}

TEST_F(Package, IsNotMadeWhereItsFileCannotBeCreated) {
    archive.Return<ArchiveComponent::Create>(E_ACCESSDENIED);
    EXPECT_EQ(Publish(), L"text: Can't create KVB-file");
    EXPECT_THAT(calls, Not(Contains("ArchiveComponent.Close()")));
    EXPECT_TRUE(Exists(destination + L"\\index.html"));
    EXPECT_EQ(archive.References(), 0);
}

TEST_F(Package, IsClosedAndTheFolderDeletedThoughAFileCannotBeAdded) {
    archive.Return<ArchiveComponent::AddFile>(E_FAIL);
    EXPECT_EQ(Publish(), L"text: Error generating KVB-file");
    EXPECT_EQ(ArchiveCalls().size(), 4U);
    EXPECT_EQ(calls.back(), "ArchiveComponent.Close()");
    EXPECT_FALSE(Exists(destination));
    EXPECT_THAT(logged, ElementsAre("log: Project published successfully"));
}

TEST_F(Package, FailsWhereNothingWasPublished) {
    exporter.Return<Exporter::PutDestinationFolder>(S_OK);
    EXPECT_EQ(Publish(), L"text: Error generating KVB-file");
    EXPECT_THAT(ArchiveCalls(), ElementsAre("create Archive", StartsWith("ArchiveComponent.Create"),
                                            "ArchiveComponent.Close()"));
}

TEST_F(Package, IsDoneThoughItsClosingFails) {
    archive.Return<ArchiveComponent::Close>(E_FAIL);
    EXPECT_EQ(Publish(), L"done");
    EXPECT_FALSE(Exists(destination));
}

TEST_F(Package, IsNotBegunAfterAFailedPublication) {
    exporter.Return<Exporter::Export>(E_FAIL);
    EXPECT_EQ(Publish(), L"string: ERROR publishing project: ");
    EXPECT_THAT(ArchiveCalls(), testing::IsEmpty());
    EXPECT_TRUE(Exists(destination + L"\\index.html"));
}

TEST_F(Package, IsMadeByEveryRoute) {
    for (const auto value : {SpecificationClass::Proc, SpecificationClass::Text}) {
        publication.specificationClass = value;
        component.Answer(IID_3DCommandTarget, nullptr);
        component.On<Component3D::PublishView>([](BSTR given, auto...) {
            std::filesystem::create_directory(given);
            return S_OK;
        });
        component.On<Component3D::PublishText>([](KernelAdmin*, BSTR given, auto...) {
            std::filesystem::create_directory(given);
            return S_OK;
        });
        calls.clear();
        EXPECT_EQ(Publish(), L"done") << FactsOf(value).word;
        EXPECT_THAT(ArchiveCalls(),
                    ElementsAre("create Archive",
                                "ArchiveComponent.Create(\"" + PackagePath() + "\", 2)",
                                "ArchiveComponent.Close()"));
    }
}

TEST_F(Package, IsNotWantedWithoutTheRequest) {
    publication.isPackage = false;
    EXPECT_EQ(Publish(), L"done");
    EXPECT_EQ(destination, folder.Path(L"Pump"));
    EXPECT_TRUE(Exists(destination + L"\\index.html"));
    EXPECT_TRUE(Exists(destination + L"\\sub\\a.txt"));
    EXPECT_TRUE(archiveClass->Asked().empty());
    EXPECT_FALSE(Exists(folder.Path(L"Pump.kvb")));
}

// ---- the temporary destination ----

TEST(TemporaryDestination, IsANewNameEachTimeAndDoesNotExist) {
    const TemporaryFolder folder;
    const TemporaryVariables variables(folder.Path());
    const std::wstring first = TemporaryDestination();
    std::filesystem::create_directory(first);
    const std::wstring second = TemporaryDestination();
    EXPECT_NE(first, second);
    EXPECT_FALSE(Exists(second));
    EXPECT_EQ(std::filesystem::path(second).parent_path(), folder.Path());
    EXPECT_TRUE(std::filesystem::path(second).filename().wstring().starts_with(L"KVE"));
}

TEST(TemporaryDestination, IsAFixedFolderWhereNoNameCanBeMade) {
    const TemporaryFolder folder;
    const TemporaryVariables variables(folder.Path(L"missing"));
    EXPECT_EQ(TemporaryDestination(), L"C:\\__temp");
}

TEST(TemporaryDestination, IsOnTheSystemDriveWhereTheFoldersNameIsTooLong) {
    const TemporaryVariables variables(L"C:\\" + std::wstring(300, L'x'));
    const std::wstring name = TemporaryDestination();
    EXPECT_TRUE(name.starts_with(L"C:\\KVE"))
        << ToUtf8(name.c_str(), static_cast<int>(name.size()));
    EXPECT_FALSE(Exists(name));
}

} // namespace
} // namespace zt::test
