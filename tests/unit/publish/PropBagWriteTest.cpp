#include "tests/support/PropBagFixture.h"

namespace zt::test {
namespace {

using WrittenProperty = PropertyBagTest;

TEST_F(WrittenProperty, StoresNumbersAndBooleansSignExtended) {
    const struct {
        const wchar_t* name;
        _variant_t value;
        DWORD stored;
    } rows[] = {
        {L"true", _variant_t(true), 0xFFFFFFFF},
        {L"false", _variant_t(false), 0},
        {L"short", _variant_t(static_cast<short>(300), VT_I2), 300},
        {L"negative short", _variant_t(static_cast<short>(-2), VT_I2), 0xFFFFFFFE},
        {L"long", _variant_t(70000L, VT_I4), 70000},
        {L"negative long", _variant_t(-70000L, VT_I4), static_cast<DWORD>(-70000)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Write(row.name, row.value), S_OK) << row.name;
        ASSERT_TRUE(Stored(row.name).has_value()) << row.name;
        EXPECT_EQ(Stored(row.name)->type, static_cast<DWORD>(REG_DWORD)) << row.name;
        EXPECT_EQ(Stored(row.name)->bytes, Dword(row.stored)) << row.name;
    }
}

TEST_F(WrittenProperty, StoresEverythingElseAsATextWithItsTerminator) {
    const struct {
        const wchar_t* name;
        _variant_t value;
        const wchar_t* stored;
    } rows[] = {
        {L"text", _variant_t(L"red \x0416"), L"red \x0416"},
        {L"fraction", _variant_t(2.5, VT_R8), L"2.5"},
        {L"byte", _variant_t(static_cast<BYTE>(7)), L"7"},
        {L"unsigned", _variant_t(4000000000UL), L"4000000000"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Write(row.name, row.value), S_OK) << row.name;
        ASSERT_TRUE(Stored(row.name).has_value()) << row.name;
        EXPECT_EQ(Stored(row.name)->type, static_cast<DWORD>(REG_SZ)) << row.name;
        EXPECT_EQ(Stored(row.name)->bytes, Text(row.stored)) << row.name;
    }
}

TEST_F(WrittenProperty, RefusesObjects) {
    CPropBag object(nullptr, nullptr, BagKeyName, false);
    _variant_t unknown(static_cast<IUnknown*>(&object));
    EXPECT_EQ(Write(L"Object", unknown), E_FAIL);
    _variant_t dispatch = Asking(VT_DISPATCH);
    EXPECT_EQ(Write(L"Object", dispatch), E_FAIL);
    EXPECT_FALSE(Stored(L"Object").has_value());
}

TEST_F(WrittenProperty, RefusesAnObjectUnderAnExtentsNameToo) {
    EXPECT_EQ(Write(L"_ExtentX", Asking(VT_UNKNOWN)), E_FAIL);
}

TEST_F(WrittenProperty, RefusesWhatHasNoTextForm) {
    _variant_t array = Asking(VT_EMPTY);
    array.vt = VT_ARRAY | VT_I4;
    array.parray = SafeArrayCreateVector(VT_I4, 0, 1);
    EXPECT_EQ(Write(L"Array", array), E_FAIL);
    EXPECT_EQ(Write(L"Null", Asking(VT_NULL)), E_FAIL);
    EXPECT_FALSE(Stored(L"Array").has_value());
    EXPECT_FALSE(Stored(L"Null").has_value());
}

TEST_F(WrittenProperty, AcceptsTheExtentAndStoresNothing) {
    for (const wchar_t* name : {L"_ExtentX", L"_extenty"}) {
        EXPECT_EQ(Write(name, _variant_t(100L, VT_I4)), S_OK) << name;
        EXPECT_FALSE(Stored(name).has_value()) << name;
    }
}

TEST_F(WrittenProperty, DeletesTheUsersNumberThatEqualsTheDefault) {
    SetDefault(L"Count", REG_DWORD, Dword(3));
    SetDefault(L"Flag", REG_DWORD, Dword(0xFFFFFFFF));
    SetUser(L"Count", REG_DWORD, Dword(9));
    SetUser(L"Flag", REG_DWORD, Dword(0));
    EXPECT_EQ(Write(L"Count", _variant_t(3L, VT_I4)), S_OK);
    EXPECT_EQ(Write(L"Flag", _variant_t(true)), S_OK);
    EXPECT_FALSE(Stored(L"Count").has_value());
    EXPECT_FALSE(Stored(L"Flag").has_value());
}

TEST_F(WrittenProperty, DeletesTheUsersTextThatEqualsTheDefault) {
    SetDefault(L"Colour", REG_SZ, Text(L"red"));
    SetUser(L"Colour", REG_SZ, Text(L"blue"));
    EXPECT_EQ(Write(L"Colour", _variant_t(L"red")), S_OK);
    EXPECT_FALSE(Stored(L"Colour").has_value());
}

TEST_F(WrittenProperty, StoresATextThatDiffersFromTheDefaultInCaseOnly) {
    SetDefault(L"Colour", REG_SZ, Text(L"red"));
    EXPECT_EQ(Write(L"Colour", _variant_t(L"Red")), S_OK);
    EXPECT_EQ(Stored(L"Colour")->bytes, Text(L"Red"));
}

TEST_F(WrittenProperty, StoresWhatOnlyLooksLikeADefaultOfTheOtherKind) {
    SetDefault(L"Count", REG_SZ, Text(L"3"));
    SetDefault(L"Digits", REG_DWORD, Dword(3));
    EXPECT_EQ(Write(L"Count", _variant_t(3L, VT_I4)), S_OK);
    EXPECT_EQ(Write(L"Digits", _variant_t(L"3")), S_OK);
    EXPECT_EQ(Stored(L"Count")->bytes, Dword(3));
    EXPECT_EQ(Stored(L"Digits")->bytes, Text(L"3"));
}

TEST_F(WrittenProperty, DeletesTheUsersValueForAnEmptyTextWithoutADefault) {
    SetUser(L"Colour", REG_SZ, Text(L"blue"));
    EXPECT_EQ(Write(L"Colour", _variant_t(L"")), S_OK);
    EXPECT_FALSE(Stored(L"Colour").has_value());
    SetUser(L"Colour", REG_SZ, Text(L"blue"));
    EXPECT_EQ(Write(L"Colour", Asking(VT_BSTR)), S_OK);
    EXPECT_FALSE(Stored(L"Colour").has_value());
}

TEST_F(WrittenProperty, StoresAnEmptyTextOverADefault) {
    SetDefault(L"Colour", REG_SZ, Text(L"red"));
    EXPECT_EQ(Write(L"Colour", _variant_t(L"")), S_OK);
    ASSERT_TRUE(Stored(L"Colour").has_value());
    EXPECT_EQ(Stored(L"Colour")->bytes, Text(L""));
}

TEST_F(WrittenProperty, ReadsBackWhatWasWritten) {
    EXPECT_EQ(Write(L"Flag", _variant_t(true)), S_OK);
    EXPECT_EQ(Write(L"Colour", _variant_t(L"red")), S_OK);
    _variant_t value = Asking(VT_BOOL);
    EXPECT_EQ(Read(L"Flag", &value), S_OK);
    EXPECT_EQ(value, _variant_t(true));
    value = Asking(VT_BSTR);
    EXPECT_EQ(Read(L"Colour", &value), S_OK);
    EXPECT_STREQ(value.bstrVal, L"red");
}

} // namespace
} // namespace zt::test
