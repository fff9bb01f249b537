#include "project/ProductSelection.h"

namespace zt {

std::optional<ProductSelection> SelectProductFor(std::int32_t specificationClass) {
    switch (specificationClass) {
    case 0: // IPC
        return ProductSelection{13, L"ZeltorCatalog"};
    case 1: // PROC
        return ProductSelection{11, L"ZeltorManual"};
    case 2: // TRNG
        return ProductSelection{3, L"ZeltorLearning"};
    case 3: // TEXT
        return ProductSelection{127, L"ZeltorText"};
    case 4: // ILLUS
        return ProductSelection{141, L"ZeltorIllustrator"};
    default:
        return std::nullopt;
    }
}

} // namespace zt
