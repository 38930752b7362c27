// The spring, the room reverb that follows it, and the feedback from the room into the spring.
#pragma once

#include "tests/reference/fractional_delay.h"
#include "dsp/one_pole.h"
#include "tests/reference/reverb_model.h"
#include "tests/reference/stereo_sample.h"
#include "engine/sound_engine.h"
#include "tests/reference/names.h"

namespace reference {

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

    StereoSample tick(StereoSample in);

  private:
    void setLevels(float wet, float dry);
    void setDamping(float damping);
    void setRoom(float size);
    void followSpring();
    void tuneSpring();
    float tickSpring(StereoSample in);

    double sampleRate_ = 44100.0;
    bool on_ = false;
    ReverbSettings settings_;
    float feedback_ = 0.0f;
    dsp::OnePole springFilter_;
    FractionalDelay springLine_;
    ReverbModel reverb_;
};

}  // namespace reference
