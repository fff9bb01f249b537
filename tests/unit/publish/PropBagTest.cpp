#include "tests/support/PropBagFixture.h"

namespace zt::test {
namespace {

using PropertyBag = PropertyBagTest;

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
        {L"unterminated", REG_SZ, {'a', 0, 'b', 0}, L"ab"},
        {L"odd", REG_SZ, {'a', 0, 'b', 0, 'c'}, L"ab"},
        {L"one byte", REG_SZ, {'a'}, L""},
        {L"nothing", REG_SZ, {}, L""},
        {L"binary", REG_BINARY, {0x41, 0, 0x42, 0}, L"AB"},
        {L"no type", REG_NONE, {0x41, 0}, L"A"},
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

TEST_F(PropertyBag, ReadsADamagedNumberFromTheBytesThereAre) {
    SetUser(L"Short", REG_DWORD, {0x34, 0x12});
    _variant_t value;
    EXPECT_EQ(Read(L"Short", &value), S_OK);
    ASSERT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, 0x1234);
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

TEST_F(PropertyBag, TellsWhenTheCallersVariantCannotBeCleared) {
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

} // namespace
} // namespace zt::test
