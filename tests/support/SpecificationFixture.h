// What the tests of specification loading share: a data folder, a kernel and a log.
#pragma once

#include "config/Axes.h"
#include "config/Specification.h"
#include "tests/support/FakeKernel.h"
#include "tests/support/Fixtures.h"
#include "tests/support/Isolation.h"
#include "tests/support/RecordingLog.h"

#include <gmock/gmock.h>

#include <string>

namespace zt::test {

// The specification is called S. In the call list the folder of the specification shows as SPEC,
// and a reported failure as LogError("text").
class SpecificationTest : public testing::Test {
  protected:
    SpecificationTest() {
        m_machine.SetText(L"Software\\Morvenit", L"ZeltorDataFolder", m_data.Path());
        std::filesystem::create_directories(SpecPath());
        m_kernel.Return<KernelAdmin::LoadTypes, KernelAdmin::LoadDeclarations,
                        KernelAdmin::LoadRefTables, KernelAdmin::LoadMetadata,
                        KernelAdmin::LoadCommandTemplates, KernelAdmin::LoadRefTablesBackup>(S_OK);
        m_kernel.On<KernelAdmin::PutSpecificationFolder>([this](BSTR folder) {
            m_folder = folder;
            return S_OK;
        });
        m_kernel.On<KernelAdmin::GetSpecificationFolder>([this](BSTR* folder) {
            *folder = SysAllocString(m_folder.c_str());
            return S_OK;
        });
    }

    std::wstring SpecPath() const { return m_data.Path(L"Morvenit\\KVProductFamily\\IPCCFG\\S"); }
    std::wstring SpecPath(const std::wstring& name) const { return SpecPath() + L"\\" + name; }
    void Describe(std::string_view bytes) { WriteFile(SpecPath() + L".cfg", bytes); }
    void Catalogue(std::string_view bytes) {
        WriteFile(m_data.Path(L"Morvenit\\KVProductFamily\\Axes\\axes.xml"), bytes);
    }

    bool Load(const wchar_t* requiredVersion = nullptr, const wchar_t* name = L"S") {
        return ReadSpecification({.kernel = m_kernel.Get(),
                                  .log = m_log,
                                  .language = m_language,
                                  .specificationClass = m_class,
                                  .documentHandler = m_documentHandler,
                                  .sequenceNumberHandler = m_sequenceNumberHandler,
                                  .notificationHandler = m_notificationHandler,
                                  .exportHandler = m_exportHandler,
                                  .axesModelPath = m_axesModelPath,
                                  .axesPosition = m_axesPosition},
                                 name, requiredVersion);
    }

    // The calls, without the questions for the specification folder.
    CallList Calls() const {
        CallList shown;
        for (const std::string& call : m_calls)
            if (call != "KernelAdmin.GetSpecificationFolder()")
                shown.push_back(Shorten(call));
        return shown;
    }
    CallList AllCalls() const {
        CallList shown;
        for (const std::string& call : m_calls)
            shown.push_back(Shorten(call));
        return shown;
    }
    // The reported failures alone.
    CallList Failures() const {
        CallList failures;
        for (const std::string& call : m_calls)
            if (call.starts_with("LogError"))
                failures.push_back(Shorten(call));
        return failures;
    }

    CallList m_calls;
    TemporaryFolder m_data;
    RegistryOverride m_machine{HKEY_LOCAL_MACHINE};
    FakeObject<KernelAdmin> m_kernel{m_calls};
    std::wstring m_folder; // what the kernel keeps
    RecordingLog m_log{m_calls};
    // What the loading leaves.
    _bstr_t m_language;
    SpecificationClass m_class = SpecificationClass::Ipc;
    _bstr_t m_documentHandler;
    ComPtr<IUnknown> m_sequenceNumberHandler;
    ComPtr<IUnknown> m_notificationHandler;
    ComPtr<ExportHandler> m_exportHandler;
    _bstr_t m_axesModelPath;
    std::uint32_t m_axesPosition = DefaultAxesPosition;

  private:
    std::string Shorten(std::string call) const {
        const std::wstring path = SpecPath();
        const std::string folder = ToUtf8(path.c_str(), static_cast<int>(path.size()));
        for (std::size_t at = 0; (at = call.find(folder, at)) != std::string::npos;)
            call.replace(at, folder.size(), "SPEC");
        return call;
    }
};

} // namespace zt::test
