#pragma once

#include <windows.h>

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
