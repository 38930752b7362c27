// The spring path and the room reverb behind it, with the feedback from one into the other.
#pragma once

#include "dsp/fractional_delay.h"
#include "dsp/one_pole.h"
#include "dsp/reverb_model.h"
#include "engine/segment.h"
#include "engine/signal.h"
#include "engine/sound_engine.h"

namespace engine {

class SpringReverb final : public ReverbControl {
  public:
    // `highestRate` in Hz sizes the spring's line once and for all.
    explicit SpringReverb(double highestRate);

    // Empties the line and the reverb.
    void setRate(double sampleRate);

    void setOn(bool on) override;
    void set(const ReverbSettings& settings) override;
    void setMix(float mix) override;
    void setSize(float size) override;
    void setBrite(float brite) override;
    void setSpring(float amount) override;

    void clear();
    // All states, also those that a program change leaves to the next sound.
    void clearFault();

    // A segment.
    void render(StereoSignal& signal, int frames);

  private:
    void updateLevels();
    void updateDamping();
    void updateRoom();
    void tuneSpring();
    // What the spring gives to both sides; nothing when it is out.
    void addSpring(StereoSignal& signal, int frames, Signal& side);
    // What goes into the spring, from the output of the room.
    void feedSpring(const Signal& side, const Signal& feedback, int frames);

    double sampleRate_ = 44100.0;
    bool on_ = false;
    ReverbSettings settings_;
    float feedback_ = 0.0f;
    dsp::OnePole springFilter_;
    dsp::FractionalDelay springLine_;
    dsp::ReverbModel reverb_;
};

}  // namespace engine
