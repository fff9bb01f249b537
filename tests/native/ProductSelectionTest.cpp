#include "project/ProductSelection.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace zt::test {
namespace {

TEST(ProductSelection, FollowsTheSpecificationsClass) {
    const struct {
        std::int32_t specificationClass;
        std::int32_t code;
        const wchar_t* name;
    } products[] = {
        {0, 13, L"ZeltorCatalog"}, {1, 11, L"ZeltorManual"},       {2, 3, L"ZeltorLearning"},
        {3, 127, L"ZeltorText"},   {4, 141, L"ZeltorIllustrator"},
    };
    for (const auto& product : products) {
        const auto selected = SelectProductFor(product.specificationClass);
        ASSERT_TRUE(selected) << product.specificationClass;
        EXPECT_EQ(selected->code, product.code);
        EXPECT_EQ(std::wstring(selected->name), product.name);
    }
}

TEST(ProductSelection, IsNothingForAnyOtherClass) {
    for (const std::int32_t other : {-1, 5, 13, std::numeric_limits<std::int32_t>::min()})
        EXPECT_FALSE(SelectProductFor(other)) << other;
}

} // namespace
} // namespace zt::test
