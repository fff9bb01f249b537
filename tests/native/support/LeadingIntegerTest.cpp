#include "support/Text.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace {

struct Number {
    const char* name;
    const wchar_t* text;
    std::int32_t value;
};

class SettingsText : public testing::TestWithParam<Number> {};

TEST_P(SettingsText, IsReadAsANumber) {
    EXPECT_EQ(zt::LeadingInteger(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Cms, SettingsText,
    testing::Values(
        Number{"Digits", L"4711", 4711}, Number{"Zero", L"0", 0}, Number{"Empty", L"", 0},
        Number{"LeadingZeros", L"0080", 80}, Number{"EightDigits", L"99999999", 99999999},
        Number{"DigitsThenLetters", L"80ab", 80}, Number{"DigitsThenPoint", L"1.9", 1},
        Number{"DigitsThenBlank", L"1 9", 1}, Number{"Letters", L"abc", 0},
        Number{"LettersThenDigits", L"x80", 0}, Number{"Hexadecimal", L"0x50", 0},
        Number{"LeadingBlanks", L"  80", 80}, Number{"LeadingWhiteSpace", L"\t\r\n\v\f 80", 80},
        Number{"BlanksAlone", L"   ", 0}, Number{"Plus", L"+80", 80}, Number{"Minus", L"-80", -80},
        Number{"BlankThenSign", L" -1", -1}, Number{"SignThenBlank", L"- 1", 0},
        Number{"TwoSigns", L"--1", 0}, Number{"SignAlone", L"-", 0},
        Number{"DigitsOfAnotherScript", L"\u0661\u0662", 0},
        Number{"Largest", L"2147483647", 2147483647},
        Number{"AboveLargest", L"2147483648", 2147483647},
        Number{"FarAboveLargest", L"99999999999999999999999999", 2147483647},
        Number{"Smallest", L"-2147483648", INT32_MIN},
        Number{"BelowSmallest", L"-2147483649", INT32_MIN},
        Number{"FarBelowSmallest", L"-99999999999999999999999999", INT32_MIN}),
    [](const auto& testCase) { return testCase.param.name; });

} // namespace
