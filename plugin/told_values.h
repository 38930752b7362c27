// What a host has said last of parameters and program, or has been told: what it is not out of date
// about.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "instrument/instrument.h"

namespace plugin {

// Any thread.
class ToldValues {
  public:
    // Takes all that the instrument has.
    void take(const instrument::Instrument& instrument);

    void set(int index, float value) { values_[index] = value; }
    float value(int index) const { return values_[index]; }
    // One bit per parameter that has another value now; takes those values.
    std::uint64_t takeChanged(const instrument::Instrument& instrument);

    void setProgram(int program) { program_ = program; }
    // Whether another program is current now; takes it.
    bool takeChangedProgram(const instrument::Instrument& instrument);

  private:
    std::array<std::atomic<float>, state::kNumParams> values_{};
    std::atomic<int> program_{0};
};

}  // namespace plugin
