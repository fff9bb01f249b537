#include "components/SpecificationClass.h"

#include <array>
#include <cstddef>

namespace zt {

namespace {

using enum SpecificationClass;

// clang-format off
constexpr std::array Classes = {
    // class                  word      code product               version  route                   learning
    SpecificationClassFacts{Ipc,   L"IPC",   13,  L"ZeltorCatalog",     L"1.4", PublishRoute::Exporter, false},
    SpecificationClassFacts{Proc,  L"PROC",  11,  L"ZeltorManual",      L"1.4", PublishRoute::Viewer,   false},
    SpecificationClassFacts{Trng,  L"TRNG",  3,   L"ZeltorLearning",    L"1.4", PublishRoute::Viewer,   true},
    SpecificationClassFacts{Text,  L"TEXT",  127, L"ZeltorText",        L"1.0", PublishRoute::Text,     false},
    SpecificationClassFacts{Illus, L"ILLUS", 141, L"ZeltorIllustrator", L"1.0", PublishRoute::Exporter, false},
};
// clang-format on

// A class without a row does not compile: -Wswitch reports the missing case, and the row that it
// gets has to stand at its place in the table.
constexpr std::size_t RowOf(SpecificationClass value) {
    switch (value) {
    case Ipc:
        return 0;
    case Proc:
        return 1;
    case Trng:
        return 2;
    case Text:
        return 3;
    case Illus:
        return 4;
    }
    return 0;
}

constexpr bool EachRowIsAtItsPlace() {
    for (std::size_t row = 0; row < Classes.size(); ++row)
        if (RowOf(Classes[row].value) != row)
            return false;
    return true;
}
static_assert(EachRowIsAtItsPlace());

} // namespace

const SpecificationClassFacts& FactsOf(SpecificationClass value) {
    return Classes[RowOf(value)];
}

std::optional<SpecificationClass> SpecificationClassOf(const wchar_t* word, TextEquality equal) {
    for (const SpecificationClassFacts& known : Classes)
        if (equal(word, known.word))
            return known.value;
    return std::nullopt;
}

} // namespace zt
