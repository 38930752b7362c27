// That the measures of a take notice what they are there for.
#include "tests/banks/listening.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace {

using listening::Take;

// A tone on both sides, held at -20 dB of full scale until the bass is let go and faded from there.
Take tone(double hertz) {
    constexpr double kSeconds = 4.0;
    Take take;
    for (int i = 0; i < static_cast<int>(kSeconds * listening::kSampleRate); ++i) {
        const double seconds = i / listening::kSampleRate;
        const double fade = std::exp(-5.0 * std::max(seconds - listening::kBassOff, 0.0));
        take.left.push_back(
            static_cast<float>(0.1 * fade * std::sin(6.283185307 * hertz * seconds)));
    }
    take.right = take.left;
    return take;
}

std::size_t frameAt(double seconds) {
    return static_cast<std::size_t>(seconds * listening::kSampleRate);
}

TEST(Listening, MeasuresLevels) {
    EXPECT_NEAR(listening::peakDb(tone(440.0)), -20.0, 0.01);
    EXPECT_NEAR(listening::loudnessDb(tone(440.0)), -23.01, 0.05);
}

TEST(Listening, HearsACutAndAClickButNoFade) {
    EXPECT_LT(listening::sharpestEdge(tone(440.0)).db, 1.0);

    Take cut = tone(440.0);
    const std::size_t end = frameAt(2.5003);  // near a crest
    std::fill(cut.left.begin() + end, cut.left.end(), 0.0f);
    EXPECT_GT(listening::sharpestEdge(cut).db, 12.0);
    EXPECT_NEAR(listening::sharpestEdge(cut).seconds, 2.5, 0.01);

    Take click = tone(440.0);
    click.right[frameAt(3.9)] += 0.002f;  // -54 dB of full scale, behind the fade
    EXPECT_GT(listening::sharpestEdge(click).db, 12.0);
    EXPECT_NEAR(listening::sharpestEdge(click).seconds, 3.9, 0.01);
}

TEST(Listening, TellsSoundsApartButNotLevels) {
    const auto reference = listening::picture(tone(440.0));
    Take softer = tone(440.0);
    for (float& sample : softer.left) sample *= 0.5f;
    for (float& sample : softer.right) sample *= 0.5f;
    EXPECT_LT(listening::distanceDb(reference, listening::picture(softer)), 0.1);
    EXPECT_GT(listening::distanceDb(reference, listening::picture(tone(880.0))), 3.0);
    Take oneSided = tone(440.0);
    for (float& sample : oneSided.right) sample *= 0.5f;
    EXPECT_GT(listening::distanceDb(reference, listening::picture(oneSided)), 1.0);
}

}  // namespace
