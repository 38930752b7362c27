// Which MIDI controller drives which parameter, shared by all instances of the process.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "state/parameters.h"

namespace state {

// One word a parameter: a controller number 0..127, or kUnbound. Several parameters may follow one
// controller. Read on the audio thread, written on any.
class ControllerMap {
  public:
    static constexpr std::int32_t kUnbound = -1;

    ControllerMap() {
        for (auto& entry : controllers_) entry = kUnbound;
    }

    std::int32_t controller(int parameter) const {
        return controllers_[parameter].load(std::memory_order_relaxed);
    }
    void bind(int parameter, std::int32_t controller) {
        controllers_[parameter].store(controller, std::memory_order_relaxed);
    }

  private:
    std::array<std::atomic<std::int32_t>, kNumParams> controllers_;
};

// The map of the process.
ControllerMap& controllerMap();

}  // namespace state
