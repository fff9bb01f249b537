#include "framework/WinApp.h"

namespace {

CWinApp* applicationObject = nullptr;
bool controlContainerEnabled = false;

HCURSOR ShowWaitCursor() {
    return SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT)));
}

} // namespace

CWinApp::CWinApp() {
    applicationObject = this;
}

CWinApp::~CWinApp() {
    if (applicationObject == this)
        applicationObject = nullptr;
}

CWinApp* AfxGetApp() {
    return applicationObject;
}

BOOL AfxWinInit(HINSTANCE instance, HINSTANCE previous, const wchar_t* commandLine, int show) {
    SetErrorMode(SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX |
                 SEM_NOOPENFILEERRORBOX);
    CWinApp* app = AfxGetApp();
    if (instance == nullptr || previous != nullptr || app == nullptr)
        return FALSE;
    app->m_hInstance = instance;
    app->m_lpCmdLine = commandLine;
    app->m_nCmdShow = show;
    return TRUE;
}

void AfxEnableControlContainer() {
    controlContainerEnabled = true;
}

bool AfxIsControlContainerEnabled() {
    return controlContainerEnabled;
}

CWaitCursor::CWaitCursor() : m_previous(ShowWaitCursor()) {}

CWaitCursor::~CWaitCursor() {
    SetCursor(m_previous);
}

void CWaitCursor::Restore() {
    ShowWaitCursor();
}
