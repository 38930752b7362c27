// The tone curve against the gains of steady tones that were sent through the engine's tone stages.
#include "state/tone_curve.h"

#include <cmath>
#include <memory>

#include <gtest/gtest.h>

#include "engine/tone_stages.h"

namespace {

constexpr double kRate = 48000.0;
constexpr double kTwoPi = 6.283185307179586;

struct Path {
    engine::ToneStages tone;
    engine::SectionSums voices{};
    engine::BassRows bass;
    engine::Signal gains{}, silence{}, mix{};
    dsp::Random dither;
    engine::Sections sections;
};

// Of a quiet sine, once it is steady.
double gainOf(const state::ToneSettings& settings, double hertz) {
    const auto path = std::make_unique<Path>();
    path->tone.setRate(kRate);
    path->tone.setHighPass(settings.highPass, settings.smoothedHighPass);
    path->tone.setBrightness(settings.brightness);
    path->tone.beginBlock();
    path->sections.on[engine::kViola] = true;
    path->sections.level[engine::kViola] = 1.0f;
    path->gains.fill(1.0f);
    constexpr double kAmplitude = 1e-3;
    double power = 0;
    constexpr int kSegments = 1500, kSteady = 750;  // 25 steps of 1/90 s fit into the first half
    for (int t = 0; t < kSegments * engine::kLongestSegment; ++t) {
        const int at = t % engine::kLongestSegment;
        path->voices.viola[at] =
            static_cast<float>(kAmplitude * std::sin(kTwoPi * hertz / kRate * t));
        if (at + 1 < engine::kLongestSegment) continue;
        path->tone.render(
            {path->voices, path->bass, path->gains, 1.0f, path->silence, path->dither},
            path->sections, engine::kLongestSegment, path->mix);
        for (int i = 0; t >= kSteady * engine::kLongestSegment && i <= at; ++i)
            power += double{path->mix[i]} * path->mix[i];
    }
    const double mean = power / ((kSegments - kSteady) * engine::kLongestSegment);
    return 10 * std::log10(mean * 2 / (kAmplitude * kAmplitude));
}

TEST(ToneCurve, IsTheGainOfSteadyTones) {
    const state::ToneSettings rows[] = {
        {0.327f, 0.327f, 0.815f, kRate}, {0.0f, 0.2f, 0.0f, kRate}, {0.7f, 0.6f, 1.0f, kRate}};
    for (const state::ToneSettings& row : rows) {
        const state::ToneCurve curve = state::toneCurve(row);
        for (const int point : {30, 45, 60, 75, 85}) {
            const double hertz = state::ToneCurve::hertz(point);
            EXPECT_NEAR(curve.decibels[static_cast<std::size_t>(point)], gainOf(row, hertz), 0.2)
                << row.highPass << ' ' << hertz;
        }
    }
}

}  // namespace
