// Tests of the state-variable filter.
#include "dsp/state_variable_filter.h"

#include <gtest/gtest.h>

#include "tests/dsp/measure.h"

namespace dsp {
namespace {

TEST(StateVariableFilter, LimitsItsSettings) {
    StateVariableFilter filter;
    EXPECT_EQ(filter.coefficient(), 0.926f);
    const struct {
        float hz, coefficient;
    } cutoffs[] = {{0.0f, 0.03f}, {22050.0f, 0.998f}, {-5.0f, 0.03f}, {1000.0f, 0.14247596f}};
    for (const auto& row : cutoffs) {
        SCOPED_TRACE(row.hz);
        filter.setCutoff(row.hz);
        EXPECT_FLOAT_EQ(filter.coefficient(), row.coefficient);
    }
    filter.setResonance(0.0f);
    EXPECT_FLOAT_EQ(filter.damping(), 1.4f);
    EXPECT_FLOAT_EQ(filter.makeUp(), 0.67f);
    filter.setResonance(1.0f);
    EXPECT_FLOAT_EQ(filter.damping(), 0.14f);
}

TEST(StateVariableFilter, FirstSamplesAreExact) {
    StateVariableFilter filter;
    filter.setCoefficient(0.5f);
    filter.setShape(0.553f, 1.0f);  // the make-up gain is not applied
    filter.setPoles(2);
    EXPECT_EQ(filter.process(1.0f), 0.25f);    // band 0.5
    EXPECT_EQ(filter.process(0.0f), 0.3125f);  // band 0.5 - 0.75 / 2 = 0.125
    filter.clear();
    filter.setPoles(4);
    EXPECT_EQ(filter.process(1.0f), 0.0625f);
    filter.clear();
    EXPECT_EQ(filter.processBandPass(1.0f), 0.5f);
    EXPECT_EQ(filter.processBandPass(0.0f), 0.125f);
}

TEST(StateVariableFilter, FallsBy12Or24DbAnOctave) {
    const auto gain = [](int poles, double hz) {
        StateVariableFilter filter;
        filter.setCutoff(500.0f);
        filter.setPoles(poles);
        return gainAt(hz, 44100.0, [&](float x) { return filter.process(x); });
    };
    EXPECT_NEAR(gain(2, 50.0), 1.0, 0.02);
    EXPECT_NEAR(gain(2, 2000.0) / gain(2, 4000.0), 4.0, 0.4);
    EXPECT_NEAR(gain(4, 2000.0) / gain(4, 4000.0), 16.0, 2.0);
}

TEST(StateVariableFilter, DenormalInputsLeaveTheStateAtZero) {
    StateVariableFilter filter;
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(filter.process(1e-39f), 0.0f);
        EXPECT_EQ(filter.processBandPass(-1e-40f), 0.0f);
    }
}

TEST(StateVariableFilter, KeepsItsSettingsAgainstHostileOnes) {
    for (const float bad : kHostile) {
        StateVariableFilter filter;
        filter.setRate(bad);
        filter.setRate(0.0f);
        filter.setCutoff(bad);
        filter.setCoefficient(bad);
        filter.setResonance(bad);
        filter.setShape(bad, bad);
        StateVariableFilter fresh;
        for (int i = 0; i < 100; ++i) EXPECT_EQ(filter.process(1.0f), fresh.process(1.0f));

        filter.process(bad);
        filter.clear();
        fresh.clear();
        EXPECT_EQ(filter.process(1.0f), fresh.process(1.0f));
    }
}

TEST(StateVariableFilter, IsAsConstructedAfterAReset) {
    StateVariableFilter filter;
    filter.setCutoff(100.0f);
    filter.setResonance(0.9f);
    filter.process(1.0f);
    filter.reset();
    EXPECT_EQ(filter.process(1.0f), StateVariableFilter().process(1.0f));
}

}  // namespace
}  // namespace dsp
