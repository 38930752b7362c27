// The names by which hosts know the plug-in and what belongs to it. Saved songs contain them.
#pragma once

#define QUARZEL_LV2_URI "https://tembrilon.com/QuarzelStrings"

namespace lv2 {

inline constexpr char kPluginUri[] = QUARZEL_LV2_URI;
inline constexpr char kUiUri[] = QUARZEL_LV2_URI "#ui";

// What a saved state and a preset contain.
inline constexpr char kStateKey[] = QUARZEL_LV2_URI "#state";      // chunk, see state/saved_state.h
inline constexpr char kPortsKey[] = QUARZEL_LV2_URI "#ports";      // vector of floats
inline constexpr char kProgramKey[] = QUARZEL_LV2_URI "#program";  // integer, 0..127

}  // namespace lv2
