// What the tone stages do to the loudness of each frequency.
#pragma once

#include <array>
#include <cmath>

namespace state {

struct ToneSettings {
    float highPass = 0.0f;  // the parameters' values for the engine
    float smoothedHighPass = 0.0f;
    float brightness = 0.0f;
    double sampleRate = 0.0;  // Hz

    bool operator==(const ToneSettings& other) const {
        return highPass == other.highPass && smoothedHighPass == other.smoothedHighPass &&
               brightness == other.brightness && sampleRate == other.sampleRate;
    }
};

// Gains in dB at frequencies that rise evenly on a logarithmic scale.
struct ToneCurve {
    static constexpr int kPoints = 91;
    static constexpr double kLowestHertz = 20.0;
    static constexpr double kHighestHertz = 20000.0;
    static constexpr float kLeastDecibels = -120.0f;

    static double hertz(int point) {
        return kLowestHertz *
               std::pow(kHighestHertz / kLowestHertz, static_cast<double>(point) / (kPoints - 1));
    }

    std::array<float, kPoints> decibels{};
};

// Measures the tone stages themselves, so that the curve is what one hears. Takes about a
// millisecond, and allocates.
ToneCurve toneCurve(const ToneSettings& settings);

}  // namespace state
