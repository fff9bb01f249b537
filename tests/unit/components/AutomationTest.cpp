#include "components/Automation.h"

#include "components/contracts/Administration.h"
#include "tests/support/FakeDispatch.h"

#include <gtest/gtest.h>

namespace zt::test {
namespace {

std::wstring MessageOf(COleException* failure) {
    wchar_t message[1024] = {};
    failure->GetErrorMessage(message, 1024);
    failure->Delete();
    return message;
}

TEST(AutomationObject, ReleasesItsObjectWhenItIsDetachedOrDestroyed) {
    FakeDispatch component;
    {
        AutomationObject<Archive> archive{ComPtr<IDispatch>(&component)};
        EXPECT_EQ(component.References(), 1);
        archive.Attach(nullptr);
        EXPECT_EQ(component.References(), 0);
        archive.Attach(ComPtr<IDispatch>(&component));
        EXPECT_EQ(component.References(), 1);
    }
    EXPECT_EQ(component.References(), 0);
}

TEST(AutomationObject, WithoutAnObjectDoesNothingAndGivesNothing) {
    AutomationObject<Configuration> configuration;
    EXPECT_FALSE(configuration);
    configuration.Call<Configuration::Open>();
    EXPECT_EQ(configuration.Call<Configuration::WorkFolder>().length(), 0u);
    EXPECT_EQ(configuration.Call<Configuration::ImportedProjects>().vt, VT_EMPTY);
    EXPECT_EQ(configuration.Call<Configuration::ExportProject>(L"key", -1), nullptr);
}

TEST(AutomationObject, GivesNothingWhereTheComponentSucceedsWithNothing) {
    FakeDispatch component;
    AutomationObject<Configuration> configuration{ComPtr<IDispatch>(&component)};
    _variant_t null;
    null.vt = VT_NULL;
    _variant_t noText;
    noText.vt = VT_BSTR;
    noText.bstrVal = nullptr;
    for (const _variant_t& nothing : {_variant_t(), null, noText}) {
        component.answer = Give(nothing);
        EXPECT_EQ(configuration.Call<Configuration::WorkFolder>().length(), 0u) << nothing.vt;
    }
    for (const _variant_t& nothing :
         {_variant_t(), null, _variant_t(static_cast<IDispatch*>(nullptr))}) {
        component.answer = Give(nothing);
        EXPECT_EQ(configuration.Call<Configuration::ExportProject>(L"key", -1), nullptr)
            << nothing.vt;
    }
}

TEST(AutomationObject, ConvertsAResultOfAnotherType) {
    FakeDispatch object;
    FakeDispatch component;
    AutomationObject<Configuration> configuration{ComPtr<IDispatch>(&component)};
    component.answer = Give(_variant_t(12L));
    EXPECT_STREQ(configuration.Call<Configuration::WorkFolder>(), L"12");
    component.answer = Give(_variant_t(static_cast<IUnknown*>(&object)));
    EXPECT_EQ(configuration.Call<Configuration::ExportProject>(L"key", -1).Get(), &object);
    component.answer = nullptr;
}

TEST(AutomationObject, RaisesForAResultThatCannotBeConverted) {
    FakeDispatch component;
    component.answer = Give(_variant_t(L"no object"));
    AutomationObject<Configuration> configuration{ComPtr<IDispatch>(&component)};
    try {
        configuration.Call<Configuration::ExportProject>(L"key", -1);
        ADD_FAILURE() << "nothing was raised";
    } catch (COleException* failure) {
        EXPECT_EQ(failure->m_sc, DISP_E_TYPEMISMATCH);
        failure->Delete();
    }
}

TEST(AutomationObject, RaisesTheComponentsOwnDescription) {
    FakeDispatch component;
    component.answer = Raise(L"The archive is broken.");
    AutomationObject<Configuration> configuration{ComPtr<IDispatch>(&component)};
    try {
        configuration.Call<Configuration::Open>();
        ADD_FAILURE() << "nothing was raised";
    } catch (COleException* failure) {
        EXPECT_EQ(MessageOf(failure), L"The archive is broken.");
    }
}

TEST(AutomationObject, RaisesTheResultCodeOfEveryOtherFailure) {
    FakeDispatch component;
    component.answer = Succeed(static_cast<HRESULT>(0x80045678));
    AutomationObject<Configuration> configuration{ComPtr<IDispatch>(&component)};
    try {
        configuration.Call<Configuration::Open>();
        ADD_FAILURE() << "nothing was raised";
    } catch (COleException* failure) {
        EXPECT_EQ(MessageOf(failure), L"0x80045678");
    }
}

TEST(AutomationObject, TakesEverySuccessCodeAsSuccess) {
    FakeDispatch component;
    component.answer = Succeed(S_FALSE);
    AutomationObject<Configuration> configuration{ComPtr<IDispatch>(&component)};
    configuration.Call<Configuration::Open>();
    EXPECT_EQ(component.invocations.size(), 1u);
}

} // namespace
} // namespace zt::test
