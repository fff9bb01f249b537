// The classes of a specification, and all that the program derives from a class.
#pragma once

#include <cstdint>
#include <optional>

namespace zt {

// With the values that the components know them by.
enum class SpecificationClass : std::int32_t { Ipc = 0, Proc = 1, Trng = 2, Text = 3, Illus = 4 };

// Which components publish a project.
enum class PublishRoute { Exporter, Text, Viewer };

struct SpecificationClassFacts {
    SpecificationClass value;
    const wchar_t* word;        // in a description file
    std::int32_t productCode;   // as the kernel knows the product that works on such projects
    const wchar_t* productName; // as the registry and the kernel's host know it
    const wchar_t* versionKey;  // of the product's settings in the registry, below its name
    PublishRoute route;
    bool isLearning; // published for learning
};

const SpecificationClassFacts& FactsOf(SpecificationClass value);

// Whether two texts are the same for the one who compares them.
using TextEquality = bool (*)(const wchar_t* left, const wchar_t* right);

// The class that a description file calls by this word; none for any other word.
std::optional<SpecificationClass> SpecificationClassOf(const wchar_t* word, TextEquality equal);

} // namespace zt
