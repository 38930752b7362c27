// The spring path and the room reverb behind it, with the feedback from one into the other.
#pragma once

#include "dsp/fractional_delay.h"
#include "dsp/one_pole.h"
#include "dsp/reverb_model.h"
#include "engine/signal.h"

namespace engine {

class SpringReverb {
  public:
    // `highestRate` in Hz sizes the spring's line once and for all.
    explicit SpringReverb(double highestRate);

    // Empties the line and the reverb.
    void setRate(double sampleRate);

    // Switches the stage and empties the reverb, also when nothing changes.
    void setOn(bool on);
    // 0..1: how much of the side signal enters the spring; below 0.1 the spring is out.
    void setSpring(float amount) { spring_ = amount; }
    float spring() const { return spring_; }
    // 0..1: level of the spring's output.
    void setSpringMix(float mix) { springMix_ = mix; }
    // Corner of the spring's loop for its amount, at the present rate.
    void tuneSpring();

    void setRoom(float size);
    void setDamping(float damping);
    void setLevels(float wet, float dry);

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
    dsp::FractionalDelay springLine_;
    dsp::ReverbModel reverb_;
};

}  // namespace engine
