#include "app/Outcome.h"

#include "framework/Exceptions.h"
#include "framework/String.h"
#include "support/Files.h"

#include <windows.h>

#include <iterator>

namespace zt {

namespace {

std::wstring EndWithMessage(COleException* exception) {
    wchar_t message[1024] = {};
    exception->GetErrorMessage(message, std::size(message), nullptr);
    exception->Delete();
    return message;
}

std::wstring ErrorFile(const std::wstring& statusBase) {
    return statusBase + L"_ERROR";
}

std::wstring DoneFile(const std::wstring& statusBase) {
    return statusBase + L"_DONE";
}

} // namespace

std::optional<std::wstring> FailureOf(const std::function<void()>& step) {
    try {
        step();
        return std::nullopt;
    } catch (const wchar_t* message) {
        return message != nullptr ? message : L"";
    } catch (const CString& message) {
        return message.GetString();
    } catch (COleException* exception) {
        return EndWithMessage(exception);
    }
}

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
