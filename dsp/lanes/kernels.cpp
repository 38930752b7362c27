// Compiles the kernels for each instruction set and picks one at run time.
//
// Each instruction set has its own namespace, so that the linker cannot merge a function built for
// a wider set with its baseline twin.
#include "dsp/lanes/kernels.h"

#include <algorithm>
#include <limits>
#include <type_traits>

#ifdef __x86_64__
#include <immintrin.h>
#endif

#include "dsp/module_fm_op.h"
#include "dsp/random.h"
#include "dsp/smoother.h"

namespace dsp {

#define QUARZEL_FUSED 0  // whether there is a fused multiply-add
#define QUARZEL_LANES 4
namespace baseline {
#include "dsp/lanes/kernels.inc"
constexpr Kernels kKernels = allKernels();
}  // namespace baseline
#undef QUARZEL_LANES
#undef QUARZEL_FUSED

#ifdef __x86_64__

#define QUARZEL_FUSED 1

#ifdef __clang__
#pragma clang attribute push(__attribute__((target("avx2,fma"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2,fma")
#endif
#define QUARZEL_LANES 8
namespace avx2 {
#include "dsp/lanes/kernels.inc"
constexpr Kernels kKernels = allKernels();
}  // namespace avx2
#undef QUARZEL_LANES
#ifdef __clang__
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#ifndef QUARZEL_WITHOUT_AVX512
// Sixteen lanes only for more than eight voices: for fewer they compute nothing more, and lower the
// clock of some processors.
#ifdef __clang__
#pragma clang attribute push(__attribute__((target("avx512f,avx512vl,avx512dq,avx512bw,fma"))), \
                             apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx512f,avx512vl,avx512dq,avx512bw,fma")
#endif
#define QUARZEL_AVX512
#define QUARZEL_LANES 16
namespace avx512wide {
#include "dsp/lanes/kernels.inc"
}  // namespace avx512wide
#undef QUARZEL_LANES
#define QUARZEL_LANES 8
#define QUARZEL_ONE_GROUP  // of voices; see runFeedbackInEither
namespace avx512 {
#include "dsp/lanes/kernels.inc"

inline void runFeedbackInEither(const VoiceRun& run) {
    (Groups(run.on).count > 1 ? avx512wide::runFeedback : runFeedback)(run);
}
inline void runSquaredInEither(const VoiceRun& run) {
    (Groups(run.on).count > 1 ? avx512wide::runSquared : runSquared)(run);
}
inline void sumVoicesInEither(const VoiceSum& job) {
    (Groups(job.on).count > 1 ? avx512wide::sumVoices : sumVoices)(job);
}
inline void sumRampsInEither(LevelRamps& ramps, float* sum, int frames) {
    (Groups(ramps.on).count > 1 ? avx512wide::sumRamps : sumRamps)(ramps, sum, frames);
}

constexpr Kernels bestKernels() {
    Kernels kernels = allKernels();
    kernels.runFeedback = runFeedbackInEither;
    kernels.runSquared = runSquaredInEither;
    kernels.sumVoices = sumVoicesInEither;
    kernels.sumRamps = sumRampsInEither;
    return kernels;
}
constexpr Kernels kKernels = bestKernels();
}  // namespace avx512
#undef QUARZEL_LANES
#undef QUARZEL_ONE_GROUP
#ifdef __clang__
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#endif  // QUARZEL_WITHOUT_AVX512

#endif  // __x86_64__

namespace {

const Kernels& kernelsFor(InstructionSet set) {
#ifdef __x86_64__
#ifndef QUARZEL_WITHOUT_AVX512
    if (set == InstructionSet::kAvx512) return avx512::kKernels;
#endif
    if (set == InstructionSet::kAvx2) return avx2::kKernels;
#endif
    (void)set;
    return baseline::kKernels;
}

const Kernels*& chosen() {
    static const Kernels* kernels = &kernelsFor(widestInstructionSet());
    return kernels;
}

}  // namespace

InstructionSet widestInstructionSet() {
#ifdef __x86_64__
#ifndef QUARZEL_WITHOUT_AVX512
    // The first processors with AVX-512 lower their clock much for it; they lack VBMI2.
    if (__builtin_cpu_supports("avx512vbmi2") && __builtin_cpu_supports("avx512vl") &&
        __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw") &&
        __builtin_cpu_supports("fma")) {
        return InstructionSet::kAvx512;
    }
#endif
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) {
        return InstructionSet::kAvx2;
    }
#endif
    return InstructionSet::kBaseline;
}

const Kernels& kernels() {
    return *chosen();
}

void useInstructionSet(InstructionSet set) {
    chosen() = &kernelsFor(std::min(set, widestInstructionSet()));
}

}  // namespace dsp
