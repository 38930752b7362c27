// The spring, the room reverb that follows it, and the feedback from the room into the spring.
#pragma once

#include "dsp/fractional_delay.h"
#include "dsp/one_pole.h"
#include "dsp/reverb_model.h"
#include "engine/segment.h"
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

    // Most frames in a segment: the spring's output is read before its input is known. At least 87.
    int longestSegment() const { return static_cast<int>(springLine_.delay()) - 3; }

    void clear();
    // Clears all states, including those that a program change leaves alone.
    void clearFault();

    // Renders one segment in place; then feed gives the same segment to the lines and follows
    // `levels` in place meanwhile. Both get the same Run.
    struct Run {
        dsp::ReverbModel::Run room;
        Signal side;
        Signal feedback;  // from the room into the spring
    };
    void render(Run& run, StereoSignal& signal, int frames);
    void feed(Run& run, dsp::PeakFollower& follower, double* levels, int frames);

  private:
    void updateLevels();
    void updateDamping();
    void updateRoom();
    void tuneSpring();
    bool springs() const;
    // Adds the spring's output to both sides and writes the side signal that feeds it.
    void addSpring(StereoSignal& signal, int frames, Signal& side);

    const dsp::Kernels& kernels_ = dsp::kernels();
    double sampleRate_ = 44100.0;
    bool on_ = false;
    ReverbSettings settings_;
    float feedback_ = 0.0f;
    dsp::OnePole springFilter_;
    dsp::FractionalDelay springLine_;
    dsp::ReverbModel reverb_;
};

}  // namespace engine
