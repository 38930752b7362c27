// The spring loop and the room.
#include "engine/spring_reverb.h"

#include <algorithm>

namespace engine {

namespace {
constexpr double kSpringSeconds = 0.09090909090909091;  // 1 / 11
constexpr double kSpringCapacitySeconds = 0.125;
constexpr float kSpringThreshold = 0.1f;
constexpr float kLargeRoom = 0.7f;

// A strong spring also controls the room.
constexpr bool isStrong(float spring) {
    return spring > 0.3f;
}
}  // namespace

SpringReverb::SpringReverb(double highestRate)
    : springLine_(static_cast<float>(sampleRate_ * kSpringSeconds),
                  static_cast<int>(sampleRate_ * kSpringCapacitySeconds),
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

void SpringReverb::set(const ReverbSettings& settings) {
    settings_ = settings;
    updateLevels();
    updateDamping();
    updateRoom();
    tuneSpring();
}

void SpringReverb::setMix(float mix) {
    settings_.mix = mix;
    updateLevels();
}

void SpringReverb::setSize(float size) {
    settings_.size = size;
    updateRoom();
}

void SpringReverb::setBrite(float brite) {
    settings_.brite = brite;
    updateDamping();
}

void SpringReverb::setSpring(float amount) {
    settings_.spring = amount;
    updateLevels();
    updateDamping();
    if (isStrong(amount)) updateRoom();
    tuneSpring();
}

void SpringReverb::updateLevels() {
    reverb_.setWet((2.0f - settings_.spring) * settings_.mix * 3.0f);
    reverb_.setDry(1.0f - settings_.mix);
    reverb_.update();
}

void SpringReverb::updateDamping() {
    reverb_.setDamp((1.0f - settings_.brite) * 0.4f + settings_.spring * 0.1f);
    reverb_.update();
}

// With a strong spring the room never exceeds kLargeRoom, and it takes that size as soon as spring
// or size exceed it.
void SpringReverb::updateRoom() {
    const bool large =
        isStrong(settings_.spring) && std::max(settings_.spring, settings_.size) > kLargeRoom;
    reverb_.setRoomSize((large ? kLargeRoom : settings_.size) * 0.28f + 0.7f);
    reverb_.update();
}

void SpringReverb::tuneSpring() {
    springFilter_.setCoefficient(
        dsp::cornerCoefficient(settings_.spring * 1200.0 + 2900.0, sampleRate_));
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

bool SpringReverb::springs() const {
    return settings_.spring > kSpringThreshold;
}

void SpringReverb::addSpring(StereoSignal& signal, int frames, Signal& side) {
    Signal spring;
    springLine_.read(spring.data(), frames);
    kernels_.enterSpring({spring.data(), settings_.mix, settings_.spring, signal.left.data(),
                          signal.right.data(), side.data(), frames});
}

void SpringReverb::render(Run& run, StereoSignal& signal, int frames) {
    if (!on_) return;
    if (springs()) addSpring(signal, frames, run.side);
    StereoSignal room;
    float* const left = signal.left.data();
    float* const right = signal.right.data();
    reverb_.render(run.room, left, right, frames, room.left.data(), room.right.data());
    run.feedback[0] = feedback_ * 0.9f;
    feedback_ = kernels_.leaveRoom(
        {room.left.data(), room.right.data(), left, right, run.feedback.data(), frames});
}

void SpringReverb::feed(Run& run, dsp::PeakFollower& follower, double* levels, int frames) {
    if (!on_) {
        for (int t = 0; t < frames; ++t) levels[t] = follower.tick(levels[t]);
        return;
    }
    dsp::OnePole filter = springFilter_;
    reverb_.feed(run.room, {filter, run.feedback.data(), follower, levels});
    if (!springs()) return;
    springFilter_ = filter;
    Signal in;
    for (int t = 0; t < frames; ++t) {
        in[t] = (run.feedback[t] * 0.5f + run.side[t]) * settings_.spring;
    }
    springLine_.write(in.data(), frames);
}

}  // namespace engine
