// Lengths, levels and signal flow of the reverb.
#include "tests/reference/reverb_model.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "dsp/finite.h"

namespace reference {

namespace {

constexpr double kDesignRate = 44100.0;
constexpr int kSpread = 23;  // samples by which the right lines are longer

// Samples at the design rate.
constexpr std::array<int, ReverbModel::kCombs> kCombLengths = {1116, 1188, 1277, 1356,
                                                               1422, 1491, 1557, 1617};
constexpr std::array<int, ReverbModel::kAllpasses> kAllpassLengths = {556, 441, 341, 225};

// In samples. Only the first three left combs are shortened.
constexpr std::array<int, ReverbModel::kCombs> kLeftShortening = {450, 250, 156};

int lineLength(int designLength, double sampleRate, int offset) {
    const double samples = std::trunc(sampleRate * designLength / kDesignRate) + offset;
    return static_cast<int>(std::clamp(samples, 1.0, static_cast<double>(kReverbCapacity)));
}

}  // namespace

void ReverbModel::Channel::setLengths(const ChannelLengths& lengths) {
    for (int i = 0; i < kCombs; ++i) combs[i].setSize(lengths.combs[i]);
    for (int i = 0; i < kAllpasses; ++i) allpasses[i].setSize(lengths.allpasses[i]);
}

void ReverbModel::Channel::setLoop(float feedback, float damp) {
    for (ReverbComb& comb : combs) {
        comb.setFeedback(feedback);
        comb.setDamp(damp);
    }
}

void ReverbModel::Channel::mute() {
    for (ReverbComb& comb : combs) comb.mute();
    for (ReverbAllpass& allpass : allpasses) allpass.clear();
}

void ReverbModel::Channel::clear() {
    for (ReverbComb& comb : combs) comb.clear();
    for (ReverbAllpass& allpass : allpasses) allpass.clear();
}

float ReverbModel::Channel::tick(float x) {
    float y = 0.0f;
    for (ReverbComb& comb : combs) y += comb.tick(x);
    for (ReverbAllpass& allpass : allpasses) y = allpass.tick(y);
    return y;
}

ReverbModel::ReverbModel() {
    setLengths(false, kDesignRate);
    left_.setLengths(lengths_.left);
    right_.setLengths(lengths_.right);
    update();
}

void ReverbModel::setLengths(bool clear, float sampleRate) {
    if (isUsableRate(sampleRate)) {
        for (int i = 0; i < kCombs; ++i) {
            lengths_.left.combs[i] = lineLength(kCombLengths[i], sampleRate, -kLeftShortening[i]);
            lengths_.right.combs[i] = lineLength(kCombLengths[i], sampleRate, kSpread);
        }
        for (int i = 0; i < kAllpasses; ++i) {
            lengths_.left.allpasses[i] = lineLength(kAllpassLengths[i], sampleRate, 0);
            lengths_.right.allpasses[i] = lineLength(kAllpassLengths[i], sampleRate, kSpread);
        }
    }
    if (clear) mute();
}

void ReverbModel::setRoomSize(float feedback) {
    assignLimited(roomSize_, feedback, 0.0f, 1.0f);
}
void ReverbModel::setDamp(float damp) {
    assignLimited(damp_, damp, 0.0f, 1.0f);
}
void ReverbModel::setWet(float level) {
    assignFinite(wet_, level);
}
void ReverbModel::setDry(float level) {
    assignFinite(dry_, level);
}
void ReverbModel::setWidth(float width) {
    assignLimited(width_, width, 0.0f, 1.0f);
}
void ReverbModel::setMode(float mode) {
    assignFinite(mode_, mode);
}

void ReverbModel::update() {
    wet1_ = (width_ + 1.0f) * 0.5f * wet_;
    wet2_ = (1.0f - width_) * 0.5f * wet_;
    gain_ = isFrozen() ? 0.0f : 0.015f;
    const float feedback = isFrozen() ? 1.0f : roomSize_;
    const float damp = isFrozen() ? 0.0f : damp_;
    left_.setLoop(feedback, damp);
    right_.setLoop(feedback, damp);
}

void ReverbModel::mute() {
    if (isFrozen()) return;
    left_.mute();
    right_.mute();
}

void ReverbModel::clear() {
    left_.clear();
    right_.clear();
}

const float* ReverbModel::process(const float* in) {
    const float x = (in[0] + in[1]) * gain_;
    if (std::fabs(x) > 0.1f) silentFrames_ = 0;

    const float left = left_.tick(x);
    const float right = right_.tick(x);
    // intentional: the right side takes the finished left output, dry part included
    out_[0] = left * wet1_ + right * wet2_ + in[0] * dry_;
    out_[1] = right * wet1_ + out_[0] * wet2_ + in[1] * dry_;

    if (std::fabs(out_[0]) > 0.0001f) {
        silentFrames_ = 0;
    } else if (silentFrames_ < std::numeric_limits<std::int32_t>::max()) {
        ++silentFrames_;
    }
    return out_.data();
}

}  // namespace reference
