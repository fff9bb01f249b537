#include "support/Encoding.h"

#include <windows.h>

namespace zt {
namespace {

std::string ToCodePage(UINT codePage, const std::wstring& text) {
    const int units = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(codePage, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(codePage, 0, text.data(), units, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

} // namespace

std::string ToUtf8(const std::wstring& text) {
    return ToCodePage(CP_UTF8, text);
}

std::wstring FromUtf8(std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), units);
    return wide;
}

std::string ToThreadAnsi(const std::wstring& text) {
    return ToCodePage(CP_THREAD_ACP, text);
}

} // namespace zt
