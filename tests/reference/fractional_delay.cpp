// Memory and read position of the fractional delay line.
#include "tests/reference/fractional_delay.h"

#include <algorithm>

#include "dsp/denormal.h"

namespace reference {

FractionalDelay::FractionalDelay(float delaySamples, int capacity)
    : size_(std::max(capacity, 0) + 1), buffer_(size_, dsp::kDelayFill) {
    setDelay(delaySamples);
}

void FractionalDelay::setCapacity(int samples) {
    size_ = std::clamp(samples + 1, 1, static_cast<int>(buffer_.size()));
    delay_ = std::min(delay_, static_cast<float>(size_ - 1));
    reset();
}

void FractionalDelay::setDelay(float delaySamples) {
    const bool inRange = delaySamples >= 0.0f && delaySamples <= static_cast<float>(size_);
    if (!inRange) return;
    delay_ = std::min(delaySamples, static_cast<float>(size_ - 1));
    float position = static_cast<float>(writeIndex_) - delay_;
    while (position < 0.0f) position += static_cast<float>(size_);
    readIndex_ = static_cast<int>(position);
    frac_ = position - static_cast<float>(readIndex_);
    oneMinusFrac_ = 1.0f - frac_;
    // For a tiny delay the sum above rounds up to the ring's size.
    if (readIndex_ >= size_) readIndex_ -= size_;
}

void FractionalDelay::clear() {
    std::fill(buffer_.begin(), buffer_.end(), dsp::kDelayFill);
}

void FractionalDelay::reset() {
    clear();
    writeIndex_ = 0;
    setDelay(delay_);
}

}  // namespace reference
