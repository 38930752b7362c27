// Memory and settings of the reverb's lines.
#include "tests/reference/reverb_lines.h"

#include <algorithm>

namespace reference {

void ReverbRing::setSize(int samples) {
    size_ = std::clamp(samples, 1, kReverbCapacity);
    if (index_ >= size_) index_ = 0;
}

void ReverbRing::clear() {
    std::fill_n(buffer_.begin(), size_, 0.0f);
}

ReverbComb::ReverbComb() {
    dcBlocker_.setTime(0.0f);  // switches its high-pass on
}

void ReverbComb::setDamp(float damp) {
    damp1_ = damp;
    damp2_ = 1.0f - damp;
}

void ReverbComb::clear() {
    ring_.clear();
    filterStore_ = 0.0f;
    dcBlocker_.clear();
}

}  // namespace reference
