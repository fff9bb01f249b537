#include "app/Outcome.h"

#include "framework/Exceptions.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace zt {
namespace {

// Counts its deletions, which is how a framework exception ends.
class CountedException : public COleDispatchException {
  public:
    CountedException(const CString& description, int& deletions)
        : COleDispatchException(E_FAIL, description), m_deletions(deletions) {}
    ~CountedException() override { ++m_deletions; }

  private:
    int& m_deletions;
};

TEST(Failure, IsNoneWhenNothingIsRaised) {
    int performed = 0;
    EXPECT_EQ(FailureOf([&] { ++performed; }), std::nullopt);
    EXPECT_EQ(performed, 1);
}

TEST(Failure, HasTheConstantText) {
    EXPECT_EQ(FailureOf([] { throw L"Can't open project"; }), L"Can't open project");
    EXPECT_EQ(FailureOf([] { throw static_cast<const wchar_t*>(nullptr); }), L"");
}

TEST(Failure, HasTheComposedText) {
    EXPECT_EQ(FailureOf([] { throw CString(L"Can't insert metadata: ") + L"%s \x0416"; }),
              L"Can't insert metadata: %s \x0416");
}

TEST(Failure, HasTheMessageOfAComponentsException) {
    EXPECT_EQ(FailureOf([] { throw new COleDispatchException(E_FAIL, L"Refused."); }), L"Refused.");
    const auto message = FailureOf([] { throw new COleException(static_cast<SCODE>(0xA7000001)); });
    EXPECT_EQ(message, L"0xA7000001");
}

TEST(Failure, CutsTheMessageOfAComponentsExceptionTo1023Characters) {
    const std::wstring text(3000, L'x');
    EXPECT_EQ(FailureOf([&] { throw new COleDispatchException(E_FAIL, CString(text)); }),
              std::wstring(1023, L'x'));
}

TEST(Failure, DoesNotCutOtherTexts) {
    const std::wstring text(3000, L'x');
    EXPECT_EQ(FailureOf([&] { throw CString(text); }), text);
    EXPECT_EQ(FailureOf([&] { throw text.c_str(); }), text);
}

TEST(Failure, EndsTheComponentsException) {
    int deletions = 0;
    FailureOf([&] { throw new CountedException(L"Refused.", deletions); });
    EXPECT_EQ(deletions, 1);
}

TEST(Failure, LetsEveryOtherExceptionPass) {
    EXPECT_THROW(FailureOf([] { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_THROW(FailureOf([] { throw "narrow"; }), const char*);
    EXPECT_THROW(FailureOf([] { throw 5; }), int);
    EXPECT_THROW(FailureOf([] { throw std::wstring(L"text"); }), std::wstring);
    CMemoryException* passed = nullptr;
    try {
        FailureOf([] { AfxThrowMemoryException(); });
    } catch (CMemoryException* exception) {
        passed = exception;
    }
    ASSERT_NE(passed, nullptr);
    passed->Delete();
}

} // namespace
} // namespace zt
