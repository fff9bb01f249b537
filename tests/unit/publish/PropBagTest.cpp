#include "publish/PropBag.h"

#include "tests/support/RegistryRoots.h"

#include <gtest/gtest.h>

#include <comdef.h>

#include <optional>
#include <string>
#include <vector>

namespace zt::test {
namespace {

constexpr wchar_t BagKeyName[] = L"Components\\KV3D";

class PropertyBag : public testing::Test {
  protected:
    // Reads through a bag that is opened now.
    HRESULT Read(const wchar_t* name, VARIANT* value) {
        CPropBag bag(m_roots.User(), m_roots.Machine(), BagKeyName, false);
        return bag.Read(name, value, nullptr);
    }
    HRESULT Write(const wchar_t* name, _variant_t value) {
        CPropBag bag(m_roots.User(), m_roots.Machine(), BagKeyName, true);
        return bag.Write(name, &value);
    }
    std::optional<RegistryRoots::Stored> Stored(const wchar_t* name) {
        return m_roots.UserValue(BagKeyName, name);
    }
    void SetUser(const wchar_t* name, DWORD type, const std::vector<BYTE>& bytes) {
        RegistryRoots::Set(m_roots.User(), BagKeyName, name, type, bytes);
    }
    void SetDefault(const wchar_t* name, DWORD type, const std::vector<BYTE>& bytes) {
        RegistryRoots::Set(m_roots.Machine(), BagKeyName, name, type, bytes);
    }

    RegistryRoots m_roots;
};

std::vector<BYTE> Dword(DWORD number) {
    const BYTE* const bytes = reinterpret_cast<const BYTE*>(&number);
    return {bytes, bytes + sizeof(number)};
}
std::vector<BYTE> Text(const std::wstring& text) {
    const BYTE* const bytes = reinterpret_cast<const BYTE*>(text.c_str());
    return {bytes, bytes + (text.size() + 1) * sizeof(wchar_t)};
}

_variant_t Asking(VARTYPE type) {
    _variant_t value;
    value.vt = type;
    return value;
}

// ---- identity ----

TEST_F(PropertyBag, AnswersForTheBagAndForNothingElse) {
    CPropBag bag(nullptr, nullptr, BagKeyName, false);
    void* object = nullptr;
    EXPECT_EQ(bag.QueryInterface(IID_IUnknown, &object), S_OK);
    EXPECT_EQ(object, static_cast<IPropertyBag*>(&bag));
    EXPECT_EQ(bag.QueryInterface(IID_IPropertyBag, &object), S_OK);
    EXPECT_EQ(object, static_cast<IPropertyBag*>(&bag));
    EXPECT_EQ(bag.QueryInterface(IID_IDispatch, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(bag.QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(PropertyBag, CountsNoReferences) {
    CPropBag bag(nullptr, nullptr, BagKeyName, false);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(bag.AddRef(), 5U);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(bag.Release(), 4U);
}

// ---- opening ----

TEST_F(PropertyBag, OpensOnlyTheSubkeysThatAreThere) {
    EXPECT_FALSE(CPropBag(m_roots.User(), m_roots.Machine(), BagKeyName, false).IsOpen());
    EXPECT_FALSE(CPropBag(nullptr, nullptr, BagKeyName, false).IsOpen());
    SetDefault(L"A", REG_DWORD, Dword(1));
    EXPECT_TRUE(CPropBag(m_roots.User(), m_roots.Machine(), BagKeyName, false).IsOpen());
    EXPECT_TRUE(CPropBag(nullptr, m_roots.Machine(), BagKeyName, false).IsOpen());
    EXPECT_FALSE(CPropBag(m_roots.User(), nullptr, BagKeyName, false).IsOpen());
    EXPECT_FALSE(m_roots.HasUserKey(BagKeyName));
}

TEST_F(PropertyBag, MakesTheUsersSubkeyWhereAsked) {
    EXPECT_TRUE(CPropBag(m_roots.User(), nullptr, BagKeyName, true).IsOpen());
    EXPECT_TRUE(m_roots.HasUserKey(BagKeyName));
}

TEST_F(PropertyBag, IsNotOpenWithoutARootToWriteTo) {
    EXPECT_FALSE(CPropBag(nullptr, nullptr, BagKeyName, true).IsOpen());
}

TEST_F(PropertyBag, WritesNothingThroughABagForReading) {
    SetUser(L"Colour", REG_DWORD, Dword(7));
    CPropBag bag(m_roots.User(), m_roots.Machine(), BagKeyName, false);
    _variant_t value(8L, VT_I4);
    EXPECT_EQ(bag.Write(L"Colour", &value), S_OK);
    EXPECT_EQ(Stored(L"Colour")->bytes, Dword(7));
}

TEST_F(PropertyBag, AcceptsAWriteWithoutAnyKey) {
    CPropBag bag(nullptr, nullptr, BagKeyName, false);
    _variant_t number(8L, VT_I4);
    _variant_t empty(L"");
    EXPECT_EQ(bag.Write(L"Colour", &number), S_OK);
    EXPECT_EQ(bag.Write(L"Colour", &empty), S_OK);
}

// ---- reading ----

TEST_F(PropertyBag, ReadsTheUsersValueFirst) {
    SetUser(L"Colour", REG_SZ, Text(L"user"));
    SetDefault(L"Colour", REG_SZ, Text(L"machine"));
    _variant_t value;
    EXPECT_EQ(Read(L"Colour", &value), S_OK);
    ASSERT_EQ(value.vt, VT_BSTR);
    EXPECT_STREQ(value.bstrVal, L"user");
}

TEST_F(PropertyBag, ReadsTheDefaultWhereTheUserHasNone) {
    SetUser(L"Other", REG_SZ, Text(L"user"));
    SetDefault(L"Colour", REG_SZ, Text(L"machine"));
    _variant_t value;
    EXPECT_EQ(Read(L"Colour", &value), S_OK);
    ASSERT_EQ(value.vt, VT_BSTR);
    EXPECT_STREQ(value.bstrVal, L"machine");
}

TEST_F(PropertyBag, ReadsTheDefaultWithoutAUsersSubkey) {
    SetDefault(L"Count", REG_DWORD, Dword(3));
    _variant_t value;
    EXPECT_EQ(Read(L"Count", &value), S_OK);
    ASSERT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, 3);
}

TEST_F(PropertyBag, FailsForWhatIsNowhereStored) {
    SetUser(L"Other", REG_SZ, Text(L"user"));
    _variant_t value(5L, VT_I4);
    EXPECT_EQ(Read(L"Colour", &value), E_FAIL);
    ASSERT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, 5);
}

TEST_F(PropertyBag, RefusesTheExtentEvenWhereItIsStored) {
    for (const wchar_t* name : {L"_ExtentX", L"_ExtentY", L"_extentx", L"_EXTENTY"}) {
        SetUser(name, REG_DWORD, Dword(100));
        _variant_t value(5L, VT_I4);
        EXPECT_EQ(Read(name, &value), E_INVALIDARG) << name;
        EXPECT_EQ(value.lVal, 5) << name;
    }
}

TEST_F(PropertyBag, GivesAStoredNumberAsASigned32BitInteger) {
    SetUser(L"Colour", REG_DWORD, Dword(0xFFFFFFFF));
    _variant_t value;
    EXPECT_EQ(Read(L"Colour", &value), S_OK);
    ASSERT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, -1);
}

TEST_F(PropertyBag, GivesEveryOtherTypeAsAText) {
    const struct {
        const wchar_t* name;
        DWORD type;
        std::vector<BYTE> bytes;
        const wchar_t* text;
    } rows[] = {
        {L"plain", REG_SZ, Text(L"red \x0416\x65E5"), L"red \x0416\x65E5"},
        {L"expandable", REG_EXPAND_SZ, Text(L"%TEMP%\\x"), L"%TEMP%\\x"},
        {L"several", REG_MULTI_SZ, Text(std::wstring(L"one\0two\0", 8)), L"one"},
        {L"nothing", REG_SZ, {}, L""},
        {L"binary", REG_BINARY, {0x41, 0, 0x42, 0}, L"AB"},
        {L"64 bits", REG_QWORD, {0x41, 0, 0, 0, 0, 0, 0, 0}, L"A"},
    };
    for (const auto& row : rows) {
        SetUser(row.name, row.type, row.bytes);
        _variant_t value;
        EXPECT_EQ(Read(row.name, &value), S_OK) << row.name;
        ASSERT_EQ(value.vt, VT_BSTR) << row.name;
        EXPECT_STREQ(value.bstrVal, row.text) << row.name;
    }
}

TEST_F(PropertyBag, ReadsLongTextsWhole) {
    const std::wstring longText(20000, L'x');
    SetUser(L"Long", REG_SZ, Text(longText));
    _variant_t value;
    EXPECT_EQ(Read(L"Long", &value), S_OK);
    EXPECT_EQ(value.bstrVal, longText);
}

// ---- conversions on reading ----

TEST_F(PropertyBag, GivesANumberAsItsDecimalTextWhereATextIsAsked) {
    SetUser(L"Count", REG_DWORD, Dword(static_cast<DWORD>(-42)));
    _variant_t value = Asking(VT_BSTR);
    EXPECT_EQ(Read(L"Count", &value), S_OK);
    ASSERT_EQ(value.vt, VT_BSTR);
    EXPECT_STREQ(value.bstrVal, L"-42");
}

TEST_F(PropertyBag, GivesDecimalDigitsAsANumberWhereANumberIsAsked) {
    SetUser(L"Count", REG_SZ, Text(L"1234"));
    _variant_t value = Asking(VT_I4);
    EXPECT_EQ(Read(L"Count", &value), S_OK);
    ASSERT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, 1234);
}

TEST_F(PropertyBag, ConvertsToTheTypeThatIsAsked) {
    SetUser(L"Number", REG_DWORD, Dword(7));
    SetUser(L"Zero", REG_DWORD, Dword(0));
    SetUser(L"Fraction", REG_SZ, Text(L"2.5"));
    SetUser(L"True", REG_SZ, Text(L"True"));
    SetUser(L"All", REG_DWORD, Dword(0xFFFFFFFF));
    _variant_t value = Asking(VT_I2);
    EXPECT_EQ(Read(L"Number", &value), S_OK);
    EXPECT_EQ(value, _variant_t(static_cast<short>(7), VT_I2));
    value = Asking(VT_R8);
    EXPECT_EQ(Read(L"Fraction", &value), S_OK);
    EXPECT_EQ(value, _variant_t(2.5, VT_R8));
    value = Asking(VT_BOOL);
    EXPECT_EQ(Read(L"True", &value), S_OK);
    EXPECT_EQ(value, _variant_t(true));
    value = Asking(VT_BOOL);
    EXPECT_EQ(Read(L"Zero", &value), S_OK);
    EXPECT_EQ(value, _variant_t(false));
    value = Asking(VT_BOOL);
    EXPECT_EQ(Read(L"All", &value), S_OK);
    EXPECT_EQ(value, _variant_t(true));
}

TEST_F(PropertyBag, ConvertsInEnglishWhateverTheUsersLocale) {
    const LCID before = GetThreadLocale();
    SetThreadLocale(MAKELCID(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), SORT_DEFAULT));
    SetUser(L"Fraction", REG_SZ, Text(L"2.5"));
    _variant_t value = Asking(VT_R8);
    EXPECT_EQ(Read(L"Fraction", &value), S_OK);
    SetThreadLocale(before);
    ASSERT_EQ(value.vt, VT_R8);
    EXPECT_EQ(value.dblVal, 2.5);
}

TEST_F(PropertyBag, KeepsTheValuesOwnTypeWhereItCannotBeConverted) {
    SetUser(L"Name", REG_SZ, Text(L"red"));
    SetUser(L"Count", REG_DWORD, Dword(100000));
    _variant_t value = Asking(VT_I4);
    EXPECT_EQ(Read(L"Name", &value), S_OK);
    ASSERT_EQ(value.vt, VT_BSTR);
    EXPECT_STREQ(value.bstrVal, L"red");
    value = Asking(VT_I2);
    EXPECT_EQ(Read(L"Count", &value), S_OK);
    ASSERT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, 100000);
}

TEST_F(PropertyBag, ReleasesWhatTheCallersVariantHeld) {
    SetUser(L"Name", REG_SZ, Text(L"new"));
    _variant_t value(L"old");
    EXPECT_EQ(Read(L"Name", &value), S_OK);
    ASSERT_EQ(value.vt, VT_BSTR);
    EXPECT_STREQ(value.bstrVal, L"new");
}

TEST_F(PropertyBag, ReportsThatTheCallersVariantCannotBeCleared) {
    SetUser(L"Name", REG_SZ, Text(L"new"));
    SAFEARRAY* const array = SafeArrayCreateVector(VT_I4, 0, 1);
    ASSERT_EQ(SafeArrayLock(array), S_OK);
    VARIANT value = {};
    value.vt = VT_ARRAY | VT_I4;
    value.parray = array;
    EXPECT_EQ(Read(L"Name", &value), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(value.parray, array);
    SafeArrayUnlock(array);
    SafeArrayDestroy(array);
}

TEST_F(PropertyBag, RefusesAMissingNameOrVariant) {
    CPropBag bag(nullptr, nullptr, BagKeyName, false);
    _variant_t value;
    EXPECT_EQ(bag.Read(nullptr, &value, nullptr), E_POINTER);
    EXPECT_EQ(bag.Read(L"A", nullptr, nullptr), E_POINTER);
    EXPECT_EQ(bag.Write(nullptr, &value), E_POINTER);
    EXPECT_EQ(bag.Write(L"A", nullptr), E_POINTER);
}

// ---- writing ----

using WrittenProperty = PropertyBag;

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
