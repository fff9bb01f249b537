#include "cms/ActionMessage.h"

namespace zt {

std::wstring BuildActionMessage(const wchar_t* action, const wchar_t* argument) {
    std::wstring message = L"TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|";
    message += action;
    if (argument != nullptr) {
        message += L'|';
        message += argument;
    }
    return message;
}

} // namespace zt
