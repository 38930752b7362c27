// Memory and read position of the fractional delay line.
#include "dsp/fractional_delay.h"

#include <algorithm>

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
    // For a tiny delay the sum above rounds up to the ring's size.
    if (readIndex_ >= size_) readIndex_ -= size_;
}

void FractionalDelay::read(float* out, int count) {
    bool sensitive = false;
    for (int from = 0; from < count;) {
        const int straight = std::min(count - from, size_ - 1 - readIndex_);
        sensitive |= kernels_.readLine(&buffer_[readIndex_], frac_, straight, out + from);
        readIndex_ += straight;
        from += straight;
        if (from == count) break;
        out[from++] = takeRaw();
        sensitive = true;
    }
    if (sensitive) removeOffsets(out, count);
}

void FractionalDelay::write(const float* in, int count) {
    while (count > 0) {
        const int straight = std::min(count, size_ - writeIndex_);
        float* const line = &buffer_[writeIndex_];
        if (kernels_.writeLine(in, straight, line)) {
            for (int i = 0; i < straight; ++i) line[i] = withOffset(in[i]);
        }
        writeIndex_ += straight;
        if (writeIndex_ == size_) writeIndex_ = 0;
        in += straight;
        count -= straight;
    }
}

void FractionalDelay::removeOffsets(float* out, int count) {
    for (int i = 0; i < count; ++i) out[i] = withoutOffset(out[i]);
}

bool FractionalDelay::place(const float* delays, float shortest, int count, Places& places) const {
    places.kind = kernels_.placeTaps(
        {delays, shortest, writeIndex_, size_, count, places.index.data(), places.fraction.data()});
    return places.kind != TapPlaces::kUnfit;
}

void FractionalDelay::sweep(const float* delays, const float* in, float* out, int count) {
    Places places;
    if (!place(delays, 1.0f, count, places)) {
        for (int i = 0; i < count; ++i) {
            setDelay(delays[i]);
            out[i] = tick(in[i]);
        }
        return;
    }
    write(in, count);
    readPlaced(delays, places, out, count);
}

void FractionalDelay::readPlaced(const float* delays, Places& places, float* out, int count) {
    int* const index = places.index.data();
    float* const fraction = places.fraction.data();
    if (places.kind == TapPlaces::kScattered) {
        for (int i = 0; i < count; ++i) {
            const float here = buffer_[index[i]];
            const float there = buffer_[following(index[i])];
            out[i] = here * (1.0f - fraction[i]) + there * fraction[i];
        }
        removeOffsets(out, count);
    } else if (kernels_.readTaps(buffer_.data(), index, fraction, count, out)) {
        removeOffsets(out, count);
    }
    const int last = count - 1;
    delay_ = delays[last];
    readIndex_ = following(index[last]);
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
