#include "installation/setup/SetupError.h"

#include "installation/runtime/ResultCodes.h"
#include "installation/runtime/Utf8.h"

#include <iterator>

namespace devinst {

namespace {

std::string Reason(DWORD code) {
    wchar_t text[512] = {};
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                       text, static_cast<DWORD>(std::size(text)), nullptr);
    std::wstring reason(text, length);
    reason.erase(reason.find_last_not_of(L" .\r\n") + 1);
    if (reason.empty())
        return ResultText(static_cast<HRESULT>(code));
    return ToUtf8(reason);
}

} // namespace

void ThrowSetupError(const std::string& what, const std::wstring& subject, DWORD code) {
    throw SetupError(what + " " + ToUtf8(subject) + ": " + Reason(code));
}

} // namespace devinst
