// Notes and sources of the polyphonic pool.
#include "tests/reference/upper_voices.h"

#include <algorithm>

#include "engine/wrapped_to_unit.h"

namespace reference {

namespace {
constexpr int kSectionKey = 60;
constexpr float kSectionPeak = 0.6200012f;  // 100^2 / 127^2: as velocity 100
// Table oscillators take MIDI notes. A key index counts from C0, which is note 12.
constexpr int kNoteOfIndexZero = 12;
}  // namespace

UpperVoices::UpperVoices() {
    sectionEnvelope_.setVelocityAmount(1.0f);
    for (Voice& voice : voices_) voice.keyHighPass.setCoefficients(keyHighPass());
}

BiquadCoefficients UpperVoices::keyHighPass() const {
    return designHighPass(lastNoteHertz_, kKeyHighPassQ, sampleRate_);
}

void UpperVoices::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    const float releaseFactor = release_.factor(sampleRate);
    for (int slot = 0; slot < kMaxVoices; ++slot) {
        dsp::VoiceEnvelope& envelope = envelopes_[slot];
        envelope.noteOff();
        envelope.setRate(sampleRate);
        envelope.computeRates();
        envelope.setReleaseFactor(releaseFactor);

        Voice& voice = voices_[slot];
        voice.tableOscA.setRate(sampleRate);
        voice.tableOscB.setRate(sampleRate);
        voice.oscA.clear();
        voice.oscB.clear();
        voice.oscA.setRate(static_cast<float>(sampleRate));
        voice.oscB.setRate(static_cast<float>(sampleRate));
        voice.keyHighPass.clear();
        voice.keyHighPass.setCoefficients(keyHighPass());
    }
    sectionEnvelope_.setRate(sampleRate);
    sectionEnvelope_.computeRates();
}

void UpperVoices::setPolyphony(int count) {
    if (count == polyphony()) return;
    allocator_.setPolyphony(count);
    for (int slot = 0; slot < kMaxVoices; ++slot) {
        voices_[slot].noteState = -1;
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
    Voice& voice = voices_[slot];
    voice.noteState = 1;
    voice.tableOscA.setNote(index + kNoteOfIndexZero);
    voice.tableOscB.setNote(index + kNoteOfIndexZero + kSemitones);
    voice.pitch = pitchFromIndex(index);
    voice.oscA.setFrequency(static_cast<float>(voice.pitch.hertz()));
    voice.oscB.setFrequency(static_cast<float>(2.0 * voice.pitch.hertz()));
    lastNoteHertz_ = keyHighPassHertz(index);
    voice.keyHighPass.setCoefficients(keyHighPass());
}

void UpperVoices::noteOff(int key) {
    const int slot = allocator_.noteOff(key);
    // For a key that no slot holds, noteOff returns the slot after the last one in use. At full
    // polyphony there is no such slot.
    if (slot != VoiceAllocator::kSustained && slot < kMaxVoices) releaseSlot(slot);
}

void UpperVoices::releaseSlot(int slot) {
    voices_[slot].noteState = -1;
    const bool anyHeld = std::any_of(voices_.begin(), voices_.end(),
                                     [](const Voice& voice) { return voice.noteState == 1; });
    if (!anyHeld) sectionEnvelope_.noteOff();
    envelopes_[slot].noteOff();
}

void UpperVoices::setPedal(bool down) {
    allocator_.setPedal(down);
    if (down) return;
    for (int slot = 0; slot < polyphony(); ++slot) {
        if (allocator_.takeSustained(slot) && voices_[slot].noteState == 1) {
            noteOff(allocator_.key(slot));
        }
    }
}

void UpperVoices::allNotesOff() {
    for (int slot = 0; slot < kMaxVoices; ++slot) {
        envelopes_[slot].noteOff();
        voices_[slot].noteState = -1;
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
    for (Voice& voice : voices_) {
        voice.oscA.clear();
        voice.oscB.clear();
        voice.keyHighPass.clear();
    }
}

void UpperVoices::reset() {
    silence();
    for (Voice& voice : voices_) voice.noteState = 0;
    allocator_.reset();
}

UpperVoices::Sources UpperVoices::tickSources(Voice& voice, const MasterPhases& phases,
                                              double bendRatio, const Sections& sections) {
    const double phase = phases[voice.pitch.semitone] * voice.pitch.octaveFactor;
    switch (waveform_) {
        case Waveform::kTable:
            return {voice.tableOscA.tick(bendRatio), voice.tableOscB.tick(bendRatio)};
        case Waveform::kSquaredFeedback:
            return {voice.oscA.processSquared(static_cast<float>(phase - 0.5)),
                    voice.oscB.processSquared(static_cast<float>(2.0 * phase - 0.5))};
        case Waveform::kFeedback:
            break;
    }
    Sources out{0.0f, 0.0f};
    if (sections.on[kViola] || sections.on[kBrass] || sections.on[kHorn]) {
        const float a = wrappedToUnit(voice.oscA.process(static_cast<float>(phase)));
        out.a = voice.keyHighPass.tick(a);
    }
    if (sections.on[kViolin]) {
        const float offset = violinPhase_ * 0.5f;
        out.b = voice.oscB.process(static_cast<float>(2.0 * phase + offset));
    }
    return out;
}

SectionSums UpperVoices::tick(const MasterPhases& phases, double bendRatio,
                              const Sections& sections, bool shared) {
    SectionSums sums;
    const bool brassOrHorn = sections.on[kBrass] || sections.on[kHorn];
    for (int slot = 0; slot < polyphony(); ++slot) {
        dsp::VoiceEnvelope& envelope = envelopes_[slot];
        if (envelope.stage() == dsp::VoiceEnvelope::kIdle) continue;
        sums.sounding = true;
        const Sources source = tickSources(voices_[slot], phases, bendRatio, sections);
        const float brassIn = brassOrHorn ? source.a : 0.0f;
        const float level = envelope.tick();
        if (shared) {
            sums.viola += source.a;
            sums.violin += source.b;
            sums.brassHorn += brassIn;
        } else {
            sums.viola += level * source.a;
            sums.violin += level * source.b;
            sums.brassHorn += level * brassIn;
        }
    }
    return sums;
}

float UpperVoices::envelopeSum() const {
    float sum = 0.0f;
    for (const dsp::VoiceEnvelope& envelope : envelopes_) sum += envelope.level();
    return sum;
}

}  // namespace reference
