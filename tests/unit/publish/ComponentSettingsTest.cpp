#include "publish/ComponentSettings.h"

#include "tests/support/PublishFixture.h"
#include "tests/support/RegistryRoots.h"

#include <gmock/gmock.h>

namespace zt::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr wchar_t KeyName[] = L"Components\\KV3D";

std::vector<BYTE> Text(const std::wstring& text) {
    const BYTE* const bytes = reinterpret_cast<const BYTE*>(text.c_str());
    return {bytes, bytes + (text.size() + 1) * sizeof(wchar_t)};
}

class ComponentSettings : public testing::Test {
  protected:
    ComponentSettings() { component.Answer(IID_IPersistPropertyBag, &settings); }

    bool Load() { return LoadSettings(component.Get(), roots.User(), roots.Machine(), KeyName); }
    bool Save() { return SaveSettings(component.Get(), roots.User(), roots.Machine(), KeyName); }

    RegistryRoots roots;
    CallList calls;
    FakeSettings settings{calls, "Component"};
    FakeObject<Component3D> component{calls};
};

TEST_F(ComponentSettings, AreLoadedFromTheUsersSubkey) {
    RegistryRoots::Set(roots.User(), KeyName, L"Quality", REG_SZ, Text(L"high"));
    EXPECT_TRUE(Load());
    EXPECT_THAT(calls, ElementsAre("Component.Load(\"high\")"));
}

TEST_F(ComponentSettings, AreLoadedFromTheDefaultsAlone) {
    RegistryRoots::Set(roots.Machine(), KeyName, L"Quality", REG_SZ, Text(L"low"));
    EXPECT_TRUE(Load());
    EXPECT_THAT(calls, ElementsAre("Component.Load(\"low\")"));
}

TEST_F(ComponentSettings, AreNotLoadedWithoutASubkey) {
    EXPECT_FALSE(Load());
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_FALSE(roots.HasUserKey(KeyName));
}

TEST_F(ComponentSettings, AreNotLoadedIntoAComponentWithoutTheInterface) {
    RegistryRoots::Set(roots.User(), KeyName, L"Quality", REG_SZ, Text(L"high"));
    component.Answer(IID_IPersistPropertyBag, nullptr);
    EXPECT_FALSE(Load());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ComponentSettings, AreNotLoadedWhereTheComponentRefuses) {
    RegistryRoots::Set(roots.User(), KeyName, L"Quality", REG_SZ, Text(L"high"));
    settings.result = E_FAIL;
    EXPECT_FALSE(Load());
    EXPECT_THAT(calls, ElementsAre("Component.Load(\"high\")"));
}

TEST_F(ComponentSettings, AreSavedWholeIntoAFreshSubkeyOfTheUser) {
    EXPECT_TRUE(Save());
    EXPECT_THAT(calls, ElementsAre("Component.Save(1, 1)"));
    ASSERT_TRUE(roots.UserValue(KeyName, L"Quality").has_value());
    EXPECT_EQ(roots.UserValue(KeyName, L"Quality")->bytes, Text(L"best"));
}

TEST_F(ComponentSettings, AreNotSavedWhereTheComponentRefuses) {
    settings.result = E_FAIL;
    EXPECT_FALSE(Save());
}

TEST_F(ComponentSettings, AreNotSavedByAComponentWithoutTheInterface) {
    component.Answer(IID_IPersistPropertyBag, nullptr);
    EXPECT_FALSE(Save());
    EXPECT_FALSE(roots.HasUserKey(KeyName));
}

// ---- the product's keys ----

class ProductSettings : public ComponentSettings {
  protected:
    void Load(const wchar_t* product) {
        ComPtr<CStatusDispSite> site = new CStatusDispSite(nullptr);
        site->Product().SetProduct(product);
        LoadProductSettings(component.Get(), site.Get(), KeyName);
    }
    // Every key of the product that a test may want, or not.
    void StoreUser(const wchar_t* product) {
        user.SetText(std::wstring(L"Software\\Morvenit\\") + product + L"\\" + KeyName, L"Quality",
                     L"user");
    }
    void StoreMachine(const wchar_t* product) {
        machine.SetText(std::wstring(L"Software\\Morvenit\\") + product + L"\\" + KeyName,
                        L"Quality", L"machine");
    }

    RegistryOverride user{HKEY_CURRENT_USER};
    RegistryOverride machine{HKEY_LOCAL_MACHINE};
};

TEST_F(ProductSettings, ComeFromTheVersionedKeyOfTheUser) {
    StoreMachine(L"ZeltorManual");
    StoreUser(L"ZeltorManual\\1.4");
    Load(L"ZeltorManual");
    EXPECT_THAT(calls, ElementsAre("Component.Load(\"user\")"));
}

TEST_F(ProductSettings, HaveTheFirstVersionForTextsAndIllustrations) {
    for (const wchar_t* product : {L"ZeltorText", L"ZeltorIllustrator"}) {
        calls.clear();
        StoreMachine(product);
        StoreUser((std::wstring(product) + L"\\1.4").c_str());
        Load(product);
        EXPECT_THAT(calls, IsEmpty());
        StoreUser((std::wstring(product) + L"\\1.0").c_str());
        Load(product);
        EXPECT_THAT(calls, ElementsAre("Component.Load(\"user\")"));
    }
}

TEST_F(ProductSettings, FallBackToTheMachinesUnversionedKey) {
    StoreMachine(L"ZeltorManual");
    user.SetText(L"Software\\Morvenit\\ZeltorManual\\1.4", L"Installed", L"yes");
    Load(L"ZeltorManual");
    EXPECT_THAT(calls, ElementsAre("Component.Load(\"machine\")"));
}

TEST_F(ProductSettings, AreNotTakenFromAVersionedKeyOfTheMachine) {
    StoreMachine(L"ZeltorManual\\1.4");
    user.SetText(L"Software\\Morvenit\\ZeltorManual\\1.4", L"Installed", L"yes");
    Load(L"ZeltorManual");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ProductSettings, AreNotLoadedWithoutTheUsersKey) {
    StoreMachine(L"ZeltorManual");
    Load(L"ZeltorManual");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ProductSettings, AreNotLoadedWithoutTheMachinesKey) {
    StoreUser(L"ZeltorManual\\1.4");
    Load(L"ZeltorManual");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ProductSettings, AreNotLoadedWithoutASite) {
    StoreMachine(L"ZeltorManual");
    StoreUser(L"ZeltorManual\\1.4");
    LoadProductSettings(component.Get(), nullptr, KeyName);
    EXPECT_THAT(calls, IsEmpty());
}

} // namespace
} // namespace zt::test
