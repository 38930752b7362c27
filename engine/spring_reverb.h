// The spring, the room reverb that follows it, and the feedback from the room into the spring.
#pragma once

#include "dsp/fractional_delay.h"
#include "dsp/one_pole.h"
#include "dsp/reverb_model.h"
#include "engine/segment.h"
#include "engine/wrapped_to_unit.h"
#include "engine/sound_engine.h"

namespace engine {

class SpringReverb final : public ReverbControl {
  public:
    // Allocates the spring's line for `highestRate` (Hz).
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
    // Clears all states, including those that a program change leaves alone.
    void clearFault();

    // Renders one segment in place.
    void render(StereoSignal& signal, int frames);

  private:
    void updateLevels();
    void updateDamping();
    void updateRoom();
    void tuneSpring();
    // Adds the spring's output to both sides and writes the side signal for feedSpring.
    void addSpring(StereoSignal& signal, int frames, Signal& side);
    // Writes the spring's input; `low` is the low-passed feedback from the room's output.
    void feedSpring(const Signal& side, const Signal& low, int frames);

    double sampleRate_ = 44100.0;
    bool on_ = false;
    ReverbSettings settings_;
    float feedback_ = 0.0f;
    dsp::OnePole springFilter_;
    dsp::FractionalDelay springLine_;
    dsp::ReverbModel reverb_;
};

}  // namespace engine
