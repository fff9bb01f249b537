#include "installation/runtime/ResultCodes.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace devinst {

namespace {

struct NamedResult {
    HRESULT code;
    const char* name;
};

constexpr NamedResult NamedResults[] = {
    {S_OK, "S_OK"},
    {S_FALSE, "S_FALSE"},
    {E_FAIL, "E_FAIL"},
    {E_NOTIMPL, "E_NOTIMPL"},
    {E_NOINTERFACE, "E_NOINTERFACE"},
    {E_POINTER, "E_POINTER"},
    {E_INVALIDARG, "E_INVALIDARG"},
    {E_OUTOFMEMORY, "E_OUTOFMEMORY"},
    {E_ACCESSDENIED, "E_ACCESSDENIED"},
    {E_UNEXPECTED, "E_UNEXPECTED"},
    {CLASS_E_NOAGGREGATION, "CLASS_E_NOAGGREGATION"},
    {DISP_E_EXCEPTION, "DISP_E_EXCEPTION"},
    {DISP_E_MEMBERNOTFOUND, "DISP_E_MEMBERNOTFOUND"},
    {DISP_E_UNKNOWNNAME, "DISP_E_UNKNOWNNAME"},
    {DISP_E_TYPEMISMATCH, "DISP_E_TYPEMISMATCH"},
    {DISP_E_BADPARAMCOUNT, "DISP_E_BADPARAMCOUNT"},
};

} // namespace

std::string ResultText(HRESULT code) {
    for (const NamedResult& known : NamedResults) {
        if (known.code == code)
            return known.name;
    }
    char digits[16] = {};
    std::snprintf(digits, std::size(digits), "0x%08lX", static_cast<unsigned long>(code));
    return digits;
}

std::optional<HRESULT> ParseResult(std::string_view text) {
    for (const NamedResult& known : NamedResults) {
        if (known.name == text)
            return known.code;
    }
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const std::string_view digits = hexadecimal ? text.substr(2) : text;
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number,
                                              hexadecimal ? 16 : 10);
    if (error != std::errc() || end != digits.data() + digits.size() || digits.empty())
        return std::nullopt;
    return static_cast<HRESULT>(number);
}

} // namespace devinst
