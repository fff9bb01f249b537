#include "tests/support/Isolation.h"
#include "tests/unit/installation/Kit.h"

#include "installation/runtime/Utf8.h"
#include "installation/setup/Layout.h"
#include "installation/setup/Libraries.h"
#include "installation/setup/Options.h"
#include "installation/setup/Pack.h"
#include "installation/setup/SetupError.h"
#include "installation/zip/Zip.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace devinst::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using zt::test::RegistryOverride;
using zt::test::TemporaryFolder;

// ---- command line ----

TEST(SetupOptions, AllCanBeCombined) {
    const SetupOptions options =
        ParseOptions({L"--pack", L"from", L"to.kvp", L"--root", L"C:\\inst", L"--register",
                      L"--unregister", L"--pack", L"more", L"more.kvp"});
    EXPECT_TRUE(options.registerLibraries);
    EXPECT_TRUE(options.unregisterLibraries);
    EXPECT_EQ(options.root, L"C:\\inst");
    ASSERT_EQ(options.packs.size(), 2u);
    EXPECT_EQ(options.packs[0].folder, L"from");
    EXPECT_EQ(options.packs[0].archive, L"to.kvp");
    EXPECT_EQ(options.packs[1].folder, L"more");
}

TEST(SetupOptions, OnlyWhatIsAskedForIsDone) {
    const SetupOptions options = ParseOptions({L"--register"});
    EXPECT_TRUE(options.registerLibraries);
    EXPECT_FALSE(options.unregisterLibraries);
    EXPECT_FALSE(options.root.has_value());
    EXPECT_TRUE(options.packs.empty());
    EXPECT_FALSE(options.help);
}

struct UsageCase {
    std::vector<std::wstring> arguments;
    const char* complaint;
};

TEST(SetupOptions, CommandLineWithoutSenseIsRefused) {
    const UsageCase cases[] = {
        {{}, "nothing to do"},
        {{L"--install"}, "--install: no such option"},
        {{L"root"}, "root: no such option"},
        {{L"--root"}, "--root: a value is missing"},
        {{L"--root", L""}, "--root: a value is missing"},
        {{L"--root", L"--register"}, "--root: a value is missing"},
        {{L"--pack", L"from"}, "--pack: a value is missing"},
    };
    for (const UsageCase& known : cases) {
        try {
            ParseOptions(known.arguments);
            ADD_FAILURE() << "not refused: " << known.complaint;
        } catch (const UsageError& error) {
            EXPECT_STREQ(error.what(), known.complaint);
        }
    }
}

// ---- files ----

std::vector<std::string> FilesBelow(const fs::path& folder) {
    std::vector<std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files.push_back(ToUtf8(entry.path().lexically_relative(folder).generic_wstring()));
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string Content(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(SetupLayout, HasTheFilesOfEverySpecification) {
    const TemporaryFolder root;
    LayOut(KitFolder(), root.Path());
    const fs::path store = root.Path(L"data\\Morvenit\\KVProductFamily\\IPCCFG");
    std::vector<std::string> expected;
    for (const std::string name : {"Catalog", "Illustrator", "Learning", "Manual", "Text"}) {
        expected.push_back(name + ".cfg");
        for (const char* const file :
             {"Declarations.xml", "Export.script", "Metadata.xml", "RefTables.bak", "RefTables.xml",
              "Templates.xml", "Types.xml", "zt-handlers.dll"})
            expected.push_back(name + "/" + file);
    }
    expected.emplace_back("Manual/de/Export.script");
    expected.emplace_back("Manual/de/Types.xml");
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(FilesBelow(store), expected);
}

struct ClassCase {
    const wchar_t* file;
    const char* specificationClass;
};

TEST(SetupLayout, HasASpecificationOfEachClass) {
    const TemporaryFolder root;
    LayOut(KitFolder(), root.Path());
    const ClassCase cases[] = {{L"Catalog.cfg", "class=\"IPC\""},
                               {L"Manual.cfg", "class=\"PROC\""},
                               {L"Learning.cfg", "class=\"TRNG\""},
                               {L"Text.cfg", "class=\"TEXT\""},
                               {L"Illustrator.cfg", "class=\"ILLUS\""}};
    const fs::path store = root.Path(L"data\\Morvenit\\KVProductFamily\\IPCCFG");
    for (const ClassCase& known : cases)
        EXPECT_THAT(Content(store / known.file), testing::HasSubstr(known.specificationClass));
}

TEST(SetupLayout, HasTheAxesCatalogueAndItsModels) {
    const TemporaryFolder root;
    LayOut(KitFolder(), root.Path());
    EXPECT_THAT(FilesBelow(root.Path(L"data\\Morvenit\\KVProductFamily\\Axes")),
                ElementsAre("axes.xml"));
    EXPECT_THAT(FilesBelow(root.Path(L"data\\KVProductFamily\\Axes")),
                ElementsAre("pump-axes.wrl", "std.wrl", "valve-axes.wrl"));
}

TEST(SetupLayout, HasTheFoldersThatTheInstallationWorksIn) {
    const TemporaryFolder root;
    LayOut(KitFolder(), root.Path());
    for (const wchar_t* const folder :
         {L"work\\Representations", L"work\\Projects", L"exchange", L"publications"})
        EXPECT_TRUE(fs::is_directory(root.Path(folder)));
}

TEST(SetupLayout, ConfigurationNamesItsFoldersWithXmlsSpecialCharactersEscaped) {
    const TemporaryFolder folder;
    const std::wstring root = folder.Path(L"a & b");
    LayOut(KitFolder(), root);
    const std::string rootText = ToUtf8(folder.Path()) + "\\a &amp; b";
    EXPECT_EQ(Content(root + L"\\configuration.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<configuration>\n  <proj-location>" +
                  rootText + "\\work\\Projects</proj-location>\n  <pub-location>" + rootText +
                  "\\publications</pub-location>\n</configuration>\n");
}

std::wstring VersionText(const std::wstring& path, const std::wstring& name) {
    std::vector<BYTE> resource(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data());
    void* text = nullptr;
    UINT length = 0;
    VerQueryValueW(resource.data(), (L"\\StringFileInfo\\040904b0\\" + name).c_str(), &text,
                   &length);
    return text != nullptr ? static_cast<const wchar_t*>(text) : L"(none)";
}

TEST(SetupLayout, ProductExecutableTellsItsVersionInUsEnglish) {
    const TemporaryFolder root;
    LayOut(KitFolder(), root.Path());
    const std::wstring product = root.Path(L"product\\ZTProduct.exe");
    EXPECT_EQ(VersionText(product, L"FileVersion"), L"1, 4, 0, 12");
    EXPECT_EQ(VersionText(product, L"ProductVersion"), L"1, 4, 0, 0");
    EXPECT_EQ(VersionText(product, L"ProductName"), L"Zeltor Development Installation");
}

TEST(SetupLayout, SecondTimeRestoresTheFiles) {
    const TemporaryFolder root;
    LayOut(KitFolder(), root.Path());
    const fs::path backup =
        root.Path(L"data\\Morvenit\\KVProductFamily\\IPCCFG\\Catalog\\RefTables.bak");
    const fs::path description = root.Path(L"data\\Morvenit\\KVProductFamily\\IPCCFG\\Catalog.cfg");
    const std::string before = Content(description);
    fs::remove(backup);
    std::ofstream(description) << "spoilt";
    LayOut(KitFolder(), root.Path());
    EXPECT_TRUE(fs::exists(backup));
    EXPECT_EQ(Content(description), before);
}

TEST(SetupLayout, FolderThatCannotBeMadeIsNamed) {
    const TemporaryFolder folder;
    std::ofstream(fs::path(folder.Path(L"file"))) << "no folder";
    try {
        LayOut(KitFolder(), folder.Path(L"file"));
        ADD_FAILURE() << "no failure";
    } catch (const SetupError& error) {
        EXPECT_THAT(error.what(), testing::StartsWith("cannot create the folder " +
                                                      ToUtf8(folder.Path(L"file\\data"))));
    }
}

// ---- registry ----

TEST(SetupRegistry, NamesTheInstallationsPlaces) {
    const RegistryOverride registry(HKEY_LOCAL_MACHINE);
    WriteRegistry(L"C:\\inst");
    const std::wstring maker = L"Software\\Morvenit";
    EXPECT_EQ(MachineText(maker, L"ZeltorDataFolder"), L"C:\\inst\\data");
    EXPECT_EQ(MachineText(maker + L"\\ZeltorCompiler", L"InstallPathLite"),
              L"\"C:\\inst\\product\\ZTProduct.exe\" /lite");
    EXPECT_EQ(MachineText(maker + L"\\CMSTC", L"ExchangePath"), L"C:\\inst\\exchange");
    EXPECT_EQ(MachineText(maker + L"\\DevelopmentInstallation", L"ConfigurationFile"),
              L"C:\\inst\\configuration.xml");
    EXPECT_EQ(MachineText(maker + L"\\DevelopmentInstallation", L"WorkFolder"), L"C:\\inst\\work");
}

// ---- libraries ----

TEST(SetupLibraries, AreTheOnesBesideTheProgram) {
    const std::vector<fs::path> libraries = ComponentLibraries(KitFolder());
    EXPECT_THAT(libraries, testing::Contains(KitFolder() / L"zt-components.dll"));
    EXPECT_THAT(libraries, testing::Contains(KitFolder() / L"zt-handlers.dll"));
}

TEST(SetupLibraries, MissingOnesAreAFailure) {
    const TemporaryFolder empty;
    EXPECT_THROW(ComponentLibraries(empty.Path()), SetupError);
}

TEST(SetupLibraries, RegisterThemselvesAsInProcessServers) {
    const RegistryOverride registry(HKEY_LOCAL_MACHINE);
    const fs::path library = KitFolder() / L"zt-handlers.dll";
    RegisterLibrary(library);
    const std::wstring classes = L"Software\\Classes\\";
    const std::wstring id = MachineText(classes + L"KVDev.SampleEdit\\CLSID", nullptr);
    EXPECT_EQ(id, L"{8B115251-8907-4CD0-9519-26BCE8686A6E}");
    const std::wstring key = classes + L"CLSID\\" + id;
    EXPECT_EQ(MachineText(key + L"\\InprocServer32", nullptr), library.wstring());
    EXPECT_EQ(MachineText(key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(MachineText(key + L"\\ProgID", nullptr), L"KVDev.SampleEdit");
    for (const wchar_t* const progId :
         {L"KVDev.SequenceNumbers", L"KVDev.Notifications", L"KVDev.Export"})
        EXPECT_NE(MachineText(classes + progId + L"\\CLSID", nullptr), L"(none)");
}

TEST(SetupLibraries, TakeThemselvesOutAgain) {
    const RegistryOverride registry(HKEY_LOCAL_MACHINE);
    const fs::path library = KitFolder() / L"zt-handlers.dll";
    RegisterLibrary(library);
    const std::wstring classes = L"Software\\Classes\\";
    const std::wstring id = MachineText(classes + L"KVDev.SampleEdit\\CLSID", nullptr);
    UnregisterLibrary(library);
    EXPECT_EQ(MachineText(classes + L"KVDev.SampleEdit\\CLSID", nullptr), L"(none)");
    EXPECT_EQ(MachineText(classes + L"CLSID\\" + id + L"\\InprocServer32", nullptr), L"(none)");
    UnregisterLibrary(library); // a second time does no harm
}

TEST(SetupLibraries, FileThatIsNoLibraryIsNamed) {
    const TemporaryFolder folder;
    std::ofstream(fs::path(folder.Path(L"zt-broken.dll"))) << "no library";
    try {
        RegisterLibrary(folder.Path(L"zt-broken.dll"));
        ADD_FAILURE() << "no failure";
    } catch (const SetupError& error) {
        EXPECT_THAT(error.what(),
                    testing::StartsWith("cannot load " + ToUtf8(folder.Path(L"zt-broken.dll"))));
    }
}

// Runs the platform's own registration program.
DWORD RunRegsvr32(const std::wstring& option) {
    std::wstring command =
        L"regsvr32.exe /s " + option + L"\"" + (KitFolder() / L"zt-handlers.dll").wstring() + L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        return GetLastError();
    WaitForSingleObject(process.hProcess, 60000);
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

HRESULT CreateSampleEdit() {
    CLSID classId = {};
    const HRESULT found = CLSIDFromProgID(L"KVDev.SampleEdit", &classId);
    if (FAILED(found))
        return found;
    Microsoft::WRL::ComPtr<IDispatch> object;
    return CoCreateInstance(classId, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&object));
}

// In the machine's real registry, which is left as it was.
TEST(SetupLibraries, AreRegisteredByThePlatformsOwnProgramToo) {
    CLSID classId = {};
    const bool wasThere = SUCCEEDED(CLSIDFromProgID(L"KVDev.SampleEdit", &classId));
    EXPECT_EQ(RunRegsvr32(L"/u "), 0u);
    EXPECT_EQ(CreateSampleEdit(), CO_E_CLASSSTRING);
    EXPECT_EQ(RunRegsvr32(L""), 0u);
    EXPECT_EQ(CreateSampleEdit(), S_OK);
    if (!wasThere) {
        EXPECT_EQ(RunRegsvr32(L"/u "), 0u);
    }
}

// ---- archives ----

TEST(SetupPack, HoldsTheFilesBelowTheFolder) {
    const TemporaryFolder folder;
    fs::create_directories(folder.Path(L"from\\documents"));
    std::ofstream(fs::path(folder.Path(L"from\\index.xml"))) << "<archive/>";
    std::ofstream(fs::path(folder.Path(L"from\\documents\\\u00dc.xml"))) << "<document/>";
    Pack({folder.Path(L"from"), folder.Path(L"a.kvp")});
    ZipReader archive(folder.Path(L"a.kvp"));
    std::vector<std::string> names;
    for (const ZipEntry& entry : archive.Entries())
        names.push_back(entry.name);
    EXPECT_THAT(names, ElementsAre("documents/\u00dc.xml", "index.xml"));
    EXPECT_EQ(archive.Read("index.xml"), "<archive/>");
    EXPECT_EQ(archive.Read("documents/\u00dc.xml"), "<document/>");
}

TEST(SetupPack, MissingFolderIsNamedAndNoArchiveWritten) {
    const TemporaryFolder folder;
    EXPECT_THROW(Pack({folder.Path(L"from"), folder.Path(L"a.kvp")}), SetupError);
    EXPECT_FALSE(fs::exists(folder.Path(L"a.kvp")));
}

} // namespace
} // namespace devinst::test
