#include "components/Values.h"

#include "framework/Exceptions.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace zt::test {
namespace {

// A VT_ARRAY | VT_BSTR whose element at each place is its indices, first one first: "1.0".
_variant_t Array(std::initializer_list<SAFEARRAYBOUND> boundsFirstToLast) {
    std::vector<SAFEARRAYBOUND> bounds(boundsFirstToLast);
    SAFEARRAY* const array =
        SafeArrayCreate(VT_BSTR, static_cast<UINT>(bounds.size()), bounds.data());
    std::vector<LONG> at;
    for (const SAFEARRAYBOUND& bound : bounds)
        at.push_back(bound.lLbound);
    for (bool more = true; more;) {
        std::wstring text;
        for (const LONG index : at)
            text += (text.empty() ? L"" : L".") + std::to_wstring(index);
        SafeArrayPutElement(array, at.data(), _bstr_t(text.c_str()).copy(false));
        more = false;
        for (std::size_t i = 0; i < at.size() && !more; ++i) {
            more = ++at[i] < bounds[i].lLbound + static_cast<LONG>(bounds[i].cElements);
            if (!more)
                at[i] = bounds[i].lLbound;
        }
    }
    VARIANT value = {};
    value.vt = VT_ARRAY | VT_BSTR;
    value.parray = array;
    return _variant_t(value, false);
}

TEST(TextElement, IsTakenAtTheIndicesInTheirOrder) {
    const _variant_t array = Array({{2, 0}, {3, 0}});
    EXPECT_STREQ(TextElement(array, 0, 1), L"0.1");
    EXPECT_STREQ(TextElement(array, 1, 2), L"1.2");
    EXPECT_STREQ(TextElement(array, 0, 0), L"0.0");
}

TEST(TextElement, IsEmptyBeyondTheBounds) {
    const _variant_t array = Array({{2, 0}, {1, 0}});
    EXPECT_EQ(TextElement(array, 0, 1).length(), 0u);
    EXPECT_EQ(TextElement(array, 2, 0).length(), 0u);
    EXPECT_EQ(TextElement(array, -1, 0).length(), 0u);
    const _variant_t fromOne = Array({{2, 1}, {2, 1}});
    EXPECT_EQ(TextElement(fromOne, 0, 1).length(), 0u);
    EXPECT_STREQ(TextElement(fromOne, 1, 1), L"1.1");
}

TEST(TextElement, OfOneDimensionIsTakenAtTheFirstIndex) {
    const _variant_t array = Array({{2, 0}});
    EXPECT_STREQ(TextElement(array, 0, 1), L"0");
    EXPECT_STREQ(TextElement(array, 1, 0), L"1");
}

TEST(TextElement, IsEmptyForMoreThanTwoDimensions) {
    EXPECT_EQ(TextElement(Array({{2, 0}, {2, 0}, {2, 0}}), 0, 1).length(), 0u);
    EXPECT_EQ(TextElement(Array({{1, 0}, {2, 0}, {1, 0}, {1, 0}}), 0, 1).length(), 0u);
}

TEST(TextElement, IsEmptyForEveryOtherType) {
    EXPECT_EQ(TextElement(_variant_t(), 0, 1).length(), 0u);
    EXPECT_EQ(TextElement(_variant_t(L"text"), 0, 1).length(), 0u);
    VARIANT byReference = {};
    _variant_t array = Array({{1, 0}, {2, 0}});
    byReference.vt = VT_BYREF | VT_ARRAY | VT_BSTR;
    byReference.pparray = &array.parray;
    EXPECT_EQ(TextElement(byReference, 0, 1).length(), 0u);
    VARIANT none = {};
    none.vt = VT_ARRAY | VT_BSTR;
    EXPECT_EQ(TextElement(none, 0, 1).length(), 0u);
}

// A value that calls itself an array of texts and is one of another type.
struct LyingArray {
    explicit LyingArray(VARTYPE type) {
        SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
        value.vt = VT_ARRAY | VT_BSTR;
        value.parray = SafeArrayCreate(type, 2, bounds);
    }
    ~LyingArray() { SafeArrayDestroy(value.parray); }

    VARIANT value = {};
};

TEST(TextElement, IsEmptyForAnArrayThatOnlyCallsItselfOneOfTexts) {
    for (const VARTYPE type : {VT_VARIANT, VT_I4, VT_UI1, VT_DISPATCH})
        EXPECT_EQ(TextElement(LyingArray(type).value, 0, 1).length(), 0u) << type;
}

TEST(TextElement, IsEmptyForNumbersThatLookLikeTexts) {
    const _bstr_t text(L"not the array's");
    const LyingArray numbers(VT_I8);
    LONG at[] = {0, 1};
    LONGLONG address = reinterpret_cast<LONGLONG>(text.copy(false));
    SafeArrayPutElement(numbers.value.parray, at, &address);
    EXPECT_EQ(TextElement(numbers.value, 0, 1).length(), 0u);
}

TEST(TextElement, IsACopyThatOutlivesTheArray) {
    _bstr_t text;
    {
        const _variant_t array = Array({{1, 0}, {2, 0}});
        text = TextElement(array, 0, 1);
    }
    EXPECT_STREQ(text, L"0.1");
}

TEST(ClearVariant, EmptiesTheValue) {
    _variant_t value(L"text");
    ClearVariant(value);
    EXPECT_EQ(value.vt, VT_EMPTY);
}

TEST(ClearVariant, RaisesTheResultCodeWhereItFails) {
    _variant_t value = Array({{1, 0}, {2, 0}});
    SafeArrayLock(value.parray);
    try {
        ClearVariant(value);
        ADD_FAILURE() << "nothing was raised";
    } catch (COleException* failure) {
        EXPECT_EQ(failure->m_sc, DISP_E_ARRAYISLOCKED);
        failure->Delete();
    }
    SafeArrayUnlock(value.parray);
}

} // namespace
} // namespace zt::test
