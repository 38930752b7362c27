// Memory and read position of the fractional delay line.
#include "dsp/fractional_delay.h"

#include <algorithm>
#include <array>

#include "dsp/denormal.h"
#include "dsp/kernels.h"

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
    const float size = static_cast<float>(size_);
    bool inRange = true;
    for (int i = 0; i < count; ++i) inRange &= delays[i] >= 0.0f && delays[i] <= size;
    if (!inRange) {
        for (int i = 0; i < count; ++i) {
            setDelay(delays[i]);
            signal[i] = tick(signal[i]);
        }
        return;
    }
    // As setDelay: all positions first, which takes no turns and goes side by side.
    std::array<int, kMostFrames> index;
    std::array<float, kMostFrames> frac;
    for (int i = 0; i < count; ++i) {
        int write = writeIndex_ + i;
        write = write >= size_ ? write - size_ : write;
        float position = static_cast<float>(write) - std::min(delays[i], size - 1.0f);
        position = position < 0.0f ? position + size : position;
        const int whole = static_cast<int>(position);
        frac[i] = position - static_cast<float>(whole);
        index[i] = whole >= size_ ? whole - size_ : whole;
    }
    for (int i = 0; i < count; ++i) {
        put(signal[i]);
        const int next = index[i] + 1 == size_ ? 0 : index[i] + 1;
        const float output = buffer_[index[i]] * (1.0f - frac[i]) + buffer_[next] * frac[i];
        signal[i] = withoutOffset(output);
    }
    delay_ = std::min(delays[count - 1], size - 1.0f);
    readIndex_ = index[count - 1] + 1 == size_ ? 0 : index[count - 1] + 1;
    frac_ = frac[count - 1];
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
