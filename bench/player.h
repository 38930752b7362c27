// One instance of the instrument, played as by a host.
#pragma once

#include <memory>

#include "engine/sound_engine.h"
#include "instrument/instrument.h"

namespace bench {

class Player {
  public:
    explicit Player(std::unique_ptr<engine::SoundEngine> engine);

    void set(int index, float value) { instrument_->setParameter(index, value); }
    // Switches on every section and effect, with a short attack and a slow release.
    void useEverything();

    // `count` keys from 40 on.
    void press(int count);
    void release(int count);
    void noteOn(int key) { send(0x90, key, 100); }
    void noteOff(int key) { send(0x80, key, 0); }

    void render(float* left, float* right, int frames) { instrument_->render(left, right, frames); }

  private:
    void send(int status, int key, int velocity);

    instrument::Host host_;
    std::unique_ptr<instrument::Instrument> instrument_;
};

}  // namespace bench
