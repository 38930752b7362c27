#include "tests/engine/rig.h"

#include <algorithm>
#include <cmath>

namespace engine_test {

namespace {
constexpr double kTwoPi = 6.283185307179586;
}  // namespace

double rms(const std::vector<float>& x, std::size_t from) {
    double sum = 0.0;
    for (std::size_t i = from; i < x.size(); ++i) sum += static_cast<double>(x[i]) * x[i];
    return std::sqrt(sum / static_cast<double>(x.size() - from));
}

std::complex<double> partial(const std::vector<float>& x, std::size_t from, std::size_t window,
                             double hz, double rate) {
    const std::complex<double> turn = std::polar(1.0, -kTwoPi * hz / rate);
    const std::complex<double> windowTurn = std::polar(1.0, kTwoPi / static_cast<double>(window));
    std::complex<double> oscillator = 1.0;
    std::complex<double> windowPhase = 1.0;
    std::complex<double> sum = 0.0;
    for (std::size_t i = 0; i < window; ++i) {
        sum += static_cast<double>(x.at(from + i)) * (1.0 - windowPhase.real()) * oscillator;
        oscillator *= turn;
        windowPhase *= windowTurn;
    }
    return sum * (2.0 / static_cast<double>(window));
}

double partialHz(const std::vector<float>& x, double hz, double rate) {
    constexpr std::size_t kHop = 4096;
    const std::size_t window = x.size() - kHop;
    const std::complex<double> advance =
        partial(x, kHop, window, hz, rate) / partial(x, 0, window, hz, rate);
    const double expected = std::fmod(hz / rate * kHop, 1.0);
    const double turns = std::remainder(std::arg(advance) / kTwoPi - expected, 1.0);
    return hz + turns * rate / kHop;
}

double keyHz(int key) {
    return 440.0 * std::exp2((key - 69) / 12.0);
}

Rig::Rig(double rate) : engine_(std::make_unique<engine::Engine>(rate)) {
    engine::Engine& e = *engine_;
    e.setVolume(0.25f);
    e.setPitchOffset(0.0f);
    e.setVelocityAmount(0.999f);
    e.setHighPass(0.01f);
    e.setHighPass(0.01f);
    e.setBrightness(0.5f);
    e.setAttackTime(1e-5f);
    e.setDecayTime(0.1f);
    e.setSustain(1.0f);
    e.setRelease({25.0});
    e.setWaveform(engine::Waveform::kFeedback);
    e.setKeySplit(6.0f / 11.0f);
}

void Rig::playOnly(engine::Section section) {
    for (int s = 0; s < engine::kNumSections; ++s) {
        engine_->setSectionSwitch(static_cast<engine::Section>(s), 0.0f);
    }
    switchOn(section);
}

void Rig::switchOn(engine::Section section) {
    engine_->setSectionSwitch(section, 1.0f);
    engine_->setSectionLevel(section, 1.0f);
}

void Rig::useEffects() {
    engine::EnsembleChorus& chorus = engine_->chorus();
    chorus.setOn(true);
    chorus.setSlowDepth(1.0f);
    chorus.setFastDepth(1.0f);
    chorus.setWide(2.0f);
    chorus.setStereo(1.0f);
    chorus.setDryAdd(1.0f);
    engine::PhaserStage& phaser = engine_->phaser();
    phaser.setOn(true);
    phaser.setRateControl(1.0f);
    phaser.setFeedback(0.9f);
    phaser.setStages(1.0f);
    phaser.setDepthControl(1.0f);
    engine::SpringReverb& reverb = engine_->reverb();
    reverb.setOn(true);
    reverb.set({0.8f, 1.0f, 1.0f, 1.0f});
}

void Rig::noteOn(int key, int velocity) {
    engine_->wake();
    engine_->noteOn(key, velocity);
}

void Rig::noteOff(int key) {
    engine_->wake();
    engine_->noteOff(key);
}

Sound Rig::render(int frames) {
    constexpr int kBlock = 512;
    Sound sound;
    sound.left.resize(static_cast<std::size_t>(frames), NAN);
    sound.right.resize(static_cast<std::size_t>(frames), NAN);
    for (int begin = 0; begin < frames; begin += kBlock) {
        const int end = std::min(begin + kBlock, frames);
        float* const left = sound.left.data();
        float* const right = sound.right.data();
        engine_->beginBlock();
        for (int at = begin; at < end;) at += engine_->render(left + at, right + at, end - at);
        engine_->endBlock(left + begin, right + begin, end - begin);
    }
    return sound;
}

Sound Rig::renderSeconds(double seconds) {
    return render(static_cast<int>(seconds * engine_->sampleRate()));
}

}  // namespace engine_test
