#include "support/Text.h"
#include "components/InstallationTexts.h"
#include "config/SpecificationTexts.h"

#include "tests/fuzz/Targets.h"

#include <algorithm>
#include <cstdlib>

namespace zt::fuzz {

namespace {

bool IsHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(wchar_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::size_t CharactersOf(const std::wstring& text) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i, ++count)
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
            ++i;
    return count;
}

// Digit by digit, in a type that never overflows for what an input can hold.
std::int32_t NumberAtBegin(std::wstring_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == L' ' || (text[i] >= L'\t' && text[i] <= L'\r')))
        ++i;
    const bool negative = i < text.size() && text[i] == L'-';
    if (i < text.size() && (text[i] == L'-' || text[i] == L'+'))
        ++i;
    double number = 0;
    for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i)
        number = number * 10 + (text[i] - L'0');
    number = std::clamp(negative ? -number : number, -2147483648.0, 2147483647.0);
    return static_cast<std::int32_t>(number);
}

std::size_t CountOf(const std::wstring& text, wchar_t character) {
    return static_cast<std::size_t>(std::ranges::count(text, character));
}

} // namespace

void FuzzRuntimeText(Bytes input) {
    const std::wstring text = WideTextOf(input);
    const std::string result = ToRuntimeText(text);
    Require(result.size() == CharactersOf(text), "no character is lost");
    if (std::ranges::all_of(text, [](wchar_t unit) { return unit <= 0xFF; }))
        Require(
            std::ranges::equal(
                result, text, {},
                [](char byte) { return static_cast<wchar_t>(static_cast<unsigned char>(byte)); }),
            "a character up to U+00FF is the byte of its value");
}

void FuzzNumber(Bytes input) {
    const std::wstring text = WideTextOf(input);
    Require(LeadingInteger(text) == NumberAtBegin(text), "a setting is the number at its begin");
    const std::wstring_view upToZero = text.c_str();
    if (std::ranges::all_of(upToZero, [](wchar_t unit) { return unit < 0x80; }))
        Require(LeadingInteger(text.c_str()) == NumberAtBegin(upToZero),
                "an element is the number at its begin");
    else
        LeadingInteger(text.c_str());
}

void FuzzVersion(Bytes input) {
    const std::vector<std::wstring> lines = WideLines(input, 3);
    const std::wstring dotted = DottedVersion(lines[0]);
    Require(CountOf(dotted, L' ') == 0 && CountOf(dotted, L',') == 0,
            "a dotted version has neither blanks nor commas");
    Require(dotted.size() == lines[0].size() - CountOf(lines[0], L' '),
            "only blanks leave a version");
    Require(DottedVersion(dotted) == dotted, "a dotted version stays as it is");

    const std::wstring path = PathOfCommand(lines[1]);
    if (!lines[1].starts_with(L'"'))
        Require(path == lines[1], "a command without quote is the path");
    else
        Require(std::wstring_view(lines[1]).substr(1).starts_with(path),
                "a path stands behind the first quote");

    const std::wstring name = ProductKeyName(lines[2], L"");
    Require(ProductKeyName(lines[2], L"1.4") == name + L"\\1.4",
            "the version is the level below the product");
}

void FuzzSelection(Bytes input) {
    const std::wstring text = WideTextOf(input);
    if (const auto path = ConfigurationOfLanguage(text)) {
        Require(CountOf(*path, L'"') == 2, "a language stays between two quotes");
        Require(*path == L"//configuration[@lang=\"" + text + L"\"]", "a language is not changed");
    } else {
        Require(std::ranges::any_of(text, [](wchar_t c) { return c < L' ' || c == L'"'; }),
                "a language is refused for a character that cannot stand there");
    }
    if (const auto path = ModelFileOfAxes(text)) {
        Require(CountOf(*path, L'\'') == 2, "an id stays between two quotes");
        Require(*path == L"/models/axes[@id='" + text + L"']/vrmlfile", "an id is not changed");
    } else {
        Require(std::ranges::any_of(text, [](wchar_t c) { return c < L' ' || c == L'\''; }),
                "an id is refused for a character that cannot stand there");
    }
}

} // namespace zt::fuzz
