// The ports, and parameter values as they stand in them: plain quantities in 32 bits.
#pragma once

#include <cstdint>

#include "state/parameters.h"

namespace lv2 {

// Ports 0..41 are the parameters. Hosts save ports by their symbols, and some by their indices.
enum Port : std::uint32_t {
    kEnabledPort = state::kNumParams,
    kMidiPort,
    kLeftPort,
    kRightPort,
    kPortCount
};

constexpr bool isParameterPort(std::uint32_t port) {
    return port < state::kNumParams;
}

// Of a parameter's port.
const char* portSymbol(int index);

// Times are in milliseconds: hosts write ports with eight decimals.
constexpr double portUnitsPer(state::Unit unit) {
    return unit == state::Unit::kSeconds ? 1000.0 : 1.0;
}

// What the port of a parameter shows at this value.
float portValue(int index, float value);
// The value that a port means. Values of three decimals, as the factory bank has them, come back
// to the bit.
float valueAtPort(int index, float port);
// Whether the parameter needs not move for the port to be right: both are at the same position, or
// closer than hosts write numbers.
bool standsAt(int index, float port, float value);

}  // namespace lv2
