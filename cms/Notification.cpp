#include "cms/Notification.h"

#include "cms/Protocol.h"
#include "cms/TcpMessageClient.h"
#include "support/Text.h"

#include <array>
#include <optional>
#include <utility>

namespace zt {
namespace {

// With the terminating zero; the rest of a longer value is cut.
constexpr std::size_t SettingSize = 9;

std::wstring ReadSetting(const std::wstring& exchangePath, const wchar_t* key,
                         const wchar_t* whenMissing) {
    const std::wstring file = exchangePath + L"\\cms.ini";
    std::array<wchar_t, SettingSize> value{};
    const DWORD length =
        GetPrivateProfileStringW(L"CMS", key, whenMissing, value.data(), SettingSize, file.c_str());
    return {value.data(), length};
}

Delivery Fail(const wchar_t* text, const std::wstring& detail = {}) {
    return {0, text + detail};
}

Delivery Exchange(TcpMessageClient& client, std::uint16_t port, const std::wstring& message) {
    if (!client.Connect(L"localhost", port))
        return Fail(L"Error connecting to CMS client:\n", client.GetLastErrorText());
    if (!client.SendMessage(message)) {
        client.Disconnect();
        return Fail(L"Error sending message to CMS client:\n", client.GetLastErrorText());
    }
    std::wstring response;
    const ReceiveResult received = client.ReceiveMessage(response);
    client.Disconnect();
    if (received != Received)
        return Fail(L"Error receiving response from CMS client:\n", client.GetLastErrorText());
    std::optional<std::wstring> failure = FailureInResponse(response);
    return failure ? Delivery{0, std::move(*failure)} : Delivery{};
}

} // namespace

Delivery DeliverNotification(const std::wstring& exchangePath, const wchar_t* action,
                             const wchar_t* argument, TcpMessageClient& (*client)()) {
    const std::wstring message = BuildActionMessage(action, argument);
    const std::wstring portText = ReadSetting(exchangePath, L"Port", L"");
    if (portText.empty())
        return {};
    const std::int32_t port = LeadingInteger(portText);
    if (port == 0)
        return Fail(L"Can't read port number to connect to CMS client");
    const std::wstring timeout = ReadSetting(exchangePath, L"Timeout", L"600");
    // A time-out without a value turns the messages off.
    if (timeout.empty())
        return {};
    client().SetTimeout(LeadingInteger(timeout));
    // A number that is no port loses its upper bits.
    return Exchange(client(), static_cast<std::uint16_t>(port), message);
}

} // namespace zt
