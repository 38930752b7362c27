// Memory and read position of the fractional delay line.
#include "dsp/fractional_delay.h"

#include <algorithm>
#include <array>

#include "dsp/denormal.h"

namespace dsp {

FractionalDelay::FractionalDelay(float delaySamples, int capacity)
    : FractionalDelay(delaySamples, capacity, capacity) {}

FractionalDelay::FractionalDelay(float delaySamples, int capacity, int highestCapacity)
    : size_(std::max(capacity, 0) + 1), buffer_(std::max(highestCapacity + 1, size_)) {
    clear();
    setDelay(delaySamples);
}

void FractionalDelay::setCapacity(int samples) {
    size_ = std::clamp(samples + 1, 1, buffer_.size());
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
    // A delay next to nothing rounds up to the end of the ring.
    if (readIndex_ >= size_) readIndex_ -= size_;
}

void FractionalDelay::read(float* out, int count) {
    for (int i = 0; i < count; ++i) out[i] = take();
}

void FractionalDelay::write(const float* in, int count) {
    for (int i = 0; i < count; ++i) put(in[i]);
}

void FractionalDelay::sweep(const float* delays, float* signal, int count) {
    constexpr int kRoom = kMostFrames + 8;
    std::array<int, kRoom> index, next;
    std::array<float, kRoom> fraction;
    const bool placed =
        size_ >= count && kernels_.placeTaps({delays, writeIndex_, size_, count, index.data(),
                                              next.data(), fraction.data()});
    if (!placed) {
        for (int i = 0; i < count; ++i) {
            setDelay(delays[i]);
            signal[i] = tick(signal[i]);
        }
        return;
    }
    for (int i = 0; i < count; ++i) {
        put(signal[i]);
        const float output =
            buffer_[index[i]] * (1.0f - fraction[i]) + buffer_[next[i]] * fraction[i];
        signal[i] = withoutOffset(output);
    }
    const int last = count - 1;
    delay_ = std::min(delays[last], static_cast<float>(size_ - 1));
    readIndex_ = next[last];
    frac_ = fraction[last];
    oneMinusFrac_ = 1.0f - frac_;
}

void FractionalDelay::clear() {
    std::fill_n(buffer_.data(), size_, kDelayFill);
}

void FractionalDelay::reset() {
    clear();
    writeIndex_ = 0;
    setDelay(delay_);
}

}  // namespace dsp
