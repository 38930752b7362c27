// The stages after the voices, each alone, fed with noise.
#include <memory>
#include <random>

#include "bench/bench_support.h"
#include "dsp/limiter.h"
#include "engine/bass_voice.h"
#include "engine/ensemble_chorus.h"
#include "engine/phaser_stage.h"
#include "engine/spring_reverb.h"
#include "engine/tone_stages.h"

namespace bench {
namespace {

using engine::Signal;
using engine::StereoSignal;

Signal noise(float level) {
    std::mt19937 random(1);
    Signal signal;
    for (float& x : signal) x = (static_cast<float>(random() % 2001) * 0.001f - 1.0f) * level;
    return signal;
}

// Times stage(StereoSignal&). The left side holds noise; the stage writes both sides.
template <typename Stage>
void timeStage(benchmark::State& state, float level, Stage stage) {
    const Signal input = noise(level);
    timeBlocks(state, [&](float* left, float* right, int frames) {
        StereoSignal signal{input, input};
        stage(signal);
        std::copy_n(signal.left.data(), frames, left);
        std::copy_n(signal.right.data(), frames, right);
    });
}

engine::Sections everySection() {
    engine::Sections sections;
    sections.level.fill(0.3f);
    sections.on.fill(true);
    return sections;
}

// The bass alone. Its operators cost less when they run together with the voices.
void bass(benchmark::State& state) {
    const engine::Sections sections = everySection();
    const auto voice = std::make_unique<engine::BassVoice>();
    const auto voices = std::make_unique<engine::UpperVoices>();
    voice->setRate(kRate);
    voice->noteOn(40, 100);
    engine::MasterPhases phases;
    engine::PhaseRows phaseRows;
    engine::BassRows rows;
    engine::SectionSums sums;
    timeStage(state, 0.1f, [&](StereoSignal& signal) {
        phases.render(1.0, kRate, kBlock, phaseRows, false, nullptr);
        voice->render(phaseRows, sections, kBlock, rows);
        voices->render(phaseRows, 1.0, sections, true, kBlock, rows, sums);
        std::copy_n(rows.tone.begin(), kBlock, signal.left.begin());
        signal.right = rows.amplitude;
    });
}

void tone(benchmark::State& state) {
    const engine::Sections sections = everySection();
    const auto stages = std::make_unique<engine::ToneStages>();
    stages->setRate(kRate);
    stages->setHighPass(0.3f, 0.3f);
    stages->setBrightness(0.8f);
    stages->beginBlock();
    const Signal gains = noise(0.2f);
    const Signal levels = noise(0.3f);
    dsp::Random dither;
    engine::BassRows bassRows;
    bassRows.amplitude = noise(0.5f);
    bassRows.sounding = kBlock;
    std::mt19937 random(2);
    for (float& x : bassRows.tone) x = static_cast<float>(random() % 2001) * 0.001f - 1.0f;
    timeStage(state, 0.1f, [&](StereoSignal& signal) {
        const engine::SectionSums sums{signal.left, signal.right, kBlock};
        stages->render({sums, bassRows, gains, 1.0f, levels, dither}, sections, kBlock,
                       signal.left);
        signal.right = signal.left;
    });
}

// With the shared phases, beside which its modulators run.
void chorus(benchmark::State& state) {
    const auto stage = std::make_unique<engine::EnsembleChorus>();
    stage->setRate(kRate);
    stage->setOn(true);
    stage->setSlowDepth(0.6f);
    stage->setFastDepth(0.2f);
    stage->setStereo(0.8f);
    engine::MasterPhases phases;
    engine::PhaseRows phaseRows;
    engine::EnsembleChorus::Run run;
    timeStage(state, 0.1f, [&](StereoSignal& signal) {
        const Signal in = signal.left;
        phases.render(1.0, kRate, kBlock, phaseRows, false, stage->begin(run, kBlock));
        stage->modulate(run, kBlock);
        stage->render(run, in, {0, kBlock}, signal);
    });
}

void phaser(benchmark::State& state) {
    const auto stage = std::make_unique<engine::PhaserStage>();
    stage->setRate(kRate);
    stage->setOn(true);
    stage->setStages(0.8f);
    stage->setFeedback(0.5f);
    stage->setHighPass(0.3f, 0.3f);
    timeStage(state, 0.1f, [&](StereoSignal& signal) { stage->render(signal, {0, kBlock}); });
}

void reverb(benchmark::State& state) {
    const auto stage = std::make_unique<engine::SpringReverb>(engine::kHighestRate);
    stage->setRate(kRate);
    stage->setOn(true);
    stage->set({0.5f, 0.5f, 0.5f, 0.5f});
    engine::SpringReverb::Run run;
    dsp::PeakFollower follower;
    std::array<double, kBlock> levels{};
    timeStage(state, 0.1f, [&](StereoSignal& signal) {
        stage->render(run, signal, kBlock);
        stage->feed(run, follower, levels.data(), kBlock);
    });
}

void limiter(benchmark::State& state) {
    dsp::PeakLimiter stage;
    timeStage(state, static_cast<float>(state.range(0)) * 0.1f, [&](StereoSignal& signal) {
        float* const left = signal.left.data();
        float* const right = signal.right.data();
        dsp::PeakLimiter::Run run;
        stage.begin(run, {1.0f, 1.0f, 0, nullptr}, left, right, kBlock);
        for (double& level : run.levels) level = run.follower.tick(level);
        stage.finish(run, left, right, kBlock, 1e-7, left, right);
    });
}

BENCHMARK(bass)->Name("block/bass")->UseManualTime();
BENCHMARK(tone)->Name("block/tone")->UseManualTime();
BENCHMARK(chorus)->Name("block/chorus")->UseManualTime();
BENCHMARK(phaser)->Name("block/phaser")->UseManualTime();
BENCHMARK(reverb)->Name("block/reverb")->UseManualTime();
BENCHMARK(limiter)->Name("block/limiter")->Arg(1)->Arg(50)->UseManualTime();

}  // namespace
}  // namespace bench
