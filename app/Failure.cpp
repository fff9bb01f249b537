#include "app/Failure.h"

#include "framework/Exceptions.h"
#include "framework/String.h"

#include <iterator>

namespace zt {

namespace {

std::wstring EndWithMessage(COleException* exception) {
    wchar_t message[1024] = {};
    exception->GetErrorMessage(message, std::size(message), nullptr);
    exception->Delete();
    return message;
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

} // namespace zt
