// Two-stage double-precision high-pass with a saturated low band; follows the mix and the phaser.
#pragma once

#include <cmath>

namespace reference {

// Two Chamberlin state-variable filters in series. Each stage computes
//
//     high  = x - low - damping x band
//     band += f x high
//     low  += f x band
//
// The second stage takes (high + x) / 2 + saturated(low / 4) of the first; its high is the output.
class OutputFilter {
  public:
    // Sets both corners for the high-pass amount x (0..1); states stay. Both setters ignore
    // non-finite values and rates of 0 or less.
    void setHighPass(float x, double sampleRate);

    // Clears the states and sets both corners for a new rate. intentional: the coefficients are
    // rounded to float at every step. They differ from setHighPass in the last bits and hold until
    // its next call.
    void setRate(double sampleRate, float x);

    void clear() { band1_ = low1_ = band2_ = low2_ = 0.0; }

    double tick(double x) {
        const double high1 = x - low1_ - kDamping1 * band1_;
        band1_ += frequency1_ * high1;
        low1_ += frequency1_ * band1_;
        const double in2 = 0.5 * high1 + 0.5 * x + saturated(low1_ * 0.25);
        const double high2 = in2 - low2_ - kDamping2 * band2_;
        band2_ += frequency2_ * high2;
        low2_ += frequency2_ * band2_;
        return high2;
    }

    // sign(u) (1 - 1 / (1 + a + a^2 + 0.664 a^3 + 0.365 a^4)) with a = |u|: a soft clip to -1..1 of
    // slope 1 at 0.
    static double saturated(double u) {
        const double a = std::fabs(u);
        const double square = a * a;
        const double sum =
            1.0 + a + square + 0.66422415 * (square * a) + 0.36483285 * (square * square);
        return std::copysign(1.0 - 1.0 / sum, u);
    }

  private:
    static constexpr double kDamping1 = 0.3949155109067489;
    static constexpr double kDamping2 = 0.6284230349905618;

    double frequency1_ = 3725.78 / 44100.0;
    double frequency2_ = 534.92 / 44100.0;
    double band1_ = 0.0;
    double low1_ = 0.0;
    double band2_ = 0.0;
    double low2_ = 0.0;
};

}  // namespace reference
