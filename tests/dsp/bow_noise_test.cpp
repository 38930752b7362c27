// Tests of the random generator and the bow-noise table made from it.
#include "dsp/bow_noise.h"

#include <gtest/gtest.h>

namespace {

TEST(Random, GivesTheKnownSequence) {
    dsp::Random random;
    for (const int expected : {41, 18467, 6334, 26500, 19169, 15724}) {
        EXPECT_EQ(random.next(), expected);
    }
    dsp::Random skipped;
    for (const int count : {0, 1, 5}) skipped.skip(count);
    EXPECT_EQ(skipped.state(), random.state());
}

TEST(BowNoise, LeavesTheGeneratorWhereInstancesStart) {
    dsp::Random random;
    dsp::BowNoiseTable table;
    dsp::buildBowNoise(random, table);
    EXPECT_EQ(random.state(), dsp::kStateAfterTable);
    EXPECT_EQ(table, dsp::bowNoise());
    EXPECT_EQ(&dsp::bowNoise(), &dsp::bowNoise());
    dsp::buildBowNoise(random, table);
    EXPECT_NE(table, dsp::bowNoise());
}

TEST(BowNoise, HoldsTheValuesOfTheSameFiltersInDoublePrecision) {
    const struct {
        std::size_t index;
        double value;
    } rows[] = {{0, -0.03103511004257993},     {1, -0.04284597555282104},
                {999, -0.007091344501380967},  {16000, 0.06389115415964962},
                {32998, -0.02683485024220387}, {32999, -0.024263407897898277}};
    for (const auto& row : rows) EXPECT_NEAR(dsp::bowNoise()[row.index], row.value, 2e-6);
}

}  // namespace
