#include "components/SpecificationClass.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <string>

namespace zt {
namespace {

TEST(SpecificationClass, DecidesProductAndPublication) {
    const SpecificationClassFacts expected[] = {
        {SpecificationClass::Ipc, L"IPC", 13, L"ZeltorCatalog", L"1.4", PublishRoute::Exporter,
         false},
        {SpecificationClass::Proc, L"PROC", 11, L"ZeltorManual", L"1.4", PublishRoute::Viewer,
         false},
        {SpecificationClass::Trng, L"TRNG", 3, L"ZeltorLearning", L"1.4", PublishRoute::Viewer,
         true},
        {SpecificationClass::Text, L"TEXT", 127, L"ZeltorText", L"1.0", PublishRoute::Text, false},
        {SpecificationClass::Illus, L"ILLUS", 141, L"ZeltorIllustrator", L"1.0",
         PublishRoute::Exporter, false},
    };
    for (const SpecificationClassFacts& row : expected) {
        const SpecificationClassFacts& facts = FactsOf(row.value);
        EXPECT_EQ(facts.value, row.value);
        EXPECT_EQ(std::wstring(facts.word), row.word);
        EXPECT_EQ(facts.productCode, row.productCode);
        EXPECT_EQ(std::wstring(facts.productName), row.productName);
        EXPECT_EQ(std::wstring(facts.versionKey), row.versionKey);
        EXPECT_EQ(facts.route, row.route);
        EXPECT_EQ(facts.isLearning, row.isLearning);
    }
}

TEST(SpecificationClass, IsKnownByItsWord) {
    const auto equal = [](const wchar_t* left, const wchar_t* right) {
        return std::wcscmp(left, right) == 0;
    };
    EXPECT_EQ(SpecificationClassOf(L"IPC", equal), SpecificationClass::Ipc);
    EXPECT_EQ(SpecificationClassOf(L"PROC", equal), SpecificationClass::Proc);
    EXPECT_EQ(SpecificationClassOf(L"TRNG", equal), SpecificationClass::Trng);
    EXPECT_EQ(SpecificationClassOf(L"TEXT", equal), SpecificationClass::Text);
    EXPECT_EQ(SpecificationClassOf(L"ILLUS", equal), SpecificationClass::Illus);
    for (const wchar_t* unknown : {L"", L"ipc", L"IPC ", L" IPC", L"TEXTS", L"TEX", L"0"})
        EXPECT_EQ(SpecificationClassOf(unknown, equal), std::nullopt);
    EXPECT_EQ(static_cast<int>(SpecificationClass::Ipc), 0);
    EXPECT_EQ(static_cast<int>(SpecificationClass::Proc), 1);
    EXPECT_EQ(static_cast<int>(SpecificationClass::Trng), 2);
    EXPECT_EQ(static_cast<int>(SpecificationClass::Text), 3);
    EXPECT_EQ(static_cast<int>(SpecificationClass::Illus), 4);
}

} // namespace
} // namespace zt
