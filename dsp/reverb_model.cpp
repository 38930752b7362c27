// Lengths, levels and signal flow of the reverb.
#include "dsp/reverb_model.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "dsp/finite.h"

namespace dsp {

namespace {

constexpr int kSpread = 23;  // samples by which the right lines are longer

// Seconds, in single precision.
constexpr std::array<float, ReverbModel::kCombs> kCombSeconds = {
    0.025306122f, 0.026938776f, 0.028956916f, 0.030748298f,
    0.0322449f,   0.033809524f, 0.035306122f, 0.036666665f};
constexpr std::array<float, ReverbModel::kAllpasses> kAllpassSeconds = {
    0.0126077095f, 0.01f, 0.0077324263f, 0.0051020407f};

// The first left combs are shortened by a fixed number of samples, the right ones are not.
constexpr std::array<int, ReverbModel::kCombs> kLeftShortening = {450, 250, 156};

int lineLength(float seconds, float sampleRate, int offset) {
    const float samples = std::trunc(sampleRate * seconds) + static_cast<float>(offset);
    return static_cast<int>(std::clamp(samples, 1.0f, static_cast<float>(kReverbCapacity)));
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
    setLengths(false, 44100.0f);
    left_.setLengths(lengths_.left);
    right_.setLengths(lengths_.right);
    update();
}

void ReverbModel::setLengths(bool clear, float sampleRate) {
    if (isUsableRate(sampleRate)) {
        for (int i = 0; i < kCombs; ++i) {
            lengths_.left.combs[i] = lineLength(kCombSeconds[i], sampleRate, -kLeftShortening[i]);
            lengths_.right.combs[i] = lineLength(kCombSeconds[i], sampleRate, kSpread);
        }
        for (int i = 0; i < kAllpasses; ++i) {
            lengths_.left.allpasses[i] = lineLength(kAllpassSeconds[i], sampleRate, 0);
            lengths_.right.allpasses[i] = lineLength(kAllpassSeconds[i], sampleRate, kSpread);
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
    // The right side takes the finished left output, dry part included: part of the sound.
    out_[0] = left * wet1_ + right * wet2_ + in[0] * dry_;
    out_[1] = right * wet1_ + out_[0] * wet2_ + in[1] * dry_;

    if (std::fabs(out_[0]) > 0.0001f) {
        silentFrames_ = 0;
    } else if (silentFrames_ < std::numeric_limits<std::int32_t>::max()) {
        ++silentFrames_;
    }
    return out_.data();
}

}  // namespace dsp
