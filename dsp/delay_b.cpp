// Length and clearing of the ring.
#include "dsp/delay_b.h"

#include <algorithm>

namespace dsp {

void DelayB::setLength(int samples) {
    length_ = std::clamp(samples, 1, kCapacity);
    if (index_ >= length_) index_ = 0;
}

void DelayB::exchange(float* signal, int count) {
    const int straight = std::min(count, length_ - index_);
    std::swap_ranges(signal, signal + straight, &buffer_[index_]);
    std::swap_ranges(signal + straight, signal + count, buffer_.data());
    index_ = straight < count ? count - straight : index_ + straight;
    if (index_ == length_) index_ = 0;
}

void DelayB::clear() {
    buffer_.fill(0.0f);
    index_ = 0;
}

}  // namespace dsp
