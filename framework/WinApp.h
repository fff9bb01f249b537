// The application object, the framework's start-up and the wait cursor.
#pragma once

#include <windows.h>

class CObject {
  public:
    CObject() = default;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject() = default;
};

class CCmdTarget : public CObject {};

class CWinThread : public CCmdTarget {};

// One application object exists in a process. It is constructed before the entry function runs and
// registers itself for AfxGetApp.
class CWinApp : public CWinThread {
  public:
    CWinApp();
    ~CWinApp() override;

    HINSTANCE m_hInstance = nullptr;
    // Points into the process's own command line.
    const wchar_t* m_lpCmdLine = nullptr;
    int m_nCmdShow = SW_HIDE;
};

// The application object, null when there is none.
CWinApp* AfxGetApp();

// Initialises the framework: hands the arguments to the application object and sets the process
// error mode so that neither a critical error nor a crash can stop an unattended process with a
// dialog. Returns FALSE without a module handle or an application object, or when a previous
// instance is given (the platform has had none since 32 bits).
BOOL AfxWinInit(HINSTANCE instance, HINSTANCE previous, const wchar_t* commandLine, int show);

// Allows CWnd objects to host controls.
void AfxEnableControlContainer();
bool AfxIsControlContainerEnabled();

// Shows the wait cursor from its construction to its destruction, which brings the cursor of
// before back.
class CWaitCursor {
  public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;

    // Shows the wait cursor again after something else changed it.
    void Restore();

  private:
    HCURSOR m_previous;
};
