#include "components/Values.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <oleauto.h>
#include <wrl/client.h>

namespace zt {
namespace {

using Microsoft::WRL::ComPtr;

void SetDescription(const wchar_t* text) {
    ComPtr<ICreateErrorInfo> creator;
    ASSERT_EQ(CreateErrorInfo(creator.GetAddressOf()), S_OK);
    ASSERT_EQ(creator->SetDescription(const_cast<wchar_t*>(text)), S_OK);
    ComPtr<IErrorInfo> info;
    ASSERT_EQ(creator.As(&info), S_OK);
    ASSERT_EQ(SetErrorInfo(0, info.Get()), S_OK);
}

TEST(ErrorDescription, IsEmptyWithoutErrorInformation) {
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(TakeErrorInfo(), L"");
}

TEST(ErrorDescription, IsTakenFromTheThread) {
    SetDescription(L"disk full \x0416");
    EXPECT_EQ(TakeErrorInfo(), L"disk full \x0416");
    EXPECT_EQ(TakeErrorInfo(), L"");
}

TEST(ErrorDescription, IsEmptyWhereTheInformationHasNone) {
    ComPtr<ICreateErrorInfo> creator;
    ASSERT_EQ(CreateErrorInfo(creator.GetAddressOf()), S_OK);
    ComPtr<IErrorInfo> info;
    ASSERT_EQ(creator.As(&info), S_OK);
    SetErrorInfo(0, info.Get());
    EXPECT_EQ(TakeErrorInfo(), L"");
}

} // namespace
} // namespace zt
