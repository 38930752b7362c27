// The widest vector of any instruction set. Rows leave room for one, and states are aligned to it.
#pragma once

namespace dsp {

constexpr int kMostLanes = 16;
constexpr int kVectorBytes = kMostLanes * static_cast<int>(sizeof(float));

}  // namespace dsp
