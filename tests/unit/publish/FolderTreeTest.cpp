#include "publish/FolderTree.h"

#include "tests/support/FakeKernel.h"
#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace zt {
namespace {

using test::CallList;
using test::FakeObject;
using test::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class Folders : public testing::Test {
  protected:
    void File(const std::wstring& name) {
        const std::filesystem::path path = m_folder.Path(name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << "x";
        ASSERT_TRUE(Exists(name)) << test::ToUtf8(name.c_str(), static_cast<int>(name.size()));
    }
    void Folder(const std::wstring& name) {
        std::filesystem::create_directories(m_folder.Path(name));
    }
    void Mark(const std::wstring& name, DWORD attributes) {
        ASSERT_TRUE(SetFileAttributesW(m_folder.Path(name).c_str(), attributes));
        ASSERT_EQ(GetFileAttributesW(m_folder.Path(name).c_str()) & attributes, attributes);
    }
    void Unmark(const std::wstring& name) {
        ASSERT_TRUE(SetFileAttributesW(m_folder.Path(name).c_str(), FILE_ATTRIBUTE_NORMAL));
    }
    bool Exists(const std::wstring& name) const {
        return GetFileAttributesW(m_folder.Path(name).c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    TemporaryFolder m_folder;
};

// ---- packing ----

class PackedFolder : public Folders {
  protected:
    void SetUp() override {
        m_archive.On<ArchiveComponent::AddFile>([this](BSTR path, BSTR name, VARIANT_BOOL flag) {
            EXPECT_EQ(flag, -1);
            EXPECT_EQ(std::wstring(path), m_folder.Path(L"tree\\" + std::wstring(name)));
            m_names.emplace_back(name);
            return m_names.size() == m_failingAddition ? E_ACCESSDENIED : m_result;
        });
    }
    HRESULT Pack() { return AddFolderToArchive(m_archive.Get(), m_folder.Path(L"tree")); }

    CallList m_calls;
    FakeObject<ArchiveComponent> m_archive{m_calls};
    std::vector<std::wstring> m_names;
    std::size_t m_failingAddition = 0;
    HRESULT m_result = S_OK;
};

TEST_F(PackedFolder, HasNamesRelativeToItself) {
    File(L"tree\\index.html");
    File(L"tree\\documents\\a.xml");
    File(L"tree\\documents\\de\\b.xml");
    EXPECT_EQ(Pack(), S_OK);
    EXPECT_THAT(m_names,
                UnorderedElementsAre(L"index.html", L"documents\\a.xml", L"documents\\de\\b.xml"));
}

TEST_F(PackedFolder, GivesTheArchiveFullPathNameAndAllBitsSet) {
    File(L"tree\\sub\\a.txt");
    EXPECT_EQ(Pack(), S_OK);
    const std::wstring path = m_folder.Path(L"tree\\sub\\a.txt");
    const std::string shown = test::ToUtf8(path.c_str(), static_cast<int>(path.size()));
    EXPECT_THAT(m_calls,
                ElementsAre("ArchiveComponent.AddFile(\"" + shown + "\", \"sub\\a.txt\", -1)"));
}

TEST_F(PackedFolder, KeepsNonLatinNames) {
    File(L"tree\\\x65E5\x672C\\\x0416.txt");
    EXPECT_EQ(Pack(), S_OK);
    EXPECT_THAT(m_names, ElementsAre(L"\x65E5\x672C\\\x0416.txt"));
}

TEST_F(PackedFolder, KeepsNamesWithoutAnExtensionAndWithSeveralDots) {
    File(L"tree\\readme");
    File(L"tree\\a.b..c\\x.y.z");
    EXPECT_EQ(Pack(), S_OK);
    EXPECT_THAT(m_names, UnorderedElementsAre(L"readme", L"a.b..c\\x.y.z"));
}

TEST_F(PackedFolder, StandsBehindAGivenPrefix) {
    File(L"tree\\a.txt");
    m_archive.Return<ArchiveComponent::AddFile>(S_OK);
    const std::wstring prefix = L"outer\\inner";
    EXPECT_EQ(AddFolderToArchive(m_archive.Get(), m_folder.Path(L"tree"), &prefix), S_OK);
    ASSERT_EQ(m_calls.size(), 1U);
    EXPECT_NE(m_calls[0].find("\"outer\\inner\\a.txt\""), std::string::npos) << m_calls[0];
}

TEST_F(PackedFolder, IsASuccessWhenItIsEmpty) {
    Folder(L"tree\\sub\\subsub");
    EXPECT_EQ(Pack(), S_OK);
    EXPECT_THAT(m_names, IsEmpty());
}

TEST_F(PackedFolder, LeavesHiddenAndSystemFilesOut) {
    File(L"tree\\hidden.txt");
    File(L"tree\\system.txt");
    File(L"tree\\both.txt");
    File(L"tree\\plain.txt");
    File(L"tree\\readonly.txt");
    Mark(L"tree\\hidden.txt", FILE_ATTRIBUTE_HIDDEN);
    Mark(L"tree\\system.txt", FILE_ATTRIBUTE_SYSTEM);
    Mark(L"tree\\both.txt", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    Mark(L"tree\\readonly.txt", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Pack(), S_OK);
    EXPECT_THAT(m_names, UnorderedElementsAre(L"plain.txt", L"readonly.txt"));
    Unmark(L"tree\\readonly.txt");
}

TEST_F(PackedFolder, LeavesHiddenAndSystemFoldersOutWithAllTheyHold) {
    File(L"tree\\hidden\\a.txt");
    File(L"tree\\system\\sub\\b.txt");
    File(L"tree\\plain\\c.txt");
    Mark(L"tree\\hidden", FILE_ATTRIBUTE_HIDDEN);
    Mark(L"tree\\system", FILE_ATTRIBUTE_SYSTEM);
    EXPECT_EQ(Pack(), S_OK);
    EXPECT_THAT(m_names, ElementsAre(L"plain\\c.txt"));
}

TEST_F(PackedFolder, FailsWithTheSearchsErrorWhenItIsMissing) {
    EXPECT_EQ(Pack(), static_cast<HRESULT>(0x80070003));
    EXPECT_EQ(AddFolderToArchive(m_archive.Get(), m_folder.Path(L"none\\tree")),
              static_cast<HRESULT>(0x80070003));
    EXPECT_THAT(m_names, IsEmpty());
}

TEST_F(PackedFolder, FailsWhenItIsAFile) {
    File(L"tree");
    EXPECT_TRUE(FAILED(Pack()));
    EXPECT_THAT(m_names, IsEmpty());
}

TEST_F(PackedFolder, EndsAtTheFirstFailingAddition) {
    for (const wchar_t* name : {L"tree\\a", L"tree\\b", L"tree\\c", L"tree\\d"})
        File(name);
    m_failingAddition = 2;
    EXPECT_EQ(Pack(), E_ACCESSDENIED);
    EXPECT_EQ(m_names.size(), 2U);
}

TEST_F(PackedFolder, EndsAtAFailureInASubfolder) {
    File(L"tree\\one\\a");
    File(L"tree\\two\\b");
    File(L"tree\\x");
    File(L"tree\\z");
    m_failingAddition = 1;
    EXPECT_EQ(Pack(), E_ACCESSDENIED);
    EXPECT_EQ(m_names.size(), 1U);
}

TEST_F(PackedFolder, ReturnsTheLastAdditionsResult) {
    File(L"tree\\a");
    m_result = S_FALSE;
    EXPECT_EQ(Pack(), S_FALSE);
}

TEST_F(PackedFolder, MayBeDeep) {
    std::wstring name = L"tree";
    for (int level = 0; level < 60; ++level)
        name += L"\\d";
    File(name + L"\\leaf.txt");
    EXPECT_EQ(Pack(), S_OK);
    EXPECT_THAT(m_names, ElementsAre((name + L"\\leaf.txt").substr(5)));
}

// ---- deleting ----

using DeletedFolder = Folders;

TEST_F(DeletedFolder, GoesWithAllItHolds) {
    File(L"tree\\a.txt");
    File(L"tree\\sub\\b.txt");
    File(L"tree\\sub\\subsub\\c.txt");
    Folder(L"tree\\empty");
    File(L"beside.txt");
    EXPECT_TRUE(DeleteFolderTree(m_folder.Path(L"tree")));
    EXPECT_FALSE(Exists(L"tree"));
    EXPECT_TRUE(Exists(L"beside.txt"));
}

TEST_F(DeletedFolder, GoesWithHiddenAndSystemEntriesToo) {
    File(L"tree\\hidden.txt");
    File(L"tree\\system\\a.txt");
    Mark(L"tree\\hidden.txt", FILE_ATTRIBUTE_HIDDEN);
    Mark(L"tree\\system", FILE_ATTRIBUTE_SYSTEM);
    EXPECT_TRUE(DeleteFolderTree(m_folder.Path(L"tree")));
    EXPECT_FALSE(Exists(L"tree"));
}

TEST_F(DeletedFolder, StaysWhereAFileIsReadOnly) {
    File(L"tree\\sub\\readonly.txt");
    File(L"tree\\sub\\plain.txt");
    File(L"tree\\other\\a.txt");
    Mark(L"tree\\sub\\readonly.txt", FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(DeleteFolderTree(m_folder.Path(L"tree")));
    EXPECT_TRUE(Exists(L"tree\\sub\\readonly.txt"));
    EXPECT_FALSE(Exists(L"tree\\sub\\plain.txt"));
    EXPECT_FALSE(Exists(L"tree\\other"));
    EXPECT_EQ(GetFileAttributesW(m_folder.Path(L"tree\\sub\\readonly.txt").c_str()) &
                  FILE_ATTRIBUTE_READONLY,
              static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    Unmark(L"tree\\sub\\readonly.txt");
}

TEST_F(DeletedFolder, StaysWhereAFileIsInUse) {
    File(L"tree\\used.txt");
    File(L"tree\\plain.txt");
    const HandleHolder used =
        HoldHandle(CreateFileW(m_folder.Path(L"tree\\used.txt").c_str(), GENERIC_READ, 0, nullptr,
                               OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(used);
    EXPECT_FALSE(DeleteFolderTree(m_folder.Path(L"tree")));
    EXPECT_TRUE(Exists(L"tree\\used.txt"));
    EXPECT_FALSE(Exists(L"tree\\plain.txt"));
}

TEST_F(DeletedFolder, IsNotGoneWhereThereWasNone) {
    EXPECT_FALSE(DeleteFolderTree(m_folder.Path(L"tree")));
}

TEST_F(DeletedFolder, IsNotAFile) {
    File(L"tree");
    EXPECT_FALSE(DeleteFolderTree(m_folder.Path(L"tree")));
    EXPECT_TRUE(Exists(L"tree"));
}

// A link to a folder. Where the platform cannot make one (Wine), the host system's tool does; the
// platform then sees a reparse point but cannot remove it.
class LinkedFolder : public Folders {
  protected:
    void Link(const std::wstring& name, const std::wstring& target) {
        const std::wstring link = m_folder.Path(name);
        if (CreateSymbolicLinkW(link.c_str(), m_folder.Path(target).c_str(),
                                SYMBOLIC_LINK_FLAG_DIRECTORY) &&
            Exists(name))
            return;
        m_removable = false;
        m_hostLink = HostPath(link);
        m_linkName = name;
        RunHostTool(L"ln",
                    L"-s \"" + HostPath(m_folder.Path(target)) + L"\" \"" + HostPath(link) + L"\"");
        for (int wait = 0; wait < 100 && !Exists(name); ++wait)
            Sleep(50);
        ASSERT_TRUE(Exists(name)) << "no link could be made";
    }

    void TearDown() override {
        if (!m_hostLink.empty())
            RunHostTool(L"rm", L"-f \"" + m_hostLink + L"\"");
        for (int wait = 0; wait < 100 && Exists(m_linkName); ++wait)
            Sleep(50);
    }

    bool m_removable = true;

  private:
    std::wstring m_hostLink;
    std::wstring m_linkName;

    // The host's name of a path, which Wine alone knows.
    static std::wstring HostPath(const std::wstring& path) {
        using GetHostName = char*(CDECL*)(const wchar_t*);
        const auto getHostName = reinterpret_cast<GetHostName>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
        if (getHostName == nullptr)
            return path;
        char* const name = getHostName(path.c_str());
        std::wstring text(name, name + strlen(name));
        HeapFree(GetProcessHeap(), 0, name);
        return text;
    }
    static void RunHostTool(const std::wstring& tool, const std::wstring& arguments) {
        std::wstring command = tool + L" " + arguments;
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION process = {};
        ASSERT_TRUE(CreateProcessW((L"\\\\?\\unix\\bin\\" + tool).c_str(), command.data(), nullptr,
                                   nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
        // A host process has no handles.
        const HandleHolder thread(process.hThread);
        const HandleHolder handle(process.hProcess);
    }
};

TEST_F(LinkedFolder, StaysWhenTheLinkToItIsDeleted) {
    File(L"outside\\precious.txt");
    Folder(L"outside\\empty");
    File(L"tree\\a.txt");
    Link(L"tree\\link", L"outside");
    EXPECT_EQ(DeleteFolderTree(m_folder.Path(L"tree")), m_removable);
    EXPECT_EQ(Exists(L"tree\\link"), !m_removable);
    EXPECT_FALSE(Exists(L"tree\\a.txt"));
    EXPECT_TRUE(Exists(L"outside\\precious.txt"));
    EXPECT_TRUE(Exists(L"outside\\empty"));
}

TEST_F(LinkedFolder, StaysWhenItIsEmpty) {
    Folder(L"outside");
    Folder(L"tree");
    Link(L"tree\\link", L"outside");
    EXPECT_EQ(DeleteFolderTree(m_folder.Path(L"tree")), m_removable);
    EXPECT_TRUE(Exists(L"outside"));
}

TEST_F(LinkedFolder, StaysWhenTheLinkItselfIsToBeDeleted) {
    File(L"outside\\precious.txt");
    Link(L"tree", L"outside");
    EXPECT_EQ(DeleteFolderTree(m_folder.Path(L"tree")), m_removable);
    EXPECT_EQ(Exists(L"tree"), !m_removable);
    EXPECT_TRUE(Exists(L"outside\\precious.txt"));
}

} // namespace
} // namespace zt
