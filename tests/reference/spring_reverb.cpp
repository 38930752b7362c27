// The spring loop and the room.
#include "tests/reference/spring_reverb.h"

#include <algorithm>

#include "dsp/denormal.h"

namespace reference {

namespace {
constexpr double kSpringSeconds = 0.09090909090909091;  // 1 / 11
constexpr double kSpringCapacitySeconds = 0.125;
constexpr float kSpringThreshold = 0.1f;
}  // namespace

SpringReverb::SpringReverb(double highestRate)
    : springLine_(static_cast<float>(sampleRate_ * kSpringSeconds),
                  static_cast<int>(highestRate * kSpringCapacitySeconds)) {}

void SpringReverb::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    tuneSpring();
    springLine_.setCapacity(static_cast<int>(sampleRate * kSpringCapacitySeconds));
    springLine_.setDelay(static_cast<float>(sampleRate * kSpringSeconds));
    reverb_.setLengths(true, static_cast<float>(sampleRate));
}

void SpringReverb::setOn(bool on) {
    on_ = on;
    reverb_.setLengths(true, static_cast<float>(sampleRate_));
}

// Sets the spring first, because the other values depend on it.
void SpringReverb::set(const ReverbSettings& settings) {
    settings_.spring = settings.spring;
    setMix(settings.mix);
    setSize(settings.size);
    setBrite(settings.brite);
    setSpring(settings.spring);
}

void SpringReverb::setMix(float mix) {
    settings_.mix = mix;
    setLevels((2.0f - settings_.spring) * mix * 3.0f, 1.0f - mix);
}

void SpringReverb::setSize(float size) {
    settings_.size = size;
    setRoom(size * 0.28f + 0.7f);
    followSpring();
}

void SpringReverb::setBrite(float brite) {
    settings_.brite = brite;
    setDamping((1.0f - brite) * 0.4f + settings_.spring * 0.1f);
}

void SpringReverb::setSpring(float amount) {
    settings_.spring = amount;
    setLevels((2.0f - amount) * settings_.mix * 3.0f, 1.0f - settings_.mix);
    setDamping((1.0f - settings_.brite) * 0.4f + amount * 0.1f);
    followSpring();
}

void SpringReverb::followSpring() {
    if (settings_.spring > 0.3f) {
        const bool large = settings_.spring > 0.7f || settings_.size > 0.7f;
        setRoom((large ? 0.7f : settings_.size) * 0.28f + 0.7f);
    }
    tuneSpring();
}

void SpringReverb::tuneSpring() {
    springFilter_.setCoefficient(
        static_cast<float>(6.28319 / sampleRate_ * (settings_.spring * 1200.0 + 2900.0)));
}

void SpringReverb::setRoom(float size) {
    reverb_.setRoomSize(size);
    reverb_.update();
}

void SpringReverb::setDamping(float damping) {
    reverb_.setDamp(damping);
    reverb_.update();
}

void SpringReverb::setLevels(float wet, float dry) {
    reverb_.setWet(wet);
    reverb_.setDry(dry);
    reverb_.update();
}

void SpringReverb::clear() {
    feedback_ = 0.0f;
    springFilter_.clear();
    reverb_.mute();
}

void SpringReverb::clearFault() {
    clear();
    springLine_.clear();
    reverb_.clear();
}

float SpringReverb::tickSpring(StereoSample in) {
    const float side = wrappedToUnit((in.left - in.right) * settings_.spring);
    const float low = springFilter_.tickLowPass(feedback_ * 0.9f);
    return wrappedToUnit(springLine_.tick((low * 0.5f + side) * settings_.spring) * settings_.mix);
}

StereoSample SpringReverb::tick(StereoSample in) {
    if (!on_) return in;
    if (settings_.spring > kSpringThreshold) {
        const float spring = tickSpring(in);
        in.left += spring * 0.5f;
        in.right += spring * 0.5f;
    }
    const float bus[2] = {in.left, in.right};
    const float* room = reverb_.process(bus);
    const float z = dsp::flushed(room[0]) * 0.5f + in.right;
    feedback_ = z - z * z * z * 0.5f;
    return {std::clamp(2.0f * room[0], -4.0f, 4.0f), std::clamp(2.0f * room[1], -4.0f, 4.0f)};
}

}  // namespace reference
