// The spring, the room reverb that follows it, and the feedback from the room into the spring.
#pragma once

#include <algorithm>

#include "dsp/fractional_delay.h"
#include "dsp/one_pole.h"
#include "engine/sound_engine.h"
#include "tests/reference/wrapped_to_unit.h"
#include "tests/reference/room_reverb.h"

namespace reference {

class SpringReverb final : public engine::ReverbControl {
  public:
    void setRate(double sampleRate) {
        sampleRate_ = sampleRate;
        tuneSpring();
        springLine_.setCapacity(static_cast<int>(sampleRate * kSpringCapacitySeconds));
        springLine_.setDelay(static_cast<float>(sampleRate * kSpringSeconds));
        room_.mute();
    }
    void setOn(bool on) override {
        on_ = on;
        room_.mute();
    }
    // Sets the spring first, because the other values depend on it.
    void set(const engine::ReverbSettings& settings) override {
        settings_.spring = settings.spring;
        setMix(settings.mix);
        setSize(settings.size);
        setBrite(settings.brite);
        setSpring(settings.spring);
    }
    void setMix(float mix) override {
        settings_.mix = mix;
        room_.setLevels((2.0f - settings_.spring) * mix * 3.0f, 1.0f - mix);
    }
    void setSize(float size) override {
        settings_.size = size;
        room_.setRoomSize(size * 0.28f + 0.7f);
        followSpring();
    }
    void setBrite(float brite) override {
        settings_.brite = brite;
        room_.setDamp((1.0f - brite) * 0.4f + settings_.spring * 0.1f);
    }
    void setSpring(float amount) override {
        settings_.spring = amount;
        setMix(settings_.mix);
        setBrite(settings_.brite);
        followSpring();
    }

    void clear() {
        feedback_ = 0.0f;
        springFilter_.clear();
        room_.mute();
    }
    void clearFault() {
        clear();
        springLine_.clear();
        room_.clear();
    }

    StereoSample tick(StereoSample in) {
        if (!on_) return in;
        if (settings_.spring > 0.1f) {
            const float spring = tickSpring(in);
            in.left += spring * 0.5f;
            in.right += spring * 0.5f;
        }
        const StereoSample room = room_.tick(in);
        const float z = dsp::flushed(room.left) * 0.5f + in.right;
        feedback_ = z - z * z * z * 0.5f;
        return {std::clamp(2.0f * room.left, -4.0f, 4.0f),
                std::clamp(2.0f * room.right, -4.0f, 4.0f)};
    }

  private:
    static constexpr double kSpringSeconds = 0.09090909090909091;  // 1 / 11
    static constexpr double kSpringCapacitySeconds = 0.125;

    void followSpring() {
        if (settings_.spring > 0.3f) {
            const bool large = settings_.spring > 0.7f || settings_.size > 0.7f;
            room_.setRoomSize((large ? 0.7f : settings_.size) * 0.28f + 0.7f);
        }
        tuneSpring();
    }
    void tuneSpring() {
        springFilter_.setCoefficient(
            static_cast<float>(6.28319 / sampleRate_ * (settings_.spring * 1200.0 + 2900.0)));
    }
    float tickSpring(StereoSample in) {
        const float side = wrappedToUnit((in.left - in.right) * settings_.spring);
        const float low = springFilter_.tickLowPass(feedback_ * 0.9f);
        const float delayed = springLine_.tick((low * 0.5f + side) * settings_.spring);
        return wrappedToUnit(delayed * settings_.mix);
    }

    double sampleRate_ = 44100.0;
    bool on_ = false;
    engine::ReverbSettings settings_;
    float feedback_ = 0.0f;
    dsp::OnePole springFilter_;
    dsp::FractionalDelay springLine_{
        0.0f, static_cast<int>(engine::kHighestRate* kSpringCapacitySeconds)};
    RoomReverb room_;
};

}  // namespace reference
