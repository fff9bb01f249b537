// Calls through COleDispatchDriver.
#include "framework/OleDispatchDriver.h"

#include "tests/support/RecordingDispatch.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zt::test::RecordingDispatch;

const BYTE* Types(const char* types) {
    return reinterpret_cast<const BYTE*>(types);
}

class InvokeHelper : public testing::Test {
  protected:
    InvokeHelper() {
        m_object.AddRef();
        m_driver.AttachDispatch(&m_object);
    }
    // Has the object answer with the value.
    void Answer(const _variant_t& value) {
        m_object.m_answer = [value](const RecordingDispatch::Call&, VARIANT* result, EXCEPINFO*) {
            return VariantCopy(result, const_cast<_variant_t*>(&value));
        };
    }
    void Fail(HRESULT code, const wchar_t* description = nullptr, SCODE inner = 0) {
        m_object.m_answer = [=](const RecordingDispatch::Call&, VARIANT*, EXCEPINFO* info) {
            info->bstrDescription = SysAllocString(description);
            info->scode = inner;
            return code;
        };
    }
    const RecordingDispatch::Call& OnlyCall() const {
        EXPECT_EQ(m_object.m_calls.size(), 1U);
        return m_object.m_calls.at(0);
    }

    RecordingDispatch m_object;
    COleDispatchDriver m_driver;
};

TEST_F(InvokeHelper, CallsTheOperationWithItsKind) {
    m_driver.InvokeHelper(12, DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr);
    EXPECT_EQ(OnlyCall().id, 12);
    EXPECT_EQ(OnlyCall().kind, DISPATCH_METHOD);
    EXPECT_THAT(OnlyCall().arguments, IsEmpty());
    EXPECT_THAT(OnlyCall().names, IsEmpty());
    EXPECT_FALSE(OnlyCall().wantsResult);
    EXPECT_TRUE(OnlyCall().wantsExceptionInfo);
}

TEST_F(InvokeHelper, PassesTheLastArgumentFirst) {
    m_driver.InvokeHelper(2, DISPATCH_METHOD, VT_EMPTY, nullptr, Types(VTS_BSTR VTS_BSTR VTS_I4),
                          L"first", L"second", 3L);
    const auto& arguments = OnlyCall().arguments;
    ASSERT_EQ(arguments.size(), 3U);
    EXPECT_EQ(arguments[0], _variant_t(3L));
    EXPECT_EQ(arguments[1], _variant_t(L"second"));
    EXPECT_EQ(arguments[2], _variant_t(L"first"));
}

TEST_F(InvokeHelper, PassesEachTypeOfArgument) {
    RecordingDispatch other;
    const _variant_t value(2.5);
    m_driver.InvokeHelper(
        2, DISPATCH_METHOD, VT_EMPTY, nullptr,
        Types(VTS_I4 VTS_BSTR VTS_BSTR VTS_DISPATCH VTS_BOOL VTS_BOOL VTS_VARIANT), -1L, L"",
        nullptr, static_cast<IDispatch*>(&other), TRUE, FALSE, static_cast<const VARIANT*>(&value));
    {
        const auto& arguments = OnlyCall().arguments;
        ASSERT_EQ(arguments.size(), 7U);
        EXPECT_EQ(arguments[6].vt, VT_I4);
        EXPECT_EQ(arguments[6].lVal, -1);
        EXPECT_EQ(arguments[5].vt, VT_BSTR);
        EXPECT_STREQ(arguments[5].bstrVal, L"");
        EXPECT_EQ(arguments[4].vt, VT_BSTR);
        EXPECT_EQ(SysStringLen(arguments[4].bstrVal), 0U);
        EXPECT_EQ(arguments[3].vt, VT_DISPATCH);
        EXPECT_EQ(arguments[3].pdispVal, &other);
        EXPECT_EQ(arguments[2].vt, VT_BOOL);
        EXPECT_EQ(arguments[2].boolVal, VARIANT_TRUE);
        EXPECT_EQ(arguments[1].boolVal, VARIANT_FALSE);
        EXPECT_EQ(arguments[0], value);
    }
    m_object.m_calls.clear();
    EXPECT_EQ(other.m_references, 0U);
}

TEST_F(InvokeHelper, PassesATextOf30000Characters) {
    const std::wstring text(30000, L'x');
    m_driver.InvokeHelper(2, DISPATCH_METHOD, VT_EMPTY, nullptr, Types(VTS_BSTR), text.c_str());
    EXPECT_EQ(SysStringLen(OnlyCall().arguments.at(0).bstrVal), 30000U);
}

TEST_F(InvokeHelper, NamesTheArgumentOfAPropertyPut) {
    m_driver.InvokeHelper(11, DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr, Types(VTS_BSTR), L"name");
    EXPECT_EQ(OnlyCall().kind, DISPATCH_PROPERTYPUT);
    EXPECT_THAT(OnlyCall().names, ElementsAre(DISPID_PROPERTYPUT));
    EXPECT_EQ(OnlyCall().arguments.at(0), _variant_t(L"name"));
}

TEST_F(InvokeHelper, RefusesAnUnknownTypeOfArgument) {
    try {
        m_driver.InvokeHelper(2, DISPATCH_METHOD, VT_EMPTY, nullptr, Types("\x05"), 2.5);
        ADD_FAILURE() << "nothing was raised";
    } catch (COleException* exception) {
        EXPECT_EQ(exception->m_sc, DISP_E_BADVARTYPE);
        exception->Delete();
    }
    EXPECT_THAT(m_object.m_calls, IsEmpty());
}

TEST_F(InvokeHelper, DeliversAText) {
    Answer(L"c:\\work \x0416");
    BSTR text = nullptr;
    m_driver.InvokeHelper(5, DISPATCH_PROPERTYGET, VT_BSTR, &text, nullptr);
    EXPECT_STREQ(_bstr_t(text, false), L"c:\\work \x0416");
    EXPECT_TRUE(OnlyCall().wantsResult);
}

TEST_F(InvokeHelper, DeliversAnObjectWithItsReference) {
    RecordingDispatch other;
    Answer(static_cast<IDispatch*>(&other));
    const ULONG held = other.m_references;
    IDispatch* result = nullptr;
    m_driver.InvokeHelper(2, DISPATCH_METHOD, VT_DISPATCH, &result, nullptr);
    EXPECT_EQ(result, &other);
    EXPECT_EQ(other.m_references, held + 1);
    result->Release();
    m_object.m_answer = nullptr;
    EXPECT_EQ(other.m_references, 0U);
}

TEST_F(InvokeHelper, DeliversAValueAsItIs) {
    Answer(2.5);
    _variant_t value;
    m_driver.InvokeHelper(9, DISPATCH_PROPERTYGET, VT_VARIANT, static_cast<VARIANT*>(&value),
                          nullptr);
    EXPECT_EQ(value, _variant_t(2.5));
}

TEST_F(InvokeHelper, DeliversNumbersAndFlags) {
    Answer(-7L);
    long number = 0;
    m_driver.InvokeHelper(1, DISPATCH_PROPERTYGET, VT_I4, &number, nullptr);
    EXPECT_EQ(number, -7);
    Answer(true);
    VARIANT_BOOL flag = VARIANT_FALSE;
    m_driver.InvokeHelper(1, DISPATCH_PROPERTYGET, VT_BOOL, &flag, nullptr);
    EXPECT_EQ(flag, VARIANT_TRUE);
}

TEST_F(InvokeHelper, ConvertsTheResult) {
    Answer(42L);
    BSTR text = nullptr;
    m_driver.InvokeHelper(5, DISPATCH_PROPERTYGET, VT_BSTR, &text, nullptr);
    EXPECT_STREQ(_bstr_t(text, false), L"42");
    Answer(L"42");
    long number = 0;
    m_driver.InvokeHelper(5, DISPATCH_PROPERTYGET, VT_I4, &number, nullptr);
    EXPECT_EQ(number, 42);
}

TEST_F(InvokeHelper, RaisesForAResultThatCannotBeConverted) {
    Answer(L"no object");
    IDispatch* result = nullptr;
    try {
        m_driver.InvokeHelper(2, DISPATCH_METHOD, VT_DISPATCH, &result, nullptr);
        FAIL() << "nothing was raised";
    } catch (COleException* exception) {
        EXPECT_EQ(exception->m_sc, DISP_E_TYPEMISMATCH);
        exception->Delete();
    }
    EXPECT_EQ(result, nullptr);
}

TEST_F(InvokeHelper, RaisesForATypeOfResultThatItDoesNotDeliver) {
    Answer(2.5);
    double result = 1.5;
    try {
        m_driver.InvokeHelper(5, DISPATCH_PROPERTYGET, VT_R8, &result, nullptr);
        FAIL() << "nothing was raised";
    } catch (COleException* exception) {
        EXPECT_EQ(exception->m_sc, DISP_E_BADVARTYPE);
        exception->Delete();
    }
    EXPECT_EQ(result, 1.5);
}

TEST_F(InvokeHelper, LeavesTheResultEmptyWhenTheComponentGivesNone) {
    _variant_t null;
    null.vt = VT_NULL;
    for (const _variant_t& nothing : {_variant_t(), null}) {
        Answer(nothing);
        IDispatch* object = nullptr;
        m_driver.InvokeHelper(2, DISPATCH_METHOD, VT_DISPATCH, &object, nullptr);
        EXPECT_EQ(object, nullptr);
        BSTR text = nullptr;
        m_driver.InvokeHelper(5, DISPATCH_PROPERTYGET, VT_BSTR, &text, nullptr);
        EXPECT_EQ(text, nullptr);
    }
    Answer(static_cast<IDispatch*>(nullptr));
    IDispatch* object = nullptr;
    m_driver.InvokeHelper(2, DISPATCH_METHOD, VT_DISPATCH, &object, nullptr);
    EXPECT_EQ(object, nullptr);
}

TEST_F(InvokeHelper, RaisesTheComponentsOwnDescription) {
    Fail(DISP_E_EXCEPTION, L"The project is locked.", E_ACCESSDENIED);
    try {
        m_driver.InvokeHelper(15, DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr);
        FAIL() << "nothing was raised";
    } catch (COleDispatchException* exception) {
        EXPECT_STREQ(exception->m_strDescription, L"The project is locked.");
        EXPECT_EQ(exception->m_sc, E_ACCESSDENIED);
        exception->Delete();
    }
}

TEST_F(InvokeHelper, RaisesTheCodeOfEveryOtherFailure) {
    Fail(DISP_E_MEMBERNOTFOUND);
    try {
        m_driver.InvokeHelper(15, DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr);
        FAIL() << "nothing was raised";
    } catch (COleException* exception) {
        EXPECT_EQ(dynamic_cast<COleDispatchException*>(exception), nullptr);
        EXPECT_EQ(exception->m_sc, DISP_E_MEMBERNOTFOUND);
        exception->Delete();
    }
}

TEST_F(InvokeHelper, AcceptsEverySuccess) {
    m_object.m_answer = [](const RecordingDispatch::Call&, VARIANT*, EXCEPINFO*) {
        return S_FALSE;
    };
    EXPECT_NO_THROW(m_driver.InvokeHelper(12, DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr));
}

TEST_F(InvokeHelper, DoesNothingWithoutAnObject) {
    m_driver.ReleaseDispatch();
    BSTR text = nullptr;
    m_driver.InvokeHelper(5, DISPATCH_PROPERTYGET, VT_BSTR, &text, nullptr);
    EXPECT_EQ(text, nullptr);
    EXPECT_THAT(m_object.m_calls, IsEmpty());
}

} // namespace
