#include "publish/PropBag.h"

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
    void Load() { LoadProductSettings(component.Get(), product, KeyName); }
    void StoreUser() { user.SetText(product.user + L"\\" + KeyName, L"Quality", L"user"); }
    void StoreMachine() {
        machine.SetText(product.machine + L"\\" + KeyName, L"Quality", L"machine");
    }

    const SettingsKeys product = {L"Software\\Product\\1.4", L"Software\\Product"};
    RegistryOverride user{HKEY_CURRENT_USER};
    RegistryOverride machine{HKEY_LOCAL_MACHINE};
};

TEST_F(ProductSettings, ComeFromTheKeyOfTheUser) {
    StoreMachine();
    StoreUser();
    Load();
    EXPECT_THAT(calls, ElementsAre("Component.Load(\"user\")"));
}

TEST_F(ProductSettings, FallBackToTheMachinesKey) {
    StoreMachine();
    user.SetText(product.user, L"Installed", L"yes");
    Load();
    EXPECT_THAT(calls, ElementsAre("Component.Load(\"machine\")"));
}

TEST_F(ProductSettings, AreNotLoadedWithoutTheUsersKey) {
    StoreMachine();
    Load();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ProductSettings, AreNotLoadedWithoutTheMachinesKey) {
    StoreUser();
    Load();
    EXPECT_THAT(calls, IsEmpty());
}

} // namespace
} // namespace zt::test
