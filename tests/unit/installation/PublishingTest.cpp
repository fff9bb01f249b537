// The publishing components' stand-ins, as far as the program's runs do not show them: the archive
// component with many and odd files, and the settings with which an installation starts.
#include "tests/support/Isolation.h"
#include "tests/unit/installation/Kit.h"

#include "components/ComponentIds.h"
#include "components/contracts/Publishing.h"
#include "installation/runtime/Utf8.h"
#include "installation/setup/Layout.h"
#include "installation/zip/Zip.h"

#include <comdef.h>
#include <gmock/gmock.h>
#include <psapi.h>

#include <fstream>

namespace devinst::test {
namespace {

namespace fs = std::filesystem;
using Microsoft::WRL::ComPtr;
using zt::ArchiveComponent;

// The most memory that this process has had in use so far, in bytes.
std::size_t PeakMemory() {
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof(counters);
    EXPECT_TRUE(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters)));
    EXPECT_GT(counters.PeakWorkingSetSize, 0u);
    return counters.PeakWorkingSetSize;
}

class ArchiveStandIn : public testing::Test {
  protected:
    ArchiveStandIn() {
        EXPECT_EQ(m_library.Create(CLSID_Archive, IID_Archive,
                                   reinterpret_cast<void**>(m_archive.GetAddressOf())),
                  S_OK);
    }
    std::wstring File(const std::wstring& name, const std::string& content) {
        const fs::path path = m_folder.Path(name);
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path.wstring();
    }
    HRESULT Create(LONG mode = 2) {
        return ArchiveComponent::Create::Call(m_archive.Get(),
                                              _bstr_t(m_folder.Path(L"a.kvb").c_str()), mode);
    }
    HRESULT Add(const std::wstring& path, const std::wstring& name,
                VARIANT_BOOL flag = VARIANT_TRUE) {
        return ArchiveComponent::AddFile::Call(m_archive.Get(), _bstr_t(path.c_str()),
                                               _bstr_t(name.c_str()), flag);
    }
    HRESULT Close() { return ArchiveComponent::Close::Call(m_archive.Get()); }

    zt::test::RegistryOverride m_registry{HKEY_LOCAL_MACHINE};
    zt::test::TemporaryFolder m_folder;
    RegisteredLibrary m_library{L"zt-publishing.dll"};
    ComPtr<IUnknown> m_archive;
};

TEST_F(ArchiveStandIn, PacksEmptyLongAndNonLatinNames) {
    const std::wstring longName = std::wstring(200, L'n') + L".txt";
    ASSERT_EQ(Create(), S_OK);
    EXPECT_EQ(Add(File(L"empty", ""), L"empty"), S_OK);
    EXPECT_EQ(Add(File(L"long", "long"), L"sub\\" + longName), S_OK);
    EXPECT_EQ(Add(File(L"\x65E5.txt", "day"), L"\x0416\\\x65E5.txt"), S_OK);
    EXPECT_EQ(Close(), S_OK);
    ZipReader reader(m_folder.Path(L"a.kvb"));
    EXPECT_EQ(reader.Read("empty"), "");
    EXPECT_EQ(reader.Read("sub/" + ToUtf8(longName)), "long");
    EXPECT_EQ(reader.Read(ToUtf8(L"\x0416/\x65E5.txt")), "day");
}

TEST_F(ArchiveStandIn, Packs10000Files) {
    ASSERT_EQ(Create(), S_OK);
    const std::wstring file = File(L"one", "one");
    for (int i = 0; i < 10000; ++i)
        ASSERT_EQ(Add(file, L"folder\\" + std::to_wstring(i)), S_OK);
    EXPECT_EQ(Close(), S_OK);
    ZipReader reader(m_folder.Path(L"a.kvb"));
    EXPECT_EQ(reader.Entries().size(), 10000u);
    EXPECT_EQ(reader.Read("folder/0"), "one");
    EXPECT_EQ(reader.Read("folder/9999"), "one");
}

TEST_F(ArchiveStandIn, Compresses) {
    ASSERT_EQ(Create(), S_OK);
    EXPECT_EQ(Add(File(L"large", std::string(5 << 20, 'a')), L"large"), S_OK);
    EXPECT_EQ(Close(), S_OK);
    EXPECT_LT(fs::file_size(m_folder.Path(L"a.kvb")), 64u * 1024);
    EXPECT_EQ(ZipReader(m_folder.Path(L"a.kvb")).Read("large"), std::string(5 << 20, 'a'));
}

TEST_F(ArchiveStandIn, HoldsNoContentInMemory) {
    constexpr std::uintmax_t Size = 128u << 20;
    const std::wstring large = File(L"large", "");
    fs::resize_file(large, Size);
    ASSERT_EQ(Create(), S_OK);
    const std::size_t before = PeakMemory();
    EXPECT_EQ(Add(large, L"large"), S_OK);
    EXPECT_EQ(Close(), S_OK);
    EXPECT_LT(PeakMemory() - before, Size / 8);
    EXPECT_EQ(ZipReader(m_folder.Path(L"a.kvb")).Entries().at(0).size, Size);
}

TEST_F(ArchiveStandIn, RefusesWhatItDoesNotKnow) {
    const std::wstring file = File(L"one", "one");
    EXPECT_EQ(Create(1), E_INVALIDARG);
    EXPECT_EQ(Add(file, L"one"), E_UNEXPECTED);
    EXPECT_EQ(Close(), E_UNEXPECTED);
    ASSERT_EQ(Create(), S_OK);
    EXPECT_EQ(Add(file, L"one", 1), E_INVALIDARG);
    EXPECT_EQ(Add(file, L"\\one"), E_INVALIDARG);
    EXPECT_EQ(Add(file, L""), E_INVALIDARG);
    EXPECT_TRUE(FAILED(Add(m_folder.Path(L"missing"), L"missing")));
    EXPECT_EQ(Close(), S_OK);
    EXPECT_TRUE(ZipReader(m_folder.Path(L"a.kvb")).Entries().empty());
}

TEST_F(ArchiveStandIn, CannotBeMadeInAMissingFolder) {
    EXPECT_TRUE(FAILED(ArchiveComponent::Create::Call(
        m_archive.Get(), _bstr_t(m_folder.Path(L"missing\\a.kvb").c_str()), 2)));
}

// ---- settings of the products ----

TEST(ProductSettings, AreTheMachinesDefaultsAndAnEmptyKeyOfTheUser) {
    const zt::test::RegistryOverride user(HKEY_CURRENT_USER);
    const zt::test::RegistryOverride machine(HKEY_LOCAL_MACHINE);
    WriteProductSettings();
    const struct {
        const wchar_t* defaults;
        const wchar_t* userKey;
    } rows[] = {
        {L"ZeltorCatalog\\Components\\Exporter", L"ZeltorCatalog\\1.4"},
        {L"ZeltorManual\\Components\\KV3D", L"ZeltorManual\\1.4"},
        {L"ZeltorLearning\\Components\\KV3D", L"ZeltorLearning\\1.4"},
        {L"ZeltorText\\Components\\KV3D", L"ZeltorText\\1.0"},
        {L"ZeltorIllustrator\\Components\\Exporter", L"ZeltorIllustrator\\1.0"},
    };
    const std::wstring maker = L"Software\\Morvenit\\";
    for (const auto& row : rows) {
        EXPECT_EQ(MachineText(maker + row.defaults, L"Footer"),
                  L"Published by the development installation");
        HKEY key = nullptr;
        EXPECT_EQ(
            RegOpenKeyExW(HKEY_CURRENT_USER, (maker + row.userKey).c_str(), 0, KEY_READ, &key),
            ERROR_SUCCESS);
        RegCloseKey(key);
    }
}

} // namespace
} // namespace devinst::test
