// Calls through COleDispatchDriver.
#include "framework/OleDispatchDriver.h"

#include "tests/support/FakeDispatch.h"

#include <gmock/gmock.h>

namespace zt::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class InvokeHelper : public testing::Test {
  protected:
    InvokeHelper() {
        m_object.AddRef();
        m_driver.AttachDispatch(&m_object);
    }
    _variant_t Get(VARTYPE type) {
        return m_driver.InvokeHelper(5, DISPATCH_PROPERTYGET, type, {});
    }
    // The code of the OLE exception that the call raises.
    SCODE CodeOfFailure(VARTYPE type = VT_EMPTY) {
        try {
            Get(type);
        } catch (COleException* exception) {
            const SCODE code = exception->m_sc;
            EXPECT_EQ(dynamic_cast<COleDispatchException*>(exception), nullptr);
            exception->Delete();
            return code;
        }
        ADD_FAILURE() << "nothing was raised";
        return S_OK;
    }

    FakeDispatch m_object;
    COleDispatchDriver m_driver;
};

TEST_F(InvokeHelper, CallsTheOperationWithItsKind) {
    m_driver.InvokeHelper(12, DISPATCH_METHOD, VT_EMPTY, {});
    ASSERT_EQ(m_object.invocations.size(), 1U);
    const Invocation& call = m_object.invocations[0];
    EXPECT_EQ(call.id, 12);
    EXPECT_EQ(call.kind, DISPATCH_METHOD);
    EXPECT_EQ(call.iid, IID_NULL);
    EXPECT_EQ(call.locale, 0U);
    EXPECT_THAT(call.arguments, IsEmpty());
    EXPECT_THAT(call.named, IsEmpty());
    EXPECT_FALSE(call.asksResult);
    EXPECT_TRUE(call.asksInfo);
}

TEST_F(InvokeHelper, NamesTheArgumentOfAPropertyPut) {
    VARIANTARG argument = {};
    argument.vt = VT_I4;
    argument.lVal = 7;
    m_driver.InvokeHelper(11, DISPATCH_PROPERTYPUT, VT_EMPTY, {&argument, 1});
    ASSERT_EQ(m_object.invocations.size(), 1U);
    EXPECT_EQ(m_object.invocations[0].kind, DISPATCH_PROPERTYPUT);
    EXPECT_THAT(m_object.invocations[0].named, ElementsAre(-3));
    EXPECT_THAT(m_object.invocations[0].arguments, ElementsAre(_variant_t(7L)));
}

TEST_F(InvokeHelper, ReturnsTheResultConvertedToItsType) {
    m_object.answer = Give(42L);
    EXPECT_EQ(Get(VT_I4), _variant_t(42L));
    EXPECT_EQ(Get(VT_BSTR), _variant_t(L"42"));
    m_object.answer = Give(L"c:\\work \x0416");
    EXPECT_EQ(Get(VT_BSTR), _variant_t(L"c:\\work \x0416"));
    EXPECT_TRUE(m_object.invocations.back().asksResult);
}

TEST_F(InvokeHelper, ReturnsAValueAsItIs) {
    m_object.answer = Give(2.5);
    EXPECT_EQ(Get(VT_VARIANT), _variant_t(2.5));
}

TEST_F(InvokeHelper, ReturnsNothingWhereTheComponentGivesNothing) {
    _variant_t null;
    null.vt = VT_NULL;
    for (const _variant_t& nothing : {_variant_t(), null}) {
        m_object.answer = Give(nothing);
        EXPECT_EQ(Get(VT_DISPATCH).vt, VT_EMPTY);
        EXPECT_EQ(Get(VT_BSTR).vt, VT_EMPTY);
        EXPECT_EQ(Get(VT_VARIANT).vt, nothing.vt);
    }
}

TEST_F(InvokeHelper, RaisesForAResultThatCannotBeConverted) {
    m_object.answer = Give(L"no object");
    EXPECT_EQ(CodeOfFailure(VT_DISPATCH), DISP_E_TYPEMISMATCH);
}

TEST_F(InvokeHelper, RaisesTheComponentsOwnDescription) {
    m_object.answer = Raise(L"The project is locked.", E_ACCESSDENIED);
    try {
        Get(VT_EMPTY);
        FAIL() << "nothing was raised";
    } catch (COleDispatchException* exception) {
        EXPECT_STREQ(exception->m_strDescription, L"The project is locked.");
        EXPECT_EQ(exception->m_sc, E_ACCESSDENIED);
        exception->Delete();
    }
}

TEST_F(InvokeHelper, RaisesTheCodeOfEveryOtherFailure) {
    m_object.answer = Succeed(DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(CodeOfFailure(), DISP_E_MEMBERNOTFOUND);
}

TEST_F(InvokeHelper, AcceptsEverySuccess) {
    m_object.answer = Succeed(S_FALSE);
    EXPECT_NO_THROW(Get(VT_EMPTY));
}

TEST_F(InvokeHelper, DoesNothingWithoutAnObject) {
    m_driver.ReleaseDispatch();
    EXPECT_EQ(Get(VT_BSTR).vt, VT_EMPTY);
    EXPECT_THAT(m_object.invocations, IsEmpty());
}

} // namespace
} // namespace zt::test
