// Passes libFuzzer's inputs to the program's single target.
#include <cstddef>
#include <cstdint>

#include "fuzz/support/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::targets().front().run({reinterpret_cast<const char*>(data), size});
    return 0;
}
