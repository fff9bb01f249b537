// The components that a specification names: libraries, handlers, export handler.
#include "components/ComponentIds.h"
#include "tests/support/FakeHandler.h"
#include "tests/support/SpecificationFixture.h"
#include "tests/support/TestClasses.h"

namespace zt::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SpecificationHandlers : public SpecificationTest {
  protected:
    bool LoadWith(const std::string& word, const std::string& content) {
        m_calls.clear();
        Describe("<configuration class=\"" + word + "\">" + content + "</configuration>");
        return Load();
    }
    CallList CallsOn(const std::string& object) const {
        CallList found;
        for (const std::string& call : Calls())
            if (call.starts_with(object + "."))
                found.push_back(call);
        return found;
    }
};

// ---- component libraries ----

class HandlerLibraries : public SpecificationHandlers {
  protected:
    HandlerLibraries() { SetEnvironmentVariableW(L"ZT_TEST_REGISTERED", nullptr); }
    ~HandlerLibraries() override { SetEnvironmentVariableW(L"ZT_TEST_REGISTERED", nullptr); }

    void Install(const wchar_t* fixture, const wchar_t* name) {
        std::filesystem::create_directories(std::filesystem::path(SpecPath(name)).parent_path());
        std::filesystem::copy_file(FixturePath(fixture), SpecPath(name));
    }
    // The libraries that were asked to register themselves, below the specification folder.
    std::vector<std::wstring> Registered() const {
        wchar_t text[8192] = {};
        GetEnvironmentVariableW(L"ZT_TEST_REGISTERED", text, 8192);
        std::vector<std::wstring> names;
        std::wstring rest = text;
        for (std::size_t end = 0; (end = rest.find(L';')) != std::wstring::npos;) {
            EXPECT_TRUE(rest.starts_with(SpecPath() + L"\\"));
            names.push_back(rest.substr(SpecPath().size() + 1, end - SpecPath().size() - 1));
            rest.erase(0, end + 1);
        }
        return names;
    }
};

TEST_F(HandlerLibraries, OfThisPlatformRegisterThemselvesInTheirOrder) {
    Install(L"handler-good.dll", L"b.dll");
    Install(L"handler-good.dll", L"a.dll");
    Install(L"handler-good.dll", L"c.dll");
    EXPECT_TRUE(LoadWith("TEXT", "<handlers><handler platform=\"x64\">b.dll</handler>"
                                 "<other/><handler platform=\"x64\">a.dll</handler></handlers>"
                                 "<handlers><handler platform=\"x64\">c.dll</handler></handlers>"));
    EXPECT_THAT(Registered(), ElementsAre(L"b.dll", L"a.dll", L"c.dll"));
    EXPECT_THAT(AllCalls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"));
}

TEST_F(HandlerLibraries, OfAnotherPlatformAreSkipped) {
    Install(L"handler-good.dll", L"a.dll");
    EXPECT_TRUE(LoadWith("TEXT", "<handlers><handler>a.dll</handler>"
                                 "<handler platform=\"\">a.dll</handler>"
                                 "<handler platform=\"X64\">a.dll</handler>"
                                 "<handler platform=\"x64 \">a.dll</handler>"
                                 "<handler platform=\"x86\">a.dll</handler></handlers>"
                                 "<handler platform=\"x64\">a.dll</handler>"));
    EXPECT_THAT(Registered(), IsEmpty());
}

TEST_F(HandlerLibraries, AreRegisteredForEveryClass) {
    Install(L"handler-good.dll", L"a.dll");
    for (const char* word : {"IPC", "PROC", "TRNG", "TEXT", "ILLUS"}) {
        SetEnvironmentVariableW(L"ZT_TEST_REGISTERED", nullptr);
        EXPECT_TRUE(
            LoadWith(word, "<handlers><handler platform=\"x64\">a.dll</handler></handlers>"));
        EXPECT_THAT(Registered(), ElementsAre(L"a.dll")) << word;
    }
}

TEST_F(HandlerLibraries, AreTakenFromTheLanguageSubfolderFirst) {
    Install(L"handler-good.dll", L"a.dll");
    Install(L"handler-good.dll", L"de\\a.dll");
    m_language = L"de";
    EXPECT_TRUE(LoadWith("TEXT", "<handlers><handler platform=\"x64\">a.dll</handler></handlers>"));
    EXPECT_THAT(Registered(), ElementsAre(L"de\\a.dll"));
}

TEST_F(HandlerLibraries, ThatCannotBeRegisteredAreNoFailure) {
    Install(L"handler-refusing.dll", L"refusing.dll");
    Install(L"handler-plain.dll", L"plain.dll");
    Install(L"handler-good.dll", L"good.dll");
    WriteFile(SpecPath(L"text.dll"), "not a library");
    EXPECT_TRUE(LoadWith("TEXT", "<handlers><handler platform=\"x64\">missing.dll</handler>"
                                 "<handler platform=\"x64\">text.dll</handler>"
                                 "<handler platform=\"x64\">plain.dll</handler>"
                                 "<handler platform=\"x64\"/>"
                                 "<handler platform=\"x64\">*</handler>"
                                 "<handler platform=\"x64\">refusing.dll</handler>"
                                 "<handler platform=\"x64\">good.dll</handler></handlers>"));
    EXPECT_THAT(Registered(), ElementsAre(L"refusing.dll", L"good.dll"));
    EXPECT_THAT(Failures(), IsEmpty());
}

// ---- sequence-number and notification handlers ----

class KernelHandlers : public SpecificationHandlers {
  protected:
    static constexpr char Both[] = "<seqnoHandler>Zt.Numbers</seqnoHandler>"
                                   "<notifyHandler>Zt.Notices</notifyHandler>";
    void DropHandlers() {
        m_sequenceNumberHandler.Reset();
        m_notificationHandler.Reset();
    }

    FakeHandler m_numbers{m_calls, "numbers"};
    FakeHandler m_notices{m_calls, "notices"};
    TestClass m_numbersClass{L"Zt.Numbers", TestClass::Gives(&m_numbers)};
    TestClass m_noticesClass{L"Zt.Notices", TestClass::Gives(&m_notices)};

    void TearDown() override { DropHandlers(); }
};

TEST_F(KernelHandlers, AreCreatedAndGivenTheKernelBeforeTheTablesAreLoaded) {
    for (const char* word : {"IPC", "ILLUS"}) {
        EXPECT_TRUE(LoadWith(word, Both));
        const CallList calls = Calls();
        ASSERT_GE(calls.size(), 4U);
        EXPECT_THAT(CallList(calls.begin(), calls.begin() + 4),
                    ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                "numbers.Kernel = object (by reference)",
                                "notices.Kernel = object (by reference)",
                                "KernelAdmin.LoadRefTables(\"SPEC\\RefTables.xml\")"));
        EXPECT_EQ(m_sequenceNumberHandler.Get(), &m_numbers);
        EXPECT_EQ(m_notificationHandler.Get(), &m_notices);
        EXPECT_EQ(m_numbers.kernel, m_kernel.Get());
        EXPECT_EQ(m_notices.kernel, m_kernel.Get());
        EXPECT_EQ(m_numbers.References(), 1);
        DropHandlers();
    }
}

TEST_F(KernelHandlers, AreAskedForIUnknownAtTheirCreation) {
    EXPECT_TRUE(LoadWith("IPC", Both));
    EXPECT_THAT(m_numbersClass.Asked(), ElementsAre(IID_IUnknown));
    EXPECT_THAT(m_noticesClass.Asked(), ElementsAre(IID_IUnknown));
}

TEST_F(KernelHandlers, AreNotCreatedForOtherClasses) {
    for (const char* word : {"PROC", "TRNG", "TEXT"}) {
        EXPECT_TRUE(LoadWith(word, Both));
        EXPECT_THAT(m_numbersClass.Asked(), IsEmpty());
        EXPECT_EQ(m_sequenceNumberHandler, nullptr);
        EXPECT_EQ(m_notificationHandler, nullptr);
    }
}

TEST_F(KernelHandlers, AreNotCreatedWithoutAName) {
    EXPECT_TRUE(LoadWith("IPC", "<seqnoHandler/>"));
    EXPECT_EQ(m_sequenceNumberHandler, nullptr);
    EXPECT_EQ(m_notificationHandler, nullptr);
    EXPECT_THAT(Failures(), IsEmpty());
}

TEST_F(KernelHandlers, ThatAreUnknownAreLeftOut) {
    EXPECT_TRUE(LoadWith("IPC", "<seqnoHandler>Zt.No.Such.Class</seqnoHandler>"
                                "<notifyHandler>Zt.Notices</notifyHandler>"));
    EXPECT_EQ(m_sequenceNumberHandler, nullptr);
    EXPECT_EQ(m_notificationHandler.Get(), &m_notices);
    EXPECT_THAT(Failures(), IsEmpty());
}

TEST_F(KernelHandlers, ThatAreNotHandedOverAreLeftOut) {
    const TestClass failing(L"Zt.Failing", TestClass::Fails(E_FAIL));
    const TestClass nothing(L"Zt.Nothing", TestClass::GivesNothing());
    EXPECT_TRUE(LoadWith("IPC", "<seqnoHandler>Zt.Failing</seqnoHandler>"
                                "<notifyHandler>Zt.Nothing</notifyHandler>"));
    EXPECT_EQ(m_sequenceNumberHandler, nullptr);
    EXPECT_EQ(m_notificationHandler, nullptr);
    EXPECT_THAT(Failures(), IsEmpty());
}

TEST_F(KernelHandlers, AreKeptWhenTheyAnswerNoCallsByName) {
    m_numbers.dispatchResult = E_NOINTERFACE;
    m_notices.dispatchObject = false; // success without an object
    EXPECT_TRUE(LoadWith("IPC", Both));
    EXPECT_EQ(m_sequenceNumberHandler.Get(), &m_numbers);
    EXPECT_EQ(m_notificationHandler.Get(), &m_notices);
    EXPECT_THAT(CallsOn("numbers"), IsEmpty());
    EXPECT_THAT(Failures(), IsEmpty());
}

TEST_F(KernelHandlers, AreKeptWhenTheyDoNotTakeTheKernel) {
    m_numbers.knowsKernel = false;
    m_notices.putByReferenceResult = DISP_E_MEMBERNOTFOUND;
    m_notices.putResult = E_FAIL;
    EXPECT_TRUE(LoadWith("IPC", Both));
    EXPECT_EQ(m_sequenceNumberHandler.Get(), &m_numbers);
    EXPECT_EQ(m_notificationHandler.Get(), &m_notices);
    EXPECT_THAT(CallsOn("numbers"), IsEmpty());
    EXPECT_THAT(Calls(), testing::IsSupersetOf({"notices.Kernel = object (by reference)",
                                                "notices.Kernel = object"}));
    EXPECT_THAT(Failures(), IsEmpty());
}

// ---- document handler ----

TEST_F(SpecificationHandlers, StoreTheDocumentHandlerAsItStands) {
    for (const char* word : {"PROC", "TRNG", "TEXT"}) {
        m_documentHandler = L"old";
        EXPECT_TRUE(LoadWith(word, "<docHandler>Zt Doc;%s \"x\"</docHandler>"));
        EXPECT_STREQ(m_documentHandler, L"Zt Doc;%s \"x\"") << word;
    }
    EXPECT_TRUE(LoadWith("TEXT", "<docHandler/>"));
    EXPECT_STREQ(m_documentHandler, L"");
}

TEST_F(SpecificationHandlers, LeaveTheDocumentHandlerAloneWhereThereIsNone) {
    m_documentHandler = L"old";
    EXPECT_TRUE(LoadWith("TEXT", ""));
    EXPECT_STREQ(m_documentHandler, L"old");
}

TEST_F(SpecificationHandlers, AreNotReadForCataloguesAndIllustrations) {
    for (const char* word : {"IPC", "ILLUS"}) {
        EXPECT_TRUE(LoadWith(word, "<docHandler>new</docHandler>"));
        EXPECT_EQ(m_documentHandler.length(), 0U) << word;
    }
}

// ---- export handler ----

class ExportHandlers : public SpecificationHandlers {
  protected:
    ExportHandlers() {
        m_handler.Answer(IID_ExportHandler);
        m_handler.Answer(IID_ScriptExporter, m_exporter.Get());
        m_exporter.Return<ScriptExporter::LoadScript>(S_OK);
    }
    void TearDown() override { m_exportHandler.Reset(); }

    FakeObject<ExportHandler> m_handler{m_calls};
    FakeObject<ScriptExporter> m_exporter{m_calls};
    TestClass m_class{L"Zt.Export", TestClass::Gives(m_handler.Get())};
};

TEST_F(ExportHandlers, LoadTheirScriptBeforeTheMetadata) {
    for (const char* word : {"PROC", "TRNG", "TEXT"}) {
        EXPECT_TRUE(
            LoadWith(word, "<exportHandler script=\"export.xsl\">Zt.Export</exportHandler>"));
        const CallList calls = AllCalls();
        ASSERT_GE(calls.size(), 4U);
        EXPECT_THAT(CallList(calls.end() - 4, calls.end()),
                    ElementsAre("KernelAdmin.GetSpecificationFolder()",
                                "ScriptExporter.LoadScript(\"SPEC\\export.xsl\")",
                                "KernelAdmin.GetSpecificationFolder()",
                                "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"))
            << word;
        EXPECT_EQ(m_exportHandler.Get(), m_handler.Get());
        EXPECT_EQ(m_handler.References(), 1);
        EXPECT_EQ(m_exporter.References(), 0);
    }
}

TEST_F(ExportHandlers, AreAskedForTheirOwnInterfaceAtTheirCreation) {
    EXPECT_TRUE(LoadWith("TEXT", "<exportHandler>Zt.Export</exportHandler>"));
    EXPECT_THAT(m_class.Asked(), ElementsAre(IID_ExportHandler));
}

TEST_F(ExportHandlers, TakeTheScriptFromTheLanguageSubfolderFirst) {
    WriteFile(SpecPath(L"de\\export.xsl"), "script");
    m_language = L"de";
    EXPECT_TRUE(LoadWith("TEXT", "<exportHandler script=\"export.xsl\">Zt.Export</exportHandler>"));
    EXPECT_THAT(CallsOn("ScriptExporter"),
                ElementsAre("ScriptExporter.LoadScript(\"SPEC\\de\\export.xsl\")"));
}

TEST_F(ExportHandlers, AreKeptWithoutAScript) {
    for (const char* element : {"<exportHandler>Zt.Export</exportHandler>",
                                "<exportHandler script=\"\">Zt.Export</exportHandler>"}) {
        EXPECT_TRUE(LoadWith("TEXT", element));
        EXPECT_EQ(m_exportHandler.Get(), m_handler.Get()) << element;
        EXPECT_THAT(CallsOn("ScriptExporter"), IsEmpty()) << element;
    }
}

TEST_F(ExportHandlers, AreDroppedWhenTheyRefuseTheirScript) {
    m_exporter.Return<ScriptExporter::LoadScript>(E_FAIL);
    EXPECT_TRUE(LoadWith("TEXT", "<exportHandler script=\"export.xsl\">Zt.Export</exportHandler>"));
    EXPECT_EQ(m_exportHandler, nullptr);
    EXPECT_EQ(m_handler.References(), 0);
    EXPECT_THAT(Failures(), IsEmpty());
    EXPECT_EQ(Calls().back(), "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")");
}

TEST_F(ExportHandlers, AreKeptWhenTheyTakeNoScripts) {
    FakeObject<ExportHandler> plain(m_calls, "plain");
    plain.Answer(IID_ExportHandler);
    FakeObject<ExportHandler> hollow(m_calls, "hollow");
    hollow.Answer(IID_ExportHandler);
    hollow.Answer(IID_ScriptExporter, nullptr); // success without an object
    for (FakeObject<ExportHandler>* handler : {&plain, &hollow}) {
        const TestClass given(L"Zt.Plain", TestClass::Gives(handler->Get()));
        EXPECT_TRUE(LoadWith("TEXT", "<exportHandler script=\"e.xsl\">Zt.Plain</exportHandler>"));
        EXPECT_EQ(m_exportHandler.Get(), handler->Get());
        EXPECT_THAT(Failures(), IsEmpty());
    }
    m_exportHandler.Reset();
}

TEST_F(ExportHandlers, ThatCannotBeCreatedAreLeftOut) {
    FakeObject<KernelProject> other(m_calls); // does not answer the interface
    const TestClass otherClass(L"Zt.Other", TestClass::Gives(other.Get()));
    const TestClass failing(L"Zt.Failing", TestClass::Fails(E_FAIL));
    const TestClass nothing(L"Zt.Nothing", TestClass::GivesNothing());
    for (const char* progId : {"Zt.No.Such.Class", "Zt.Other", "Zt.Failing", "Zt.Nothing", ""}) {
        EXPECT_TRUE(LoadWith("TEXT", std::string("<exportHandler script=\"e.xsl\">") + progId +
                                         "</exportHandler>"));
        EXPECT_EQ(m_exportHandler, nullptr) << progId;
        EXPECT_THAT(CallsOn("ScriptExporter"), IsEmpty()) << progId;
        EXPECT_THAT(Failures(), IsEmpty()) << progId;
    }
}

TEST_F(ExportHandlers, AreNotCreatedWhereNoneIsNamed) {
    EXPECT_TRUE(LoadWith("TEXT", ""));
    EXPECT_EQ(m_exportHandler, nullptr);
    EXPECT_THAT(m_class.Asked(), IsEmpty());
}

TEST_F(ExportHandlers, AreNotCreatedForCataloguesAndIllustrations) {
    for (const char* word : {"IPC", "ILLUS"}) {
        EXPECT_TRUE(LoadWith(word, "<exportHandler script=\"e.xsl\">Zt.Export</exportHandler>"));
        EXPECT_EQ(m_exportHandler, nullptr) << word;
        EXPECT_THAT(m_class.Asked(), IsEmpty()) << word;
    }
}

} // namespace
} // namespace zt::test
