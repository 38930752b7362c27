// Shapes white noise into the bow-noise table.
#include "dsp/bow_noise.h"

#include <cmath>
#include <vector>

#include "dsp/one_pole.h"

namespace dsp {
namespace {

constexpr std::size_t kLastCopied = 41000;  // the table runs from here down to 8001
constexpr double kTableRate = 44100.0;      // the same table serves every engine rate

// radians = 2 pi x corner in Hz
float passCoefficient(double radians) {
    return static_cast<float>(radians / kTableRate);
}

float bounded(float value) {
    if (std::fabs(value) < 1e-19f) return 0.0f;
    if (value < -1.0f) return -1.0f;
    return value > 1.0f ? 1.0f : value;
}

}  // namespace

void buildBowNoise(Random& random, BowNoiseTable& table) {
    std::vector<float> scratch(kBowNoiseDraws);
    // 0..32767 becomes -0.16..0.16: 9.765625e-6 = 0.32 / 32768
    for (float& x : scratch) x = static_cast<float>(random.next()) * 9.765625e-6f - 0.16f;

    // One filter runs all four passes; its state carries over.
    OnePole filter;
    filter.setCoefficient(passCoefficient(28274.355));  // low-pass, 4500 Hz
    for (float& x : scratch) x = filter.tickLowPass(x);
    filter.setCoefficient(passCoefficient(3958.4097));  // high-pass, 630 Hz
    for (float& x : scratch) x -= filter.tickLowPass(x);
    // Filtering backwards nearly cancels the phase shift of the forward passes.
    filter.setCoefficient(passCoefficient(21991.165));  // low-pass, 3500 Hz
    for (auto x = scratch.rbegin(); x != scratch.rend(); ++x) *x = filter.tickLowPass(*x);
    filter.setCoefficient(passCoefficient(1570.7975));  // high-pass, 250 Hz
    for (auto x = scratch.rbegin(); x != scratch.rend(); ++x) *x -= filter.tickLowPass(*x);

    for (std::size_t i = 0; i < table.size(); ++i) table[i] = bounded(scratch[kLastCopied - i]);
}

const BowNoiseTable& bowNoise() {
    static const BowNoiseTable table = [] {
        BowNoiseTable built;
        Random random;
        buildBowNoise(random, built);
        return built;
    }();
    return table;
}

}  // namespace dsp
