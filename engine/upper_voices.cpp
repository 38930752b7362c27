// Notes and sources of the polyphonic pool.
#include "engine/upper_voices.h"

#include <algorithm>

namespace engine {

namespace {
constexpr int kSectionKey = 60;
constexpr float kSectionPeak = 0.6200012f;  // 100^2 / 127^2: as velocity 100
// Table oscillators take MIDI notes. A key index counts from C0, which is note 12.
constexpr int kNoteOfIndexZero = 12;
}  // namespace

UpperVoices::UpperVoices() {
    sectionEnvelope_.setVelocityAmount(1.0f);
    for (int slot = 0; slot < kMaxVoices; ++slot) {
        lanes_.octave[slot] = 1.0f;
        lanes_.keyHighPass.setCoefficients(slot, keyHighPass());
    }
}

dsp::BiquadCoefficients UpperVoices::keyHighPass() const {
    return dsp::designHighPass(lastNoteHertz_, dsp::kKeyHighPassQ, sampleRate_);
}

void UpperVoices::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    const float releaseFactor = release_.factor(sampleRate);
    const dsp::BiquadCoefficients highPass = keyHighPass();
    for (int slot = 0; slot < kMaxVoices; ++slot) {
        dsp::VoiceEnvelope& envelope = envelopes_[slot];
        envelope.noteOff();
        envelope.setRate(sampleRate);
        envelope.computeRates();
        envelope.setReleaseFactor(releaseFactor);

        tables_[slot].oscA.setRate(sampleRate);
        tables_[slot].oscB.setRate(sampleRate);
        clearLane(slot);
        lanes_.oscA.setRate(slot, static_cast<float>(sampleRate));
        lanes_.oscB.setRate(slot, static_cast<float>(sampleRate));
        lanes_.keyHighPass.setCoefficients(slot, highPass);
    }
    sectionEnvelope_.setRate(sampleRate);
    sectionEnvelope_.computeRates();
}

void UpperVoices::setPolyphony(int count) {
    if (count == polyphony()) return;
    allocator_.setPolyphony(count);
    for (int slot = 0; slot < kMaxVoices; ++slot) {
        noteState_[slot] = -1;
        envelopes_[slot].noteOff();
        if (slot >= polyphony()) envelopes_[slot].kill();
    }
    sectionEnvelope_.noteOff();
}

void UpperVoices::setRelease(const ReleaseTime& release) {
    release_ = release;
    for (dsp::VoiceEnvelope& envelope : envelopes_) release.applyTo(envelope, sampleRate_);
    release.applyTo(sectionEnvelope_, sampleRate_);
}

void UpperVoices::noteOn(int key, int velocity) {
    const int slot = allocator_.noteOn(key, velocity);
    dsp::VoiceEnvelope& envelope = envelopes_[slot];
    // intentional: the envelope takes the stored velocity for its key
    envelope.noteOn(velocity, allocator_.velocity(slot));
    sectionEnvelope_.trigger(kSectionPeak, kSectionKey);

    const int index = upperKeyIndex(key);
    noteState_[slot] = 1;
    tables_[slot].oscA.setNote(index + kNoteOfIndexZero);
    tables_[slot].oscB.setNote(index + kNoteOfIndexZero + kSemitones);
    const Pitch pitch = pitchFromIndex(index);
    lanes_.semitone[slot] = pitch.semitone;
    lanes_.octave[slot] = static_cast<float>(pitch.octaveFactor);
    lanes_.oscA.setFrequency(slot, static_cast<float>(pitch.hertz()));
    lanes_.oscB.setFrequency(slot, static_cast<float>(2.0 * pitch.hertz()));
    lastNoteHertz_ = keyHighPassHertz(index);
    lanes_.keyHighPass.setCoefficients(slot, keyHighPass());
}

void UpperVoices::noteOff(int key) {
    const int slot = allocator_.noteOff(key);
    // For a key that no slot holds, noteOff returns the slot after the last one in use. At full
    // polyphony there is no such slot.
    if (slot != VoiceAllocator::kSustained && slot < kMaxVoices) releaseSlot(slot);
}

void UpperVoices::releaseSlot(int slot) {
    noteState_[slot] = -1;
    const bool anyHeld =
        std::any_of(noteState_.begin(), noteState_.end(), [](int state) { return state == 1; });
    if (!anyHeld) sectionEnvelope_.noteOff();
    envelopes_[slot].noteOff();
}

void UpperVoices::setPedal(bool down) {
    allocator_.setPedal(down);
    if (down) return;
    for (int slot = 0; slot < polyphony(); ++slot) {
        if (allocator_.takeSustained(slot) && noteState_[slot] == 1) {
            noteOff(allocator_.key(slot));
        }
    }
}

void UpperVoices::allNotesOff() {
    for (int slot = 0; slot < kMaxVoices; ++slot) {
        envelopes_[slot].noteOff();
        noteState_[slot] = -1;
    }
    sectionEnvelope_.noteOff();
    allocator_.reset();
}

void UpperVoices::silence() {
    const auto silenced = [](dsp::VoiceEnvelope& envelope) {
        envelope.noteOff();
        envelope.kill();
    };
    std::for_each(envelopes_.begin(), envelopes_.end(), silenced);
    silenced(sectionEnvelope_);
    for (int slot = 0; slot < kMaxVoices; ++slot) clearLane(slot);
}

void UpperVoices::clearLane(int slot) {
    lanes_.oscA.clear(slot);
    lanes_.oscB.clear(slot);
    lanes_.keyHighPass.clear(slot);
}

void UpperVoices::reset() {
    silence();
    noteState_.fill(0);
    allocator_.reset();
}

void UpperVoices::render(const PhaseRows& phases, double bendRatio, const Sections& sections,
                         bool shared, int frames, BassRows& bass, SectionSums& sums) {
    levels_.render(envelopes_, polyphony(), frames);
    sums.sounding = levels_.longest();
    sums.viola.fill(0.0f);
    sums.violin.fill(0.0f);
    if (waveform_ == Waveform::kTable) {
        renderTables(bendRatio, shared, sums);
    }
    renderOperators(phases, sections, shared, bass, sums);
}

void UpperVoices::lanePhases(const PhaseRows& phases, double octaves, double offset,
                             float* out) const {
    for (int t = 0; t < levels_.longest(); ++t) {
        for (int slot = 0; slot < kMaxVoices; ++slot) {
            const double phase = phases.turns[t][lanes_.semitone[slot]] * lanes_.octave[slot];
            out[t * dsp::kVoiceLanes + slot] = static_cast<float>(octaves * phase + offset);
        }
    }
}

// Splits the segment where a voice or the bass falls idle, so that every run has a fixed set of
// lanes.
void UpperVoices::renderOperators(const PhaseRows& phases, const Sections& sections, bool shared,
                                  BassRows& bass, SectionSums& sums) {
    const bool squared = waveform_ == Waveform::kSquaredFeedback;
    const bool feedback = waveform_ == Waveform::kFeedback;
    const bool useA =
        squared || (feedback && (sections.on[kViola] || sections.on[kBrass] || sections.on[kHorn]));
    const bool useB = squared || (feedback && sections.on[kViolin]);
    const float offset = violinPhase_ * 0.5f;
    const bool ownB = squared || offset != 0.0f;
    if (squared) lanePhases(phases, 1.0, -0.5, scratch_.phasesA.data());
    if (useB && ownB) lanePhases(phases, 2.0, squared ? -0.5 : offset, scratch_.phasesB.data());

    const int longest = std::max(sums.sounding, bass.sounding);
    for (int from = 0; from < longest;) {
        int until = longest;
        dsp::LaneMasks on{};
        for (int slot = 0; slot < kMaxVoices; ++slot) {
            if (levels_.framesOf(slot) <= from) continue;
            on[slot] = -1;
            until = std::min(until, levels_.framesOf(slot));
        }
        const bool bassSounds = from < bass.sounding;
        if (bassSounds) until = std::min(until, bass.sounding);
        const dsp::BassRun bassRun = bass.run(from);
        const int frame = from * dsp::kVoiceLanes;
        const dsp::VoiceRun run = {lanes_,
                                   on,
                                   &phases.rounded[from * dsp::kPaddedPhases],
                                   squared ? &scratch_.phasesA[frame] : nullptr,
                                   ownB ? &scratch_.phasesB[frame] : nullptr,
                                   useA,
                                   useB,
                                   scratch_.a.data(),
                                   scratch_.b.data(),
                                   bassSounds ? &bassRun : nullptr,
                                   until - from};
        (squared ? kernels_.runSquared : kernels_.runFeedback)(run);
        const float* const levels = shared ? nullptr : levels_.row(0) + from;
        const auto add = [&](const float* lanes, float* sum) {
            kernels_.sumVoices({lanes, levels, kRowStride, on, sum, until - from});
        };
        if (useA) add(scratch_.a.data(), &sums.viola[from]);
        if (useB) add(scratch_.b.data(), &sums.violin[from]);
        from = until;
    }
    // The kernels wrote whole vectors; clear what they left after the last frame.
    std::fill(sums.viola.begin() + sums.sounding, sums.viola.end(), 0.0f);
    std::fill(sums.violin.begin() + sums.sounding, sums.violin.end(), 0.0f);
}

void UpperVoices::renderTables(double bendRatio, bool shared, SectionSums& sums) {
    for (int slot = 0; slot < polyphony(); ++slot) {
        TableVoice& voice = tables_[slot];
        const float* const levels = levels_.row(slot);
        for (int t = 0; t < levels_.framesOf(slot); ++t) {
            const float level = shared ? 1.0f : levels[t];
            sums.viola[t] += level * voice.oscA.tick(bendRatio);
            sums.violin[t] += level * voice.oscB.tick(bendRatio);
        }
    }
}

}  // namespace engine
