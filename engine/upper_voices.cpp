// Sources of the polyphonic pool.
#include "engine/upper_voices.h"

#include <algorithm>

namespace engine {

void UpperVoices::render(const PhaseRows& phases, double bendRatio, const Sections& sections,
                         bool shared, int frames, BassRows& bass, SectionSums& sums) {
    levels_.render(envelopes_, takeTouched(), frames, shared);
    sums.sounding = levels_.longest();
    std::fill_n(sums.viola.begin(), sums.sounding, 0.0f);
    std::fill_n(sums.violin.begin(), sums.sounding, 0.0f);
    renderOscillators(phases, bendRatio, sections, shared, bass, sums);
    // The kernels wrote whole vectors; clear what they left after the last frame that sounds.
    std::fill(sums.viola.begin() + sums.sounding, sums.viola.begin() + frames, 0.0f);
    std::fill(sums.violin.begin() + sums.sounding, sums.violin.begin() + frames, 0.0f);
}

// Splits the segment where a voice or the bass falls idle, so that every run has a fixed set of
// lanes.
void UpperVoices::renderOscillators(const PhaseRows& phases, double bendRatio,
                                    const Sections& sections, bool shared, BassRows& bass,
                                    SectionSums& sums) {
    const bool table = waveform_ == Waveform::kTable;
    const bool squared = waveform_ == Waveform::kSquaredFeedback;
    const bool feedback = waveform_ == Waveform::kFeedback;
    const bool useA =
        squared || (feedback && (sections.on[kViola] || sections.on[kBrass] || sections.on[kHorn]));
    const bool useB = squared || (feedback && sections.on[kViolin]);
    const float offset = violinPhase_ * 0.5f;
    const bool ownB = squared || offset != 0.0f;
    const auto offsetPhases = [&](double octaves, double by, float* out) {
        kernels_.offsetPhases({lanes_, masks_.of(levels_.sounding()), phases.turns[0].data(),
                               octaves, by, out, sums.sounding});
    };
    if (squared) offsetPhases(1.0, -0.5, scratch_.a.data());
    if (useB && ownB) offsetPhases(2.0, squared ? -0.5 : offset, scratch_.b.data());

    const int longest = std::max(sums.sounding, bass.sounding);
    for (int from = 0; from < longest;) {
        int until = longest;
        SlotSet sounding = levels_.sounding();
        forEachSlot(levels_.ending(), [&](int slot) {
            const int frames = levels_.framesOf(slot);
            if (frames <= from) {
                sounding &= ~onlySlot(slot);
            } else {
                until = std::min(until, frames);
            }
        });
        const dsp::LaneMasks& on = masks_.of(sounding);
        const bool bassSounds = from < bass.sounding;
        if (bassSounds) until = std::min(until, bass.sounding);
        const dsp::BassRun bassRun = bass.run(from);
        float* const a = &scratch_.a[from * dsp::kVoiceLanes];
        float* const b = &scratch_.b[from * dsp::kVoiceLanes];
        const dsp::VoiceRun run = {lanes_,
                                   on,
                                   &phases.rounded[from * dsp::kPaddedPhases],
                                   squared ? a : nullptr,
                                   ownB ? b : nullptr,
                                   useA,
                                   useB,
                                   a,
                                   b,
                                   bassSounds ? &bassRun : nullptr,
                                   until - from};
        // Tables have no operators; what is left then is the bass.
        (squared ? kernels_.runSquared : kernels_.runFeedback)(run);
        if (table) {
            kernels_.runTables(
                {tables_.a.data(), tables_.b.data(), on, bendRatio, a, b, until - from});
        }
        const float* const levels = shared ? nullptr : levels_.row(0) + from;
        const auto add = [&](const float* lanes, float* sum) {
            kernels_.sumVoices({lanes, levels, kRowStride, on, sum, until - from});
        };
        if (useA || table) add(a, &sums.viola[from]);
        if (useB || table) add(b, &sums.violin[from]);
        from = until;
    }
}

}  // namespace engine
