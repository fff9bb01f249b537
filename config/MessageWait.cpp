#include "config/MessageWait.h"

#include <optional>

namespace zt {

namespace {

// How often the condition is looked at while no message comes, in milliseconds.
constexpr DWORD PollInterval = 10;

void HandOutMessages() {
    std::optional<int> quit;
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            quit = static_cast<int>(message.wParam);
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (quit)
        PostQuitMessage(*quit);
}

} // namespace

bool WaitWithMessages(const std::function<bool()>& condition, DWORD longest) {
    const ULONGLONG begin = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - begin > longest)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, PollInterval, QS_ALLINPUT);
        HandOutMessages();
    }
    return true;
}

} // namespace zt
