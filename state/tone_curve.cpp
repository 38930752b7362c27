// Sends an impulse through the tone stages and takes its spectrum.
#include "state/tone_curve.h"

#include <algorithm>
#include <memory>

#include "engine/tone_stages.h"

namespace state {

namespace {

constexpr float kImpulse = 1e-3f;  // far below the bend of the output filter
constexpr double kSeconds = 0.06;  // the lowest corner has died away by then
constexpr double kTwoPi = 6.283185307179586;

// On the heap, because the signals have the alignment of whole vectors.
struct Path {
    engine::ToneStages tone;
    engine::SectionSums voices{};
    engine::BassRows bass;
    engine::Signal gains{};
    engine::Signal silence{};
    engine::Signal mix{};
    dsp::Random dither;  // 146 dB below the impulse
    engine::Sections sections;
};

// One number for each point of the curve.
using Points = std::array<double, ToneCurve::kPoints>;

}  // namespace

ToneCurve toneCurve(const ToneSettings& settings) {
    const auto path = std::make_unique<Path>();
    path->tone.setBrightness(settings.brightness);
    path->tone.setRate(settings.sampleRate);  // the shelf is at its target
    path->tone.setHighPass(settings.highPass, settings.smoothedHighPass);
    path->tone.beginBlock();
    path->sections.on[engine::kViolin] = true;  // the section without a filter of its own
    path->sections.level[engine::kViolin] = 1.0f;
    path->gains.fill(1.0f);
    path->voices.violin[0] = kImpulse;

    // Goertzel: s = x + 2 cos(w) s1 - s2, one recurrence for each frequency.
    Points twoCosines{}, latest{}, before{};
    for (int i = 0; i < ToneCurve::kPoints; ++i) {
        twoCosines[i] = 2.0 * std::cos(kTwoPi * ToneCurve::hertz(i) / settings.sampleRate);
    }
    const int segments =
        static_cast<int>(std::ceil(kSeconds * settings.sampleRate / engine::kLongestSegment));
    for (int segment = 0; segment < segments; ++segment) {
        path->tone.render(
            {path->voices, path->bass, path->gains, 1.0f, path->silence, path->dither},
            path->sections, engine::kLongestSegment, path->mix);
        path->voices.violin[0] = 0.0f;
        for (int t = 0; t < engine::kLongestSegment; ++t) {
            const double x = path->mix[t];
            for (int i = 0; i < ToneCurve::kPoints; ++i) {
                const double next = x + twoCosines[i] * latest[i] - before[i];
                before[i] = latest[i];
                latest[i] = next;
            }
        }
    }
    ToneCurve curve;
    for (int i = 0; i < ToneCurve::kPoints; ++i) {
        const double power =
            latest[i] * latest[i] + before[i] * before[i] - twoCosines[i] * latest[i] * before[i];
        const double gain = std::sqrt(std::max(power, 0.0)) / double{kImpulse};
        const bool beyond = ToneCurve::hertz(i) > settings.sampleRate / 2;
        curve.decibels[i] =
            beyond || !(gain > 0.0)
                ? ToneCurve::kLeastDecibels
                : std::max(static_cast<float>(20.0 * std::log10(gain)), ToneCurve::kLeastDecibels);
    }
    return curve;
}

}  // namespace state
