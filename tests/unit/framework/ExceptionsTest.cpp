#include "framework/Exceptions.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace {

// The message of an exception raised by the step, which must raise one of that kind.
template <typename Exception, typename Step>
std::wstring MessageOf(Step step) {
    try {
        step();
    } catch (Exception* exception) {
        wchar_t message[1024] = L"untouched";
        UINT helpContext = 99;
        EXPECT_TRUE(exception->GetErrorMessage(message, std::size(message), &helpContext));
        EXPECT_EQ(helpContext, 0U);
        exception->Delete();
        return message;
    }
    ADD_FAILURE() << "nothing was raised";
    return {};
}

std::wstring OleMessage(SCODE code) {
    return MessageOf<COleException>([code] { AfxThrowOleException(code); });
}

TEST(OleException, HasTheSystemsTextForItsCodeWithoutALineEnd) {
    const std::wstring message = OleMessage(E_ACCESSDENIED);
    EXPECT_EQ(message.find(L"Access "), 0U);
    EXPECT_EQ(message.back(), L'.');
}

TEST(OleException, ShowsACodeThatTheSystemDoesNotKnow) {
    EXPECT_EQ(OleMessage(static_cast<SCODE>(0xA7000001)), L"0xA7000001");
    EXPECT_EQ(OleMessage(0x0700000F), L"0x0700000F");
}

TEST(OleException, KeepsItsCode) {
    try {
        AfxThrowOleException(E_ACCESSDENIED);
    } catch (COleException* exception) {
        EXPECT_EQ(exception->m_sc, E_ACCESSDENIED);
        exception->Delete();
    }
}

std::wstring DispatchMessage(ExceptionInfo& info) {
    return MessageOf<COleException>([&] { AfxThrowOleDispatchException(info); });
}

TEST(OleDispatchException, IsAnOleExceptionWithTheComponentsDescription) {
    ExceptionInfo info;
    info.scode = E_ACCESSDENIED;
    info.bstrDescription = SysAllocString(L"The project is locked by \x0416.\n");
    EXPECT_EQ(DispatchMessage(info), L"The project is locked by \x0416.\n");
}

TEST(OleDispatchException, HasTheTextOfTheComponentsCodeWithoutADescription) {
    ExceptionInfo info;
    info.scode = static_cast<SCODE>(0xA7000001);
    EXPECT_EQ(DispatchMessage(info), L"0xA7000001");
    info.bstrDescription = SysAllocString(L"");
    EXPECT_EQ(DispatchMessage(info), L"0xA7000001");
}

TEST(OleDispatchException, IsNeverWithoutAMessage) {
    ExceptionInfo info;
    EXPECT_FALSE(DispatchMessage(info).empty());
}

TEST(OleDispatchException, AsksForWhatTheComponentDeferred) {
    ExceptionInfo info;
    info.pfnDeferredFillIn = [](EXCEPINFO* deferred) -> HRESULT {
        deferred->bstrDescription = SysAllocString(L"Filled in later.");
        return S_OK;
    };
    EXPECT_EQ(DispatchMessage(info), L"Filled in later.");
}

TEST(MemoryException, HasAMessage) {
    EXPECT_EQ(MessageOf<CMemoryException>([] { AfxThrowMemoryException(); }), L"Out of memory.");
}

class ErrorMessage : public testing::Test {
  protected:
    ~ErrorMessage() override { m_exception->Delete(); }

    std::wstring m_description = std::wstring(1023, L'x') + L"yz";
    COleDispatchException* m_exception = new COleDispatchException(E_FAIL, CString(m_description));
};

TEST_F(ErrorMessage, IsCutToTheBuffer) {
    wchar_t buffer[1025] = {};
    buffer[1024] = L'!';
    EXPECT_TRUE(m_exception->GetErrorMessage(buffer, 1024));
    EXPECT_EQ(std::wstring(buffer), std::wstring(1023, L'x'));
    EXPECT_EQ(buffer[1024], L'!');
}

TEST(OleDispatchException, HasTheCodeOfAComponentsErrorWithoutACodeOfItsOwn) {
    ExceptionInfo info;
    SCODE code = S_OK;
    try {
        AfxThrowOleDispatchException(info);
    } catch (COleException* exception) {
        code = exception->m_sc;
        exception->Delete();
    }
    EXPECT_EQ(code, DISP_E_EXCEPTION);
}

TEST_F(ErrorMessage, FillsABufferOfItsOwnSize) {
    wchar_t buffer[1026] = {};
    EXPECT_TRUE(m_exception->GetErrorMessage(buffer, std::size(buffer)));
    EXPECT_EQ(std::wstring(buffer), m_description);
}

TEST_F(ErrorMessage, NeedsABuffer) {
    wchar_t buffer[] = L"ab";
    EXPECT_FALSE(m_exception->GetErrorMessage(buffer, 0));
    EXPECT_STREQ(buffer, L"ab");
    EXPECT_FALSE(m_exception->GetErrorMessage(nullptr, 10));
    EXPECT_FALSE(m_exception->GetErrorMessage(buffer, 1));
    EXPECT_STREQ(buffer, L"");
}

} // namespace
