#include "tests/unit/FakeClasses.h"

#include "components/Creation.h"
#include "components/contracts/Kernel.h"
#include "tests/unit/FakeKernel.h"

#include <wrl/client.h>

namespace zt::test {
namespace {

using Microsoft::WRL::ComPtr;

constexpr CLSID TestClass = {0x1f5a1e2b, 0x3c4d, 0x4e5f, {0x90, 1, 2, 3, 4, 5, 6, 7}};

TEST(FakeClasses, AreFoundByProgIdAndMakeTheTestsOwnObject) {
    CallList calls;
    FakeObject<KernelAdmin> object(calls);
    const FakeClasses classes({{TestClass, L"KV.Admin", Hand(object.Get())}});
    ComPtr<IUnknown> created;
    EXPECT_EQ(CreateComponent(L"KV.Admin", nullptr, AllServers, &created), S_OK);
    EXPECT_EQ(created.Get(), object.Get());
}

TEST(FakeClasses, AreFoundByIdAndFailAsTold) {
    const FakeClasses classes({{TestClass, L"", Refuse(CO_E_SERVER_EXEC_FAILURE)}});
    ComPtr<IUnknown> created;
    EXPECT_EQ(CoCreateInstance(TestClass, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&created)),
              CO_E_SERVER_EXEC_FAILURE);
}

TEST(FakeClasses, AreGoneWithTheObject) {
    { const FakeClasses classes({{TestClass, L"ZtTest.Gone", Refuse(E_FAIL)}}); }
    ComPtr<IUnknown> created;
    EXPECT_EQ(CreateComponent(L"ZtTest.Gone", nullptr, AllServers, &created), CO_E_CLASSSTRING);
    EXPECT_EQ(CoCreateInstance(TestClass, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&created)),
              REGDB_E_CLASSNOTREG);
}

} // namespace
} // namespace zt::test
