// Settings and notes of the benchmarks' instrument.
#include "bench/player.h"

#include <utility>

#include "bench/bench_support.h"

namespace bench {

Player::Player(std::unique_ptr<engine::SoundEngine> engine)
    : instrument_(std::make_unique<instrument::Instrument>(host_, std::move(engine))) {
    instrument_->start(kRate);
    instrument_->resume();
}

void Player::useEverything() {
    using namespace state;
    for (int index = kViola; index <= kCello; ++index) set(index, 0.5f);
    for (int index = kViola2; index <= kCello2; ++index) set(index, 1.0f);
    set(kVoiceCountParam, 1.0f);
    set(kConfigs, 1.0f);
    set(kEnvAttack, 0.1f);
    set(kChorus, 1.0f);
    set(kPhaser, 1.0f);
    set(kStages, 0.8f);
    set(kReverb, 1.0f);
    set(kSpring, 0.5f);
}

void Player::press(int count) {
    for (int i = 0; i < count; ++i) noteOn(40 + i);
}

void Player::release(int count) {
    for (int i = 0; i < count; ++i) noteOff(40 + i);
}

void Player::send(int status, int key, int velocity) {
    const std::uint8_t message[] = {static_cast<std::uint8_t>(status),
                                    static_cast<std::uint8_t>(key),
                                    static_cast<std::uint8_t>(velocity)};
    instrument_->addMessage(0, message);
    float left[1], right[1];
    render(left, right, 1);
}

}  // namespace bench
