#include "app/ZTInvisible.h"

#include "app/Outcome.h"
#include "app/Steps.h"
#include "project/StatusDispSite.h"
#include "support/Files.h"
#include "support/Output.h"

#include <cstdarg>

namespace zt {

CZTInvisible::CZTInvisible() = default;

CZTInvisible::~CZTInvisible() = default;

void CZTInvisible::Log(const wchar_t* format, ...) {
    if (m_strLogFile.empty())
        return;
    std::va_list arguments;
    va_start(arguments, format);
    const std::wstring text = FormatTextV(format, arguments);
    va_end(arguments);
    AppendText(m_strLogFile, text);
}

void CZTInvisible::LogError(const wchar_t* message) {
    if (message == nullptr)
        message = L"";
    Log(L"ERROR: %s", message);
    if (m_bNotify)
        NotifyContentManager(*this, L"MESSAGE", message);
    else if (m_strStatusBase.empty())
        ConsolePrint(L"%s\n", message);
    else
        AppendFailure(m_strStatusBase, message);
}

void CZTInvisible::ShutDownKernel() {
    if (m_pKernelAdmin) {
        KernelAdmin::CloseProjects::Call(m_pKernelAdmin.Get(), -1);
        m_pKernelProject.Reset();
        m_pSequenceNumberHandler.Reset();
        m_pNotificationHandler.Reset();
        m_pExportHandler.Reset();
        KernelAdmin::ShutDown::Call(m_pKernelAdmin.Get(), -1);
        m_pKernelAdmin.Reset();
    }
    if (m_configuration)
        m_configuration.Call<Configuration::Close>(TRUE);
}

} // namespace zt
