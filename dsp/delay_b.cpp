// Length and clearing of the ring.
#include "dsp/delay_b.h"

#include <algorithm>

namespace dsp {

namespace {
constexpr int kInitialLength = 512;
}

DelayB::DelayB(int capacity)
    : length_(std::min(kInitialLength, capacity)), used_(length_), buffer_(capacity) {}

void DelayB::setLength(int samples) {
    length_ = std::clamp(samples, 1, buffer_.size());
    used_ = std::max(used_, length_);
    if (index_ >= length_) index_ = 0;
}

void DelayB::clear() {
    std::fill_n(buffer_.data(), used_, 0.0f);
    used_ = length_;
    index_ = 0;
}

}  // namespace dsp
