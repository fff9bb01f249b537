#include "tests/support/TestClasses.h"

#include "components/Creation.h"

#include <gtest/gtest.h>

#include <wrl/client.h>

namespace zt::test {
namespace {

using Microsoft::WRL::ComPtr;

ComPtr<IUnknown> SomeObject() {
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.GetAddressOf());
    return stream;
}

TEST(TestClass, IsCreatedByItsProgIdWhileItLives) {
    const ComPtr<IUnknown> object = SomeObject();
    ComPtr<IStream> created;
    {
        const TestClass testClass(L"ZT.Test.1", TestClass::Gives(object.Get()));
        EXPECT_EQ(Create<IStream>(L"ZT.Test.1", nullptr, AllServers, created.GetAddressOf()), S_OK);
        EXPECT_TRUE(created);
        ASSERT_EQ(testClass.Asked().size(), 1U);
        EXPECT_EQ(testClass.Asked()[0], IID_IStream);
    }
    EXPECT_EQ(Create<IStream>(L"ZT.Test.1", nullptr, AllServers, created.ReleaseAndGetAddressOf()),
              CO_E_CLASSSTRING);
}

TEST(TestClass, AnswersACreationAsSet) {
    const TestClass failing(L"ZT.Failing.1", TestClass::Fails(E_ACCESSDENIED));
    const TestClass empty(L"ZT.Empty.1", TestClass::GivesNothing());
    ComPtr<IUnknown> created;
    EXPECT_EQ(CreateComponent(L"ZT.Failing.1", nullptr, AllServers, created.GetAddressOf()),
              E_ACCESSDENIED);
    EXPECT_EQ(CreateComponent(L"ZT.Empty.1", nullptr, AllServers, created.GetAddressOf()),
              E_POINTER);
}

} // namespace
} // namespace zt::test
