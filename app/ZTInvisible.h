// The application object: the state of the one run that a process performs.
#pragma once

#include "components/Automation.h"
#include "components/SpecificationClass.h"
#include "components/contracts/Administration.h"
#include "components/contracts/Handlers.h"
#include "components/contracts/Kernel.h"
#include "config/Axes.h"
#include "framework/WinApp.h"
#include "support/ComPtr.h"
#include "support/RunLog.h"

#include <comdef.h>

#include <cstdint>
#include <string>

namespace zt {

class CStatusDispSite;
struct CommandLine;

class CZTInvisible : public CWinApp, public RunLog {
  public:
    CZTInvisible();
    ~CZTInvisible() override;

    // Performs the whole run that the arguments ask for (arguments[0] is the program) and reports
    // its outcome by the log, the status files and the content-management client. Once in the
    // object's life. Only an exception of a type that the program never raises on purpose leaves
    // it.
    void Execute(int count, wchar_t** arguments);

    // RunLog
    void Log(const wchar_t* format, ...) override;
    void LogError(const wchar_t* message) override;

    // Ends the use of the kernel and of the configuration, in this order, and clears the
    // references.
    void ShutDownKernel();

    // ---- the run's state ----

    bool m_bNotify = false;
    bool m_bPackage = false;
    bool m_bPublish = false;
    bool m_bUpdateDoc = false;
    bool m_bNewRevision = false;
    std::wstring m_strExchangePath; // without a trailing backslash once the run has started
    std::wstring m_strStatusBase;   // empty without a status id
    std::wstring m_strLogFile;      // empty without a log

    // Folder of the attached document.
    std::wstring m_strDocumentFolder;
    // Identifier of the imported project inside the configuration.
    _bstr_t m_bstrImportedProjectId;
    _bstr_t m_bstrDocumentHandler;
    _bstr_t m_bstrLanguage;
    _bstr_t m_bstrAxesModelPath;
    _bstr_t m_bstrPublicationLocation;
    SpecificationClass m_specificationClass = SpecificationClass::Ipc;
    std::uint32_t m_axesPosition = DefaultAxesPosition;

    // Holds the product information as well.
    ComPtr<CStatusDispSite> m_pStatusSite;
    ComPtr<KernelAdmin> m_pKernelAdmin;
    ComPtr<IUnknown> m_pSequenceNumberHandler;
    ComPtr<IUnknown> m_pNotificationHandler;
    ComPtr<ExportHandler> m_pExportHandler;
    ComPtr<KernelProject> m_pKernelProject;
    AutomationObject<Configuration> m_configuration;

  private:
    // The steps of Execute; each raises its own message text. projectName receives the bare name.
    void Perform(const CommandLine& line, std::wstring& projectName);
    void TakeOver(const CommandLine& line);
    void ResolveExchangeFolder();
    void StartStatusFiles(const std::wstring& statusId);
    void PrepareLogFile();
    void ReportSuccess(const std::wstring& projectName);
    void ReportFailure(const std::wstring& message, const std::wstring& projectName);
};

} // namespace zt
