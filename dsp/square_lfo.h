// Square low-frequency oscillator with rounded edges, for the ensemble chorus.
#pragma once

#include <algorithm>

#include "dsp/finite.h"

namespace dsp {

// A sample counter makes the square, which starts high. A one-pole rounds it:
//
//     out += (square - out) x 2 pi / 10 x frequency / sampleRate
class SquareLfo {
  public:
    // At 0 Hz the output holds. Negative frequencies and NaN count as 0.
    void setFrequency(double hz) {
        hz_ = hz > 0.0 ? hz : 0.0;
        update();
    }
    void setRate(double sampleRate) {
        if (!isUsableRate(sampleRate)) return;
        sampleRate_ = sampleRate;
        update();
    }
    void clear() {
        count_ = 0.0f;
        smoothed_ = 0.0f;
    }

    // Within -1 .. 1.
    float tick() {
        const float raw = square();
        count_ += 1.0f;
        if (count_ >= 2.0f * halfPeriod_) count_ = 0.0f;
        return follow(raw);
    }

    // Instead of many ticks in a row: while the square holds for so many of them, skip its counter
    // and follow it that often.
    bool holds(int ticks) const {
        const float until = square() > 0.0f ? halfPeriod_ : 2.0f * halfPeriod_;
        return count_ + static_cast<float>(ticks) < std::min(until, kCountable);
    }
    float square() const { return count_ < halfPeriod_ ? 1.0f : -1.0f; }
    void skip(int ticks) { count_ += static_cast<float>(ticks); }
    float follow(float square) {
        smoothed_ += (square - smoothed_) * coefficient_;
        return smoothed_;
    }

  private:
    static constexpr float kCountable = 16777216.0f;  // the counter then stands still

    void update() {
        constexpr double kForever = 1e9;  // samples
        halfPeriod_ = static_cast<float>(std::min(0.5 / hz_ * sampleRate_, kForever));
        coefficient_ = static_cast<float>(std::min(hz_ / sampleRate_ * 0.628318, 1.0));
    }

    double sampleRate_ = 44100.0;
    double hz_ = 0.0;
    float halfPeriod_ = 1.0f;  // samples
    float coefficient_ = 0.0f;
    float count_ = 0.0f;  // samples since the period began
    float smoothed_ = 0.0f;
};

}  // namespace dsp
