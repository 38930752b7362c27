// The voices alone, for each waveform.
#include <memory>

#include "bench/bench_support.h"
#include "engine/upper_voices.h"

namespace bench {
namespace {

void bank(benchmark::State& state, engine::Waveform waveform, float violinPhase) {
    engine::Sections sections;
    sections.level.fill(0.3f);
    sections.on.fill(true);
    const auto voices = std::make_unique<engine::UpperVoices>();
    voices->setRate(kRate);
    voices->setWaveform(waveform);
    voices->setViolinPhase(violinPhase);
    voices->setPolyphony(engine::kMaxVoices);
    for (int i = 0; i < state.range(0); ++i) voices->noteOn(40 + i, 100);
    engine::MasterPhases phases;
    engine::PhaseRows phaseRows;
    engine::BassRows bass;
    engine::SectionSums sums;
    timeBlocks(state, [&](float* left, float* right, int frames) {
        phases.render(1.0, kRate, frames, phaseRows, voices->readsTurns(), nullptr);
        voices->render(phaseRows, 1.0, sections, true, frames, bass, sums);
        std::copy_n(sums.viola.data(), frames, left);
        std::copy_n(sums.violin.data(), frames, right);
    });
}

using engine::Waveform;
BENCHMARK_CAPTURE(bank, feedback, Waveform::kFeedback, 0.0f)->Arg(44)->Arg(8)->UseManualTime();
BENCHMARK_CAPTURE(bank, feedback_shifted, Waveform::kFeedback, 0.3f)->Arg(44)->UseManualTime();
BENCHMARK_CAPTURE(bank, squared, Waveform::kSquaredFeedback, 0.0f)->Arg(44)->UseManualTime();
BENCHMARK_CAPTURE(bank, table, Waveform::kTable, 0.0f)->Arg(44)->UseManualTime();

}  // namespace
}  // namespace bench
