// Parameter values as plain quantities and as texts with units, by the laws of the table.
#pragma once

#include <optional>
#include <string>

#include "state/parameters.h"

namespace state {

// `index` must be a parameter; values are limited to 0..1.

// The quantity in the unit of the law, or the position in its list.
double plainValue(int index, float value);
// The value that comes closest.
float valueFromPlain(int index, double plain);

// A value from a host that counts 0..1 in 64 bits: steps of a list come out as their positions.
float valueFromNormalized(int index, double normalized);

// "0.62 s", "98 Hz", "-6.0 dB", "C3", "Bowed", "On". UTF-8.
std::string plainText(int index, float value);
// Reads such a text back, also without its unit, in another of its kind ("620 ms") or with a
// decimal comma, in any case. Nothing when it means no value; what lies beyond an end is that end.
std::optional<float> valueFromText(int index, const std::string& text);

// "C3" for key 60, middle C.
std::string keyText(int key);

}  // namespace state
