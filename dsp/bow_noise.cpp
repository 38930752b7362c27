// Shapes white noise into the bow-noise table.
#include "dsp/bow_noise.h"

#include <cmath>
#include <vector>

namespace dsp {
namespace {

constexpr std::size_t kLastCopied = 41000;
constexpr double kTableRate = 44100.0;  // the table is the same at every engine rate

// One-pole low-pass whose state runs through all four passes. The smallest normal float is taken
// off before and put back after, which keeps the state away from denormals.
class PassFilter {
  public:
    // radians = 2 pi x corner in Hz
    void setCorner(double radians) { coefficient_ = static_cast<float>(radians / kTableRate); }
    float tick(float x) {
        low_ = low_ + (x - kGuard - low_) * coefficient_;
        return low_ + kGuard;
    }

  private:
    static constexpr float kGuard = 1.1754944e-38f;
    float coefficient_ = 1.0f;
    float low_ = 0.0f;
};

float bounded(float value) {
    if (std::fabs(value) < 1e-19f) return 0.0f;
    if (value < -1.0f) return -1.0f;
    return value > 1.0f ? 1.0f : value;
}

}  // namespace

void buildBowNoise(Random& random, BowNoiseTable& table) {
    std::vector<float> scratch(kBowNoiseDraws);
    for (float& x : scratch) x = static_cast<float>(random.next()) * 9.765625e-6f - 0.16f;

    PassFilter filter;
    filter.setCorner(28274.355);  // low-pass, 4500 Hz
    for (float& x : scratch) x = filter.tick(x);
    filter.setCorner(3958.4097);  // high-pass, 630 Hz
    for (float& x : scratch) x -= filter.tick(x);
    // Backwards, so that the phase shifts of the two directions nearly cancel.
    filter.setCorner(21991.165);  // low-pass, 3500 Hz
    for (auto x = scratch.rbegin(); x != scratch.rend(); ++x) *x = filter.tick(*x);
    filter.setCorner(1570.7975);  // high-pass, 250 Hz
    for (auto x = scratch.rbegin(); x != scratch.rend(); ++x) *x -= filter.tick(*x);

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
