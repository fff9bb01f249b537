#include "tests/support/FakeDispatch.h"

#include "components/Automation.h"

#include <gtest/gtest-spi.h>

namespace zt::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Sample {
    static constexpr char Name[] = "Sample";
    ZT_LATE_BOUND(Open, 2, Method, Nothing, Text, Int32)
    using Operations = std::tuple<Open>;
};

class Contracted : public testing::Test {
  protected:
    template <typename Operation, typename... Arguments>
    HRESULT ResultOf(Arguments... arguments) {
        AutomationObject<Sample> wrapper{ComPtr<IDispatch>(&m_component)};
        try {
            wrapper.Call<Operation>(arguments...);
        } catch (COleException* failure) {
            const HRESULT code = failure->m_sc;
            failure->Delete();
            return code;
        }
        return S_OK;
    }

    CallList m_calls;
    FakeAutomation<Sample> m_component{m_calls};
};

TEST_F(Contracted, RecordsACallOfTheContract) {
    EXPECT_EQ((ResultOf<Sample::Open>(L"Pump", 2)), S_OK);
    EXPECT_THAT(m_calls, ElementsAre("Sample.Open(\"Pump\", 2)"));
}

TEST_F(Contracted, RefusesEveryOtherCall) {
    EXPECT_EQ((ResultOf<LateBound<99, Method, Nothing>>()), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ((ResultOf<LateBound<2, PropertyGet, Nothing, Text, Int32>>(L"", 2)),
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ((ResultOf<LateBound<2, Method, Nothing, Text>>(L"")), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ((ResultOf<LateBound<2, Method, Nothing, Int32, Text>>(2, L"")), DISP_E_TYPEMISMATCH);
    EXPECT_EQ((ResultOf<LateBound<2, Method, Value, Text, Int32>>(L"", 2)), E_INVALIDARG);
    EXPECT_THAT(m_calls, IsEmpty());
}

} // namespace
} // namespace zt::test
