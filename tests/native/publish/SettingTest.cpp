#include "publish/Setting.h"

#include <gtest/gtest.h>

namespace zt {
namespace {

TEST(ExtentNames, AreKnownInAnyCaseOfLetters) {
    for (const wchar_t* name : {L"_ExtentX", L"_ExtentY", L"_extentx", L"_EXTENTY", L"_eXtEnTx"})
        EXPECT_TRUE(IsExtentName(name)) << name;
}

TEST(ExtentNames, AreTheWholeNameOnly) {
    for (const wchar_t* name :
         {L"", L"ExtentX", L"_ExtentZ", L"_Extent", L"_ExtentX1", L" _ExtentX"})
        EXPECT_FALSE(IsExtentName(name)) << name;
}

TEST(StoredNumber, IsLittleEndian) {
    EXPECT_EQ(NumberOfStoredBytes({0x78, 0x56, 0x34, 0x12}), 0x12345678U);
    EXPECT_EQ(NumberOfStoredBytes({0xFF, 0xFF, 0xFF, 0xFF}), 0xFFFFFFFFU);
}

TEST(StoredNumber, OfTheWrongSizeTakesTheBytesThereAre) {
    EXPECT_EQ(NumberOfStoredBytes({}), 0U);
    EXPECT_EQ(NumberOfStoredBytes({0x34, 0x12}), 0x1234U);
    EXPECT_EQ(NumberOfStoredBytes({1, 2, 3, 4, 5}), 0x04030201U);
}

TEST(StoredText, EndsAtItsTerminator) {
    EXPECT_EQ(TextOfStoredBytes({'a', 0, 'b', 0, 0, 0}), L"ab");
    EXPECT_EQ(TextOfStoredBytes({'a', 0, 0, 0, 'b', 0, 0, 0}), L"a");
}

TEST(StoredText, MayLackItsTerminator) {
    EXPECT_EQ(TextOfStoredBytes({'a', 0, 'b', 0}), L"ab");
}

TEST(StoredText, LosesALastHalfCharacter) {
    EXPECT_EQ(TextOfStoredBytes({'a', 0, 'b'}), L"a");
    EXPECT_EQ(TextOfStoredBytes({'a'}), L"");
    EXPECT_EQ(TextOfStoredBytes({}), L"");
}

TEST(StoredText, KeepsCharactersAboveLatin) {
    EXPECT_EQ(TextOfStoredBytes({0x16, 0x04, 0xE5, 0x65}), L"\x0416\x65E5");
}

TEST(SettingForTheUser, IsStoredOnlyWhereItSaysSomethingElseThanTheDefault) {
    using Default = std::optional<Setting>;
    const Setting seven = 7U;
    const Setting text = std::wstring(L"7");
    const Setting empty = std::wstring();
    const struct {
        Setting value;
        Default defaultValue;
        bool stored;
    } rows[] = {
        {seven, std::nullopt, true},
        {Setting(0U), std::nullopt, true},
        {seven, Default(7U), false},
        {seven, Default(8U), true},
        {seven, Default(text), true},
        {text, std::nullopt, true},
        {text, Default(text), false},
        {text, Default(7U), true},
        {Setting(std::wstring(L"Red")), Default(std::wstring(L"red")), true},
        {empty, std::nullopt, false},
        {empty, Default(empty), false},
        {empty, Default(text), true},
        {empty, Default(0U), true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DiffersFromDefault(row.value, row.defaultValue), row.stored) << &row - rows;
}

} // namespace
} // namespace zt
