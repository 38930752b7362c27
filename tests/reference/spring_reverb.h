// The spring path and the room reverb behind it, with the feedback from one into the other.
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
    // `highestRate` in Hz sizes the spring's line once and for all.
    explicit SpringReverb(double highestRate);

    // Empties the line and the reverb.
    void setRate(double sampleRate);

    void setOn(bool on) override;
    void setSpring(float amount) override { spring_ = amount; }
    float spring() const override { return spring_; }
    void setSpringMix(float mix) override { springMix_ = mix; }
    void tuneSpring() override;

    void setRoom(float size) override;
    void setDamping(float damping) override;
    void setLevels(float wet, float dry) override;

    void clear();
    // All states, also those that a program change leaves to the next sound.
    void clearFault();

    StereoSample tick(StereoSample in);

  private:
    float tickSpring(StereoSample in);

    double sampleRate_ = 44100.0;
    bool on_ = false;
    float spring_ = 0.0f;
    float springMix_ = 0.0f;
    float feedback_ = 0.0f;
    dsp::OnePole springFilter_;
    FractionalDelay springLine_;
    ReverbModel reverb_;
};

}  // namespace reference
