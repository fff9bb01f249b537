#include "framework/WaitCursor.h"

namespace {

HCURSOR ShowWaitCursor() {
    return SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT)));
}

} // namespace

CWaitCursor::CWaitCursor() : m_previous(ShowWaitCursor()) {}

CWaitCursor::~CWaitCursor() {
    SetCursor(m_previous);
}

void CWaitCursor::Restore() {
    ShowWaitCursor();
}
