// Random combinations of every parameter's ends and middle, at many rates: the sound stays finite
// and bounded. QUARZEL_SEEDS sets the number of combinations (default 50).
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/played_instrument.h"

namespace {

constexpr float kLoudest = 63.1f;  // +36 dBFS

// Largest sample of ten notes with the settings of the seed; not finite if any sample is not.
float loudest(unsigned seed, double sampleRate) {
    std::mt19937 random(seed);
    PlayedInstrument instrument(sampleRate);
    for (int index = 0; index < state::kNumParams; ++index) {
        instrument->setParameter(index, static_cast<float>(random() % 3) * 0.5f);
    }
    const auto frames = static_cast<int>(sampleRate / 40);
    float peak = 0.0f;
    for (int block = 0; block < 20; ++block) {
        if (block < 10)
            instrument.noteOn(12 + static_cast<int>(random() % 104), 1 + random() % 127);
        if (block == 12) instrument.send(0xB0, 123);
        const float next = instrument.render(frames).peak();
        if (!std::isfinite(next)) return next;
        peak = std::max(peak, next);
    }
    return peak;
}

TEST(RandomSettings, StayFiniteAndBoundedAtEveryRate) {
    const char* const wanted = std::getenv("QUARZEL_SEEDS");
    const unsigned seeds = wanted ? std::stoul(wanted) : 50;
    constexpr double kRates[] = {1000.0,  8000.0,  11025.5,  22050.0,  44100.0,
                                 48000.0, 96000.0, 192000.0, 384000.0, 768000.0};
    // With few seeds the rates take turns; with a thousand each combination runs at every rate.
    const unsigned step = seeds < 1000 ? std::size(kRates) : 1;
    unsigned first = 0;
    for (const double rate : kRates) {
        float highest = 0.0f;
        for (unsigned seed = step > 1 ? first++ : 0; seed < seeds; seed += step) {
            const float peak = loudest(seed, rate);
            ASSERT_TRUE(std::isfinite(peak)) << "seed " << seed << " at " << rate;
            ASSERT_LT(peak, kLoudest) << "seed " << seed << " at " << rate;
            highest = std::max(highest, peak);
        }
        EXPECT_GT(highest, 0.1f) << "nothing sounded at " << rate;
    }
}

}  // namespace
