#include "components/Creation.h"

#include "tests/support/FakeDispatch.h"
#include "tests/support/TestClasses.h"

#include <gtest/gtest.h>

namespace zt::test {
namespace {

using testing::ElementsAre;

TEST(CreateComponent, AsksForIUnknown) {
    FakeDispatch object;
    const TestClass known(L"ZtTest.Component", TestClass::Gives(&object));
    ComPtr<IUnknown> created;
    EXPECT_EQ(CreateComponent(L"ZtTest.Component", nullptr, AllServers, &created), S_OK);
    EXPECT_EQ(created.Get(), &object);
    EXPECT_THAT(known.Asked(), ElementsAre(IID_IUnknown));
}

TEST(CreateHandlerComponent, AsksForTheExportHandlersInterface) {
    FakeDispatch object;
    const TestClass known(L"ZtTest.Handler", [&](IUnknown*, REFIID iid, void** result) {
        EXPECT_EQ(iid, IID_ExportHandler);
        *result = &object;
        object.AddRef();
        return S_OK;
    });
    ComPtr<ExportHandler> created;
    EXPECT_EQ(CreateHandlerComponent(L"ZtTest.Handler", nullptr, AllServers, &created), S_OK);
    EXPECT_EQ(static_cast<void*>(created.Get()), &object);
    EXPECT_EQ(known.Asked().size(), 1u);
}

TEST(CreateEditHandler, AsksForIDispatch) {
    FakeDispatch object;
    const TestClass known(L"ZtTest.Edit", TestClass::Gives(&object));
    ComPtr<IDispatch> created;
    EXPECT_EQ(CreateEditHandler(L"ZtTest.Edit", nullptr, AllServers, &created), S_OK);
    EXPECT_EQ(created.Get(), &object);
    EXPECT_THAT(known.Asked(), ElementsAre(IID_IDispatch));
}

TEST(CreateComponent, ReturnsTheFailureOfTheClassLookup) {
    CLSID id = {};
    const HRESULT expected = CLSIDFromProgID(L"ZtTest.Nowhere", &id);
    ASSERT_TRUE(FAILED(expected));
    IUnknown* created = nullptr;
    EXPECT_EQ(CreateComponent(L"ZtTest.Nowhere", nullptr, AllServers, &created), expected);
    EXPECT_EQ(created, nullptr);
}

TEST(CreateComponent, ReturnsTheFailureOfTheCreation) {
    const TestClass known(L"ZtTest.Failing", TestClass::Fails(CO_E_SERVER_EXEC_FAILURE));
    IUnknown* created = nullptr;
    EXPECT_EQ(CreateComponent(L"ZtTest.Failing", nullptr, AllServers, &created),
              CO_E_SERVER_EXEC_FAILURE);
    EXPECT_EQ(created, nullptr);
}

TEST(CreateComponent, FailsWhereTheCreationSucceedsWithoutAnObject) {
    const TestClass known(L"ZtTest.Empty", TestClass::GivesNothing());
    IUnknown* created = nullptr;
    EXPECT_TRUE(FAILED(CreateComponent(L"ZtTest.Empty", nullptr, AllServers, &created)));
    EXPECT_EQ(created, nullptr);
}

TEST(CreateComponent, HandsTheOuterObjectOn) {
    FakeDispatch outer;
    FakeDispatch object;
    IUnknown* passed = nullptr;
    const TestClass known(L"ZtTest.Outer", [&](IUnknown* given, REFIID iid, void** result) {
        passed = given;
        return object.QueryInterface(iid, result);
    });
    ComPtr<IUnknown> created;
    CreateComponent(L"ZtTest.Outer", &outer, AllServers, &created);
    EXPECT_EQ(passed, &outer);
}

TEST(CreateComponent, LetsNoServerOutsideTheClassContextAnswer) {
    FakeDispatch object;
    const TestClass known(L"ZtTest.InProcess", TestClass::Gives(&object));
    IUnknown* created = nullptr;
    EXPECT_TRUE(
        FAILED(CreateComponent(L"ZtTest.InProcess", nullptr, CLSCTX_LOCAL_SERVER, &created)));
    EXPECT_EQ(created, nullptr);
    EXPECT_EQ(AllServers, 0x17u);
}

} // namespace
} // namespace zt::test
