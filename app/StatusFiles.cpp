#include "app/StatusFiles.h"

#include "support/Files.h"

#include <windows.h>

namespace zt {

namespace {

std::wstring ErrorFile(const std::wstring& statusBase) {
    return statusBase + L"_ERROR";
}

std::wstring DoneFile(const std::wstring& statusBase) {
    return statusBase + L"_DONE";
}

} // namespace

void MarkRunning(const std::wstring& statusBase) {
    CreateEmptyFile(ErrorFile(statusBase));
    DeleteFileW(DoneFile(statusBase).c_str());
}

void AppendFailure(const std::wstring& statusBase, std::wstring_view message) {
    AppendText(ErrorFile(statusBase), message);
}

void MarkSucceeded(const std::wstring& statusBase) {
    MoveFileW(ErrorFile(statusBase).c_str(), DoneFile(statusBase).c_str());
}

} // namespace zt
