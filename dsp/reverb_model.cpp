// Lengths, levels and signal flow of the reverb.
#include "dsp/reverb_model.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "dsp/finite.h"

namespace dsp {

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
    return static_cast<int>(std::clamp(samples, 1.0, static_cast<double>(ReverbModel::kCapacity)));
}

}  // namespace

ReverbModel::ReverbModel() {
    setLengths(false, kDesignRate);
    for (int i = 0; i < kCombs; ++i) {
        combs_.setSize(i, lengths_.left.combs[i]);
        combs_.setSize(kCombs + i, lengths_.right.combs[i]);
    }
    for (int i = 0; i < kAllpasses; ++i) {
        allpasses_[i].setSize(lengths_.left.allpasses[i]);
        allpasses_[kAllpasses + i].setSize(lengths_.right.allpasses[i]);
    }
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
    combs_.setFeedback(isFrozen() ? 1.0f : roomSize_);
    combs_.setDamp(isFrozen() ? 0.0f : damp_);
}

void ReverbModel::mute() {
    if (isFrozen()) return;
    combs_.mute();
    for (ReverbAllpass& allpass : allpasses_) allpass.clear();
}

void ReverbModel::clear() {
    combs_.clear();
    for (ReverbAllpass& allpass : allpasses_) allpass.clear();
}

void ReverbModel::render(Run& run, const float* left, const float* right, int frames,
                         float* outLeft, float* outRight) {
    combs_.begin(run.combs, frames);
    std::array<float*, 2 * kAllpasses> allpasses;
    for (int i = 0; i < 2 * kAllpasses; ++i) allpasses[i] = allpasses_[i].begin(frames);
    const bool heard =
        kernels_.runRoom({run.combs.rows.data(), allpasses.data(), gain_, wet1_, wet2_, dry_, left,
                          right, run.in.data(), outLeft, outRight, frames});
    for (ReverbAllpass& allpass : allpasses_) allpass.end(frames);
    countSilence(heard, run.in.data(), outLeft, frames);
}

// Searches backwards, because the last frame is usually the last one heard.
void ReverbModel::countSilence(bool anyHeard, const float* in, const float* out, int frames) {
    std::int32_t silent = anyHeard ? 0 : frames;
    for (int t = frames - 1; anyHeard && t >= 0; --t) {
        const bool heard = std::fabs(out[t]) > kSilentOutput;
        if (!heard) ++silent;
        if (heard || std::fabs(in[t]) > kSilentInput) {
            silentFrames_ = silent;
            return;
        }
    }
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    silentFrames_ = silentFrames_ < kMost - silent ? silentFrames_ + silent : kMost;
}

}  // namespace dsp
