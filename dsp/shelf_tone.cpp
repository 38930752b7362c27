// Design and walk of the stepped high shelf.
#include "dsp/shelf_tone.h"

#include <algorithm>
#include <cmath>

#include "dsp/finite.h"

namespace dsp {

namespace {

using Lock = std::lock_guard<std::recursive_mutex>;

int stepFor(float control) {
    const int step = static_cast<int>(control * 24.0f + 0.5f);
    return std::clamp(step, 0, ShelfTone::kSteps - 1);
}

}  // namespace

ShelfTone::ShelfTone() {
    setSampleRate(44100.0f);
}

void ShelfTone::shelfCoefficients(ShelfCoefficients& out, float sampleRate, float gainDb) {
    const double a = std::pow(10.0, gainDb * 0.025);
    const double omega = 14451.326206513048 / sampleRate;  // 2 pi x 2300
    const double sn = std::sin(omega);
    const double cs = std::cos(omega);
    const double beta = sn * std::sqrt(a) * 1.4142135623730951;

    const double inverseA0 = 1.0 / ((a + 1.0) - (a - 1.0) * cs + beta);
    // intentional: rounded to float before the division as well
    const auto stored = [inverseA0](double numerator) {
        return static_cast<float>(static_cast<float>(numerator) * inverseA0);
    };
    out.b0 = stored(a * ((a + 1.0) + (a - 1.0) * cs + beta));
    out.b1 = stored(-2.0 * a * ((a - 1.0) + (a + 1.0) * cs));
    out.b2 = stored(a * ((a + 1.0) + (a - 1.0) * cs - beta));
    out.a1 = stored(2.0 * ((a - 1.0) - (a + 1.0) * cs));
    out.a2 = stored((a + 1.0) - (a - 1.0) * cs - beta);
}

void ShelfTone::setSampleRate(float sampleRate) {
    const bool inRange = sampleRate >= 8000.0f && sampleRate <= 384000.0f;
    if (!inRange) return;

    const Lock table(tableLock_);
    for (int i = 0; i < kSteps && sampleRate != tableRate_; ++i) {
        shelfCoefficients(table_[i], sampleRate, static_cast<float>(i - 12));
    }
    tableRate_ = sampleRate;
    const Lock step(stepLock_);
    walking_ = false;
    current_ = target_ = stepFor(control_);
    countdown_ = interval_ = static_cast<int>(sampleRate * 0.011111111f);  // 1/90 s
    clear();
}

void ShelfTone::setControl(float value) {
    const Lock table(tableLock_);
    assignLimited(control_, value, 0.0f, 1.0f);
    const Lock step(stepLock_);
    target_ = stepFor(control_);
    // intentional: a walk whose target moves to the current step still takes one more step
    if (target_ != current_) walking_ = true;
}

void ShelfTone::walk() {
    countdown_ = interval_;
    const Lock step(stepLock_);
    if (!walking_) return;
    current_ += current_ < target_ ? 1 : -1;
    if (current_ == target_) walking_ = false;
    current_ = std::clamp(current_, 0, kSteps - 1);
}

}  // namespace dsp
