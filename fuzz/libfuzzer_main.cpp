// Hands the inputs of libFuzzer to the one target of this program.
#include <cstddef>
#include <cstdint>

#include "fuzz/support/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::targets().front().run({reinterpret_cast<const char*>(data), size});
    return 0;
}
