// The sound engine: notes and settings in, stereo samples out. It knows no host, file or window.
#pragma once

#include <array>
#include <atomic>

#include "engine/bass_voice.h"
#include "engine/engine_controls.h"
#include "engine/ensemble_chorus.h"
#include "engine/peak_slot.h"
#include "engine/phaser_stage.h"
#include "engine/spring_reverb.h"
#include "engine/tone_stages.h"
#include "engine/upper_voices.h"

namespace engine {

struct Stages {
    UpperVoices upper;
    BassVoice bass;
    ToneStages tone;
    EnsembleChorus chorus;
    PhaserStage phaser;
    SpringReverb reverb{kHighestRate};
};

class Engine : public EngineControls<Stages> {
  public:
    explicit Engine(double sampleRate) : EngineControls(sampleRate) {}

    void beginBlock() override { beginStages(); }
    int render(float* left, float* right, int frames) override;
    void endBlock(float* left, float* right, int frames) override;

    StereoPeaks takePeaks() override { return {peaks_[0].take(), peaks_[1].take()}; }
    float chorusTap(int tap) const override {
        return chorusTaps_[tap].load(std::memory_order_relaxed);
    }

  private:
    void renderAwake(float* left, float* right, int frames);
    // Renders the chain up to the phaser; returns the number of leading frames in which a voice
    // sounds.
    int renderVoices(int frames);
    void renderStereo(const ToneSources& sources, int frames);
    // Returns false, and changes nothing, if that does not fit.
    bool renderToneBesidePhaser(SegmentPart part);
    // Returns their scale; see ToneSources.
    float setVoiceGains(int sounding, int frames);
    int framesToSleep() const;

    const dsp::Kernels& kernels_ = dsp::kernels();
    MasterPhases phases_;

    // Signals of the current segment.
    PhaseRows phaseRows_;
    SectionSums sums_{};
    Signal voiceGains_{};
    Signal sectionLevels_{};
    BassRows bassRows_{};
    Signal mono_{};
    EnsembleChorus::Run chorusRun_{};
    StereoSignal stereo_{};

    std::array<PeakSlot, 2> peaks_;  // left, right
    std::array<std::atomic<float>, EnsembleChorus::kTaps> chorusTaps_{};
};

}  // namespace engine
