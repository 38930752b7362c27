// Compiles the kernels for each instruction set and picks one at run time.
//
// Each instruction set has its own namespace, so that the linker cannot merge a function built for
// a wider set with its baseline twin.
#include "dsp/lanes/kernels.h"

#include <algorithm>

#include "dsp/module_fm_op.h"
#include "dsp/smoother.h"

namespace dsp {

#define QUARZEL_LANES 4
namespace baseline {
#include "dsp/lanes/lanes.inc"
#include "dsp/lanes/stagger.inc"
#include "dsp/lanes/comb_kernel.inc"
#include "dsp/lanes/delay_kernel.inc"
#include "dsp/lanes/limiter_kernel.inc"
#include "dsp/lanes/tone_kernel.inc"
#include "dsp/lanes/voice_kernel.inc"
constexpr Kernels kKernels = {runPhases, runFeedback, runSquared, sumVoices,
                              runRamps,  runSections, runTone,    runPhaser,
                              placeTaps, runCombs,    runAllpass, holdPeaks};
}  // namespace baseline
#undef QUARZEL_LANES

#ifdef __clang__
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif
#define QUARZEL_LANES 8
namespace avx2 {
#include "dsp/lanes/lanes.inc"
#include "dsp/lanes/stagger.inc"
#include "dsp/lanes/comb_kernel.inc"
#include "dsp/lanes/delay_kernel.inc"
#include "dsp/lanes/limiter_kernel.inc"
#include "dsp/lanes/tone_kernel.inc"
#include "dsp/lanes/voice_kernel.inc"
constexpr Kernels kKernels = {runPhases, runFeedback, runSquared, sumVoices,
                              runRamps,  runSections, runTone,    runPhaser,
                              placeTaps, runCombs,    runAllpass, holdPeaks};
}  // namespace avx2
#undef QUARZEL_LANES
#ifdef __clang__
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

namespace {

const Kernels& kernelsFor(InstructionSet set) {
    return set == InstructionSet::kAvx2 ? avx2::kKernels : baseline::kKernels;
}

const Kernels*& chosen() {
    static const Kernels* kernels = &kernelsFor(widestInstructionSet());
    return kernels;
}

}  // namespace

InstructionSet widestInstructionSet() {
    return __builtin_cpu_supports("avx2") ? InstructionSet::kAvx2 : InstructionSet::kBaseline;
}

const Kernels& kernels() {
    return *chosen();
}

void useInstructionSet(InstructionSet set) {
    chosen() = &kernelsFor(std::min(set, widestInstructionSet()));
}

}  // namespace dsp
