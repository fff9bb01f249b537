// The entry of one fuzzer; ZT_FUZZ_TARGET is the function that it drives.
#include "tests/fuzz/Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zt::fuzz::ZT_FUZZ_TARGET({data, size});
    return 0;
}
