// The render loop, in segments between events.
#include "engine/engine.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {
constexpr double kAudible = 1e-07;   // limiter follower
constexpr float kVoiceGain = 0.23f;  // of the mix while each voice has its own envelope
constexpr float kSharedGain = 2.5f;  // of the mix with a shared envelope, over the polyphony
constexpr float kOutputGain = 4.0f;
constexpr int kTapsAhead = 64;  // frames that moderate modulation leaves free at 44.1 kHz
}  // namespace

int Engine::render(float* left, float* right, int frames) {
    if (asleep_) {
        random_.skip(frames);
        limiter_.renderSilence(left, right, frames);
        return frames;
    }
    const int count =
        std::min({frames, kLongestSegment, stages_.reverb.longestSegment(), framesToSleep()});
    renderAwake(left, right, count);
    return count;
}

void Engine::endBlock(float* left, float* right, int frames) {
    const std::int32_t peaks[] = {kernels_.peakBits(left, frames),
                                  kernels_.peakBits(right, frames)};
    if (std::max(peaks[0], peaks[1]) >= kInfinityBits) {
        clearFault();
        std::fill_n(left, frames, 0.0f);
        std::fill_n(right, frames, 0.0f);
    } else {
        for (int side = 0; side < 2; ++side) peaks_[side].add(peaks[side]);
    }
    for (int tap = 0; tap < EnsembleChorus::kTaps; ++tap) {
        chorusTaps_[tap].store(stages_.chorus.tapPosition(tap), std::memory_order_relaxed);
    }
}

void Engine::renderAwake(float* left, float* right, int frames) {
    const int sounding = renderVoices(frames);
    // Passes a non-finite sample straight to endBlock, before a clamp can hide it.
    if (kernels_.peakBits(mono_.data(), frames) >= kInfinityBits) {
        std::copy_n(mono_.data(), frames, left);
        std::copy_n(mono_.data(), frames, right);
        return;
    }
    SpringReverb::Run reverb;
    stages_.reverb.render(reverb, stereo_, frames);
    Signal expression;
    const bool expresses = !expressionIsFull();
    for (int t = 0; t < frames && expresses; ++t) expression[t] = tickExpression();
    // intentional: the volume does not scale the tails after the last voice
    const dsp::LimiterGain gain = {kOutputGain, volume_, sounding,
                                   expresses ? expression.data() : nullptr};
    float* const sides[] = {stereo_.left.data(), stereo_.right.data()};
    dsp::PeakLimiter::Run peaks;
    limiter_.begin(peaks, gain, sides[0], sides[1], frames);
    stages_.reverb.feed(reverb, peaks.follower, peaks.levels.data(), frames);
    const int quiet = limiter_.finish(peaks, sides[0], sides[1], frames, kAudible, left, right);
    countSilence(frames - sounding + quiet);
}

int Engine::renderVoices(int frames) {
    phases_.render(bendRatio_, sampleRate_, frames, phaseRows_, stages_.upper.readsTurns(),
                   stages_.chorus.begin(chorusRun_, frames));
    stages_.bass.render(phaseRows_, sections_, frames, bassRows_);
    stages_.upper.render(phaseRows_, bendRatio_, sections_, shared_, frames, bassRows_, sums_);
    const float gainScale = setVoiceGains(sums_.sounding, frames);
    stages_.upper.sectionEnvelope().render(sectionLevels_.data(), frames);
    renderStereo({sums_, bassRows_, voiceGains_, gainScale, sectionLevels_, random_}, frames);
    return std::max(sums_.sounding, bassRows_.sounding);
}

// Tone and phaser run beside each other over the whole segment, else over shorter parts, else one
// after the other.
void Engine::renderStereo(const ToneSources& sources, int frames) {
    stages_.chorus.modulate(chorusRun_, frames);
    stages_.tone.begin(sources, sections_, frames, mono_);
    for (int from = 0; from < frames;) {
        const int rest = frames - from;
        const int part = std::min(rest, kTapsAhead);
        if (renderToneBesidePhaser({from, rest})) return;
        if (part == rest || !renderToneBesidePhaser({from, part})) {
            stages_.tone.finish({from, rest}, mono_);
            stages_.chorus.render(chorusRun_, mono_, {from, rest}, stereo_);
            stages_.phaser.render(stereo_, {from, rest});
            return;
        }
        from += part;
    }
}

// While no tap of the chorus reaches into the part, only the dry signal ties tone and phaser.
bool Engine::renderToneBesidePhaser(SegmentPart part) {
    EnsembleChorus& chorus = stages_.chorus;
    PhaserStage& phaser = stages_.phaser;
    if (!phaser.fitsBesideTone(part.frames)) return false;
    if (!chorus.renderTaps(chorusRun_, part, stereo_)) return false;
    stages_.tone.finish(part, mono_, [&](const dsp::ToneRun& tone, int from) {
        kernels_.runToneAndPhaser(tone, phaser.run(stereo_, from, tone.frames), chorus.dryGain());
    });
    chorus.feed(mono_, part);
    return true;
}

// Gain of the mix of the upper sections. With a shared envelope it follows the sum of all levels
// and holds its last value after the last voice.
float Engine::setVoiceGains(int sounding, int frames) {
    if (!shared_) {
        voiceGains_.fill(kVoiceGain);
        return 1.0f;
    }
    stages_.upper.envelopeSum(voiceGains_.data(), sounding);
    if (sounding > 0) envelopeSum_ = voiceGains_[sounding - 1];
    std::fill(voiceGains_.begin() + sounding, voiceGains_.begin() + frames, envelopeSum_);
    return kSharedGain / static_cast<float>(stages_.upper.polyphony());
}

// A frame counts at most twice, and the engine can only fall asleep at the end of a segment. So a
// segment gets at most half of what is left.
int Engine::framesToSleep() const {
    const float left = kSleepSeconds * static_cast<float>(sampleRate_) - silentSamples_;
    return std::max(static_cast<int>(left * 0.5f), 1);
}

}  // namespace engine
