#include "config/SpecificationClass.h"

namespace zt {

namespace {

struct Word {
    const wchar_t* text;
    SpecificationClass value;
};

constexpr Word Words[] = {
    {L"IPC", SpecificationClass::Ipc},     {L"PROC", SpecificationClass::Proc},
    {L"TRNG", SpecificationClass::Trng},   {L"TEXT", SpecificationClass::Text},
    {L"ILLUS", SpecificationClass::Illus},
};

} // namespace

std::optional<SpecificationClass> SpecificationClassOf(const wchar_t* word, TextEquality equal) {
    for (const Word& known : Words)
        if (equal(word, known.text))
            return known.value;
    return std::nullopt;
}

} // namespace zt
