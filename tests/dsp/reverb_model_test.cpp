// Tests of the reverb.
#include "dsp/reverb_model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "tests/dsp/measure.h"

namespace dsp {
namespace {

class Reverb : public ::testing::Test {
  protected:
    const float* tick(float left, float right) {
        out_[0] = left;
        out_[1] = right;
        process(*model_, out_[0], out_[1]);
        return out_;
    }

    // Largest left output for `frames` frames of constant input.
    float peakOver(int frames, float input) {
        float peak = 0.0f;
        for (int i = 0; i < frames; ++i) {
            peak = std::fmax(peak, std::fabs(tick(input, input)[0]));
        }
        return peak;
    }

    float out_[2];
    std::unique_ptr<ReverbModel> model_ = std::make_unique<ReverbModel>();
};

TEST_F(Reverb, LengthsAreThoseOfTheDesignAndBounded) {
    const ReverbModel::Lengths& lengths = model_->lengths();
    const std::array<int, 8> left = {666, 938, 1121, 1356, 1422, 1491, 1557, 1617};
    const std::array<int, 8> right = {1139, 1211, 1300, 1379, 1445, 1514, 1580, 1640};
    EXPECT_EQ(lengths.left.combs, left);
    EXPECT_EQ(lengths.right.combs, right);
    EXPECT_EQ(lengths.left.allpasses, (std::array<int, 4>{556, 441, 341, 225}));
    EXPECT_EQ(lengths.right.allpasses, (std::array<int, 4>{579, 464, 364, 248}));

    model_->setLengths(false, 768000.0f);
    EXPECT_EQ(lengths.right.combs[0], ReverbModel::kCapacity);
    model_->setLengths(false, 1.0f);
    EXPECT_EQ(lengths.left.combs[0], 1);
}

TEST_F(Reverb, ImpulseArrivesAfterTheShortestCombAndCrosses) {
    model_->setLengths(true, 96000.0f);  // the running lines keep their lengths
    tick(1.0f, 0.0f);
    for (int i = 1; i < 666; ++i) ASSERT_EQ(tick(0.0f, 0.0f)[0], 0.0f);
    const float* out = tick(0.0f, 0.0f);
    // Gain 0.015, four allpasses of -0.5, wet 0.75 on its own side and 0.25 on the other.
    EXPECT_FLOAT_EQ(out[0], 0.015f * 0.0625f * 0.75f);
    EXPECT_FLOAT_EQ(out[1], out[0] * 0.25f);
}

TEST_F(Reverb, CountsSilentFrames) {
    for (int i = 1; i <= 10; ++i) {
        tick(0.0f, 0.0f);
        EXPECT_EQ(model_->silentFrames(), i);
    }
    tick(10.0f, 0.0f);  // a loud input whose output is still quiet
    EXPECT_EQ(model_->silentFrames(), 1);
    peakOver(700, 1.0f);
    EXPECT_EQ(model_->silentFrames(), 0);
}

TEST_F(Reverb, FreezeHoldsTheTailAndRefusesMute) {
    for (int i = 0; i < 4000; ++i) {
        const float x = std::sin(0.1f * static_cast<float>(i));
        tick(x, x);
    }
    model_->setMode(1.0f);
    model_->update();
    const float held = peakOver(22050, 0.0f);
    model_->mute();
    model_->setLengths(true, 48000.0f);
    peakOver(5 * 44100, 1.0f);  // nothing enters
    EXPECT_GT(peakOver(22050, 0.0f), 0.3f * held);

    model_->setMode(0.0f);
    model_->update();
    peakOver(10 * 44100, 0.0f);
    EXPECT_LT(peakOver(22050, 0.0f), 0.01f * held);
}

}  // namespace
}  // namespace dsp
