#pragma once

#include <cstdint>
#include <optional>

namespace zt {

// Classes of a specification, with the values that the components know them by.
enum class SpecificationClass : std::int32_t { Ipc = 0, Proc = 1, Trng = 2, Text = 3, Illus = 4 };

// Whether two texts are the same for the one who compares them.
using TextEquality = bool (*)(const wchar_t* left, const wchar_t* right);

// The class that a description file calls by this word; none for any other word.
std::optional<SpecificationClass> SpecificationClassOf(const wchar_t* word, TextEquality equal);

} // namespace zt
