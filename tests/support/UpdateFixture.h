// A project, a kernel and an editor control for the tests of the document update: with a document
// that was changed and not saved.
#pragma once

#include "framework/Exceptions.h"
#include "framework/WinApp.h"
#include "support/ComPtr.h"
#include "project/UpdateProjectDocument.h"
#include "tests/support/FakeDispatch.h"
#include "tests/support/FakeKernel.h"
#include "tests/support/RecordingLog.h"
#include "tests/support/TestClasses.h"
#include "tests/support/TestControl.h"

#include <gmock/gmock.h>

#include <comdef.h>

#include <optional>
#include <string>

namespace zt::test {

class DocumentUpdate : public testing::Test {
  protected:
    DocumentUpdate() {
        AfxEnableControlContainer();
        ControlRecord::Reset();
        m_project.On<KernelProject::GetDocumentName>([this](BSTR* name) {
            *name = SysAllocString(m_documentName.c_str());
            return S_OK;
        });
        m_control.Returns(L"Kernel", DISPATCH_PROPERTYPUTREF, S_OK);
        m_control.Reads(L"cmdHasDocument", _variant_t(true));
        m_control.Reads(L"cmdSave", _variant_t(true));
        m_control.Returns(L"cmdSave", DISPATCH_PROPERTYPUT, S_OK);
        m_control.Reads(L"XMED", _variant_t(&m_editor));
        m_editor.Reads(L"Document", _variant_t(&m_document));
        m_document.Reads(L"Host", _variant_t(&m_host));
        m_host.Returns(L"Run", DISPATCH_METHOD, S_OK);
        m_traits.automation = &m_control;
    }
    ~DocumentUpdate() override {
        m_traits.automation.Reset();
        EXPECT_EQ(ControlRecord::Get().living, 0);
        EXPECT_EQ(CountWindows(), m_windowsBefore);
    }

    // Runs the update. A failure's text is left in m_failure.
    bool Update() {
        const ComPtr<IClassFactory> factory = MakeTestControlFactory(m_traits);
        const TestClass controlClass(L"KV.XMedCtrl.1",
                                     [&](IUnknown* outer, REFIID iid, void** object) {
                                         return factory->CreateInstance(outer, iid, object);
                                     });
        try {
            return UpdateDocument(m_admin.Get(), m_project.Get(), m_documentHandler, m_newRevision,
                                  m_log);
        } catch (const wchar_t* text) {
            m_failure = text;
            return false;
        }
    }

    std::vector<std::string> LogLines() const { return CallsOf(m_logged, "log: "); }

    // The calls on the project and on the editor's objects, without those of hosting.
    CallList Calls() const {
        CallList calls;
        for (const std::string& call : m_calls)
            if (call.find('.') != std::string::npos)
                calls.push_back(call);
        return calls;
    }

    int m_windowsBefore = CountWindows();
    CallList& m_calls = ControlRecord::Get().calls;
    std::wstring m_documentName = L"Manual.xml";
    _bstr_t m_documentHandler = L"handler.xsl";
    bool m_newRevision = false;
    CallList m_logged;
    RecordingLog m_log{m_logged};
    FakeObject<KernelProject> m_project{m_calls, "project"};
    FakeObject<KernelAdmin> m_admin{m_calls, "admin"};
    FakeDispatch m_host{m_calls, "host"};
    FakeDispatch m_document{m_calls, "document"};
    FakeDispatch m_editor{m_calls, "editor"};
    FakeDispatch m_control{m_calls, "control"};
    ControlTraits m_traits;
    std::optional<std::wstring> m_failure;
};

} // namespace zt::test
