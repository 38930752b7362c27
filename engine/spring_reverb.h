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

    // A segment.
    void render(StereoSignal& signal, int frames);

  private:
    // What the spring gives to both sides; nothing when it is out.
    void addSpring(StereoSignal& signal, int frames, Signal& side);
    // What goes into the spring, from the output of the room.
    void feedSpring(const Signal& side, const Signal& feedback, int frames);

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
