// Functions that are compiled for a wider instruction set than the baseline. Only such a function
// itself is, so the linker cannot replace one of the baseline by a wider twin. A lambda inside it
// would not be.
#pragma once

#ifdef __x86_64__

#include <immintrin.h>

#define QUARZEL_WIDE __attribute__((target("avx2")))

namespace VSTGUI {

inline bool hasWideVectors() {
    return __builtin_cpu_supports("avx2");
}

}  // namespace VSTGUI

#else

namespace VSTGUI {

constexpr bool hasWideVectors() {
    return false;
}

}  // namespace VSTGUI

#endif
