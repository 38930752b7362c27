// Table, sweep and parameters of the phaser.
#include "dsp/stereo_phaser.h"

#include <cmath>

namespace dsp {

namespace {

using Lock = std::lock_guard<std::recursive_mutex>;

constexpr double kPi = 3.141592653589793;
// In table steps: 5.25 octaves above 20 Hz, or 761 Hz.
constexpr double kSweepCenter = 0.5 * 1152.0 + 768.0;
constexpr double kWidestSpread = 2.0 * 256.0;

// To 32.32 fixed point. intentional: the fraction is scaled by 2^32 - 1.
std::int64_t toFixed(double value) {
    const double whole = std::floor(value);
    return static_cast<std::int64_t>(whole) * 4294967296 +
           static_cast<std::int64_t>((value - whole) * 4294967295.0);
}

bool isUnit(float value) {
    return value >= 0.0f && value <= 1.0f;
}

}  // namespace

StereoPhaser::StereoPhaser() {
    setSampleRate(44100.0f, false);
}

bool StereoPhaser::setSampleRate(float sampleRate, bool keepParams) {
    const bool inRange = sampleRate >= 8000.0f && sampleRate <= 384000.0f;
    if (!inRange) return false;

    const Lock setup(setupLock_);
    buildTable(sampleRate);
    if (!keepParams) {
        feedback_ = 0.0f;
        stageCount_ = 0;  // forces setStages to clear the states
        setStages(0.0f);
    }

    const Lock sweep(sweepLock_);
    sampleRate_ = sampleRate;
    if (!keepParams) {
        depth_ = 0.5f;
        rate_ = 0.1f;
    }
    sweep_ = computeSweep();
    sweepPosition_ = toFixed(kSweepCenter);
    sweepPending_ = false;
    return true;
}

bool StereoPhaser::setStages(float value) {
    if (!isUnit(value)) return false;
    const Lock setup(setupLock_);
    const int count = value < 0.5f ? 2 : 4;
    if (count == stageCount_) return true;
    stageCount_ = count;
    std::fill_n(stages_.begin(), count, Allpass());
    lastOut_[0] = 0.0f;  // intentional: the right side stays
    return true;
}

bool StereoPhaser::setDepth(float depth) {
    return setSweepParam(depth_, depth);
}

bool StereoPhaser::setRate(float rate) {
    return setSweepParam(rate_, rate);
}

bool StereoPhaser::setFeedback(float feedback) {
    const bool inRange = feedback >= 0.0f && feedback <= 0.9f;
    if (inRange) feedback_.store(feedback, std::memory_order_relaxed);
    return inRange;
}

void StereoPhaser::clear() {
    stages_.fill(Allpass());
    lastOut_ = StereoFloat{};
}

bool StereoPhaser::setSweepParam(float& param, float value) {
    if (!isUnit(value)) return false;
    const Lock sweep(sweepLock_);
    param = value;
    pendingSweep_ = computeSweep();
    sweepPending_.store(true, std::memory_order_relaxed);
    return true;
}

// Keeps the direction; a sweep at rest counts as rising.
void StereoPhaser::takePendingSweep() {
    const Lock sweep(sweepLock_);
    const bool falling = sweep_.increment < 0;
    sweep_ = pendingSweep_;
    if (falling) sweep_.increment = -sweep_.increment;
    sweepPending_.store(false, std::memory_order_relaxed);
}

StereoPhaser::Sweep StereoPhaser::computeSweep() const {
    // So the sweep, which only moves towards its bounds, stays within the table.
    static_assert(kSweepCenter - kWidestSpread >= 0.0);
    static_assert(kSweepCenter + kWidestSpread + kUpperOffset < kTableSize);
    const double spread = depth_ * kWidestSpread;
    const double speed = phaserSpeed(rate_);
    return {toFixed(kSweepCenter - spread), toFixed(kSweepCenter + spread),
            toFixed(speed * spread / sampleRate_)};
}

// a = (1 - w) / (1 + w) with w = pi f / sampleRate: the bilinear transform without prewarping.
void StereoPhaser::buildTable(double sampleRate) {
    if (sampleRate == tableRate_) return;
    tableRate_ = sampleRate;
    for (int i = 0; i < kTableSize; ++i) {
        const double octaves = static_cast<double>(i) / kStepsPerOctave;
        const double hz = std::min(20.0 * std::exp2(octaves), sampleRate / 2.0);
        const double w = hz * kPi / sampleRate;
        table_[i] = static_cast<float>((1.0 - w) / (1.0 + w));
    }
}

}  // namespace dsp
