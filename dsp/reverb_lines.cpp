// Memory, settings and rendering of the reverb's lines.
#include "dsp/reverb_lines.h"

namespace dsp {

template <int kCapacity>
void ReverbRing<kCapacity>::read(float* out, int count) const {
    const int straight = std::min(count, size_ - index_);
    std::copy_n(&buffer_[index_], straight, out);
    std::copy_n(buffer_.data(), count - straight, out + straight);
}

template <int kCapacity>
void ReverbRing<kCapacity>::write(const float* in, int count) {
    const int straight = std::min(count, size_ - index_);
    std::copy_n(in, straight, &buffer_[index_]);
    std::copy_n(in + straight, count - straight, buffer_.data());
    index_ = straight < count ? count - straight : index_ + straight;
    if (index_ == size_) index_ = 0;
}

void ReverbCombs::setDamp(float damp) {
    lanes_.damp1 = damp;
    lanes_.damp2 = 1.0f - damp;
}

void ReverbCombs::mute() {
    for (auto& ring : rings_) ring.clear();
}

void ReverbCombs::clear() {
    mute();
    lanes_.filterStore.fill(0.0f);
    lanes_.offset.fill(0.0f);
}

// The kernels work in the rings themselves. A ring that wraps within the run goes through a copy.
void ReverbCombs::sum(Run& run, int frames, float* left, float* right) {
    run.frames = frames;
    for (int comb = 0; comb < CombLanes::kCount; ++comb) {
        int straight;
        run.rows[comb] = rings_[comb].run(frames, straight);
        run.copied[comb] = straight < frames || frames % kMostLanes != 0;
        if (!run.copied[comb]) continue;
        float* const copy = &run.copies[comb * Run::kStride];
        run.rows[comb] = copy;
        rings_[comb].read(copy, frames);
        std::fill(copy + frames, copy + Run::kStride, 0.0f);
    }
    kernels_.sumCombs({run.rows.data(), left, right, frames});
}

void ReverbCombs::feed(Run& run, const float* in, const BesideCombs& beside) {
    kernels_.runCombs({lanes_, in, run.rows.data(), beside, run.frames});
    for (int comb = 0; comb < CombLanes::kCount; ++comb) {
        if (run.copied[comb]) {
            rings_[comb].write(run.rows[comb], run.frames);
        } else {
            rings_[comb].advance(run.frames);
        }
    }
}

void ReverbAllpass::render(float* signal, int frames) {
    while (frames > 0) {
        int count;
        float* const line = ring_.run(frames, count);
        kernels_.runAllpass(line, signal, count, kGain);
        ring_.advance(count);
        signal += count;
        frames -= count;
    }
}

}  // namespace dsp
