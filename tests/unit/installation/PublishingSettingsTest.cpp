// The settings of the publishing stand-ins, saved and loaded through a property bag.
#include "tests/support/Isolation.h"
#include "tests/unit/installation/Kit.h"

#include "components/ComponentIds.h"

#include <comdef.h>
#include <gmock/gmock.h>
#include <ocidl.h>

#include <map>

namespace devinst::test {
namespace {

using Microsoft::WRL::ComPtr;

// Holds what is written, and gives it in the type that is asked for. Lives on the stack.
class MemoryBag final : public IPropertyBag {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        const auto found = values.find(name);
        if (found == values.end())
            return E_FAIL;
        const VARTYPE type = value->vt;
        VariantInit(value);
        return VariantChangeTypeEx(value, &found->second, 1033, 0, type);
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override {
        values[name] = *value;
        return name == refused ? E_ACCESSDENIED : S_OK;
    }

    std::map<std::wstring, _variant_t> values;
    std::wstring refused;
};

enum class Which { Exporter, Component3D };

class SettingsStandIn : public testing::TestWithParam<Which> {
  protected:
    ComPtr<IPersistPropertyBag> Component() {
        ComPtr<IPersistPropertyBag> component;
        EXPECT_EQ(GetParam() == Which::Exporter
                      ? m_library.Create(CLSID_Exporter, IID_PPV_ARGS(component.GetAddressOf()))
                      : m_library.Create(L"KV.3D.1", IID_PPV_ARGS(component.GetAddressOf())),
                  S_OK);
        return component;
    }
    // What a component saves that has loaded the values.
    std::map<std::wstring, _variant_t> SavedAfter(std::map<std::wstring, _variant_t> loaded) {
        MemoryBag source, target;
        source.values = std::move(loaded);
        const auto component = Component();
        EXPECT_EQ(component->Load(&source, nullptr), S_OK);
        EXPECT_EQ(component->Save(&target, TRUE, TRUE), S_OK);
        return target.values;
    }

    zt::test::RegistryOverride m_registry{HKEY_LOCAL_MACHINE};
    RegisteredLibrary m_library{L"zt-publishing.dll"};
};

const std::map<std::wstring, _variant_t> Own = {{L"Accent", L"#2a5d84"},
                                                {L"Footer", L""},
                                                {L"ShowDocuments", true},
                                                {L"TableRows", 1000L},
                                                {L"Scale", 1.0}};

TEST_P(SettingsStandIn, AreTheComponentsOwnWithoutStoredOnes) {
    EXPECT_EQ(SavedAfter({}), Own);
}

TEST_P(SettingsStandIn, AreSavedAsTheyWereLoaded) {
    const std::map<std::wstring, _variant_t> values = {{L"Accent", L"#ABCDEF"},
                                                       {L"Footer", L"f"},
                                                       {L"ShowDocuments", false},
                                                       {L"TableRows", 3L},
                                                       {L"Scale", 2.5}};
    EXPECT_EQ(SavedAfter(values), values);
}

TEST_P(SettingsStandIn, WithoutSenseAreLeftOut) {
    for (const wchar_t* accent : {L"", L"red", L"#12345", L"#1234567", L"#12345g", L"123456#"})
        EXPECT_EQ(SavedAfter({{L"Accent", accent}}), Own);
    for (const long rows : {0L, -1L})
        EXPECT_EQ(SavedAfter({{L"TableRows", rows}}), Own);
    for (const double scale : {0.0, -1.0, 101.0})
        EXPECT_EQ(SavedAfter({{L"Scale", scale}}), Own);
}

TEST_P(SettingsStandIn, FailToBeSavedWhereTheBagRefusesOne) {
    MemoryBag bag;
    bag.refused = L"TableRows";
    EXPECT_EQ(Component()->Save(&bag, TRUE, TRUE), E_ACCESSDENIED);
    EXPECT_EQ(bag.values.size(), Own.size());
}

TEST_P(SettingsStandIn, AreTheComponentsOwnAgainOnceItIsMadeNew) {
    MemoryBag source, target;
    source.values = {{L"Footer", L"f"}};
    const auto component = Component();
    EXPECT_EQ(component->Load(&source, nullptr), S_OK);
    EXPECT_EQ(component->InitNew(), S_OK);
    EXPECT_EQ(component->Save(&target, TRUE, TRUE), S_OK);
    EXPECT_EQ(target.values, Own);
}

INSTANTIATE_TEST_SUITE_P(Of, SettingsStandIn, testing::Values(Which::Exporter, Which::Component3D),
                         [](const auto& info) {
                             return info.param == Which::Exporter ? "TheExporter"
                                                                  : "The3DComponent";
                         });

} // namespace
} // namespace devinst::test
