// Length and clearing of the ring.
#include "tests/reference/delay_b.h"

#include <algorithm>

namespace reference {

void DelayB::setLength(int samples) {
    length_ = std::clamp(samples, 1, kCapacity);
    if (index_ >= length_) index_ = 0;
}

void DelayB::clear() {
    buffer_.fill(0.0f);
    index_ = 0;
}

}  // namespace reference
