// The product that works on the projects of one specification class.
#pragma once

#include <cstdint>
#include <optional>

namespace zt {

struct ProductSelection {
    std::int32_t code; // as the kernel knows it
    const wchar_t* name;
};

// specificationClass: 0 IPC, 1 PROC, 2 TRNG, 3 TEXT, 4 ILLUS. Nothing for any other value.
std::optional<ProductSelection> SelectProductFor(std::int32_t specificationClass);

} // namespace zt
