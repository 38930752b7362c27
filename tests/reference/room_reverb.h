// The room: per side, eight damped feedback combs side by side and four allpasses in a row.
#pragma once

#include <array>

#include "dsp/denormal.h"
#include "dsp/smoother.h"
#include "tests/reference/ensemble_chorus.h"

namespace reference {

// Ring that flushes denormals as it is read.
class ReverbRing {
  public:
    void setSize(int samples) { size_ = samples; }
    void clear() { buffer_.fill(0.0f); }
    float read() const { return dsp::flushed(buffer_[index_]); }
    void write(float x) {
        buffer_[index_] = x;
        if (++index_ == size_) index_ = 0;
    }

  private:
    int size_ = 1;
    int index_ = 0;
    std::array<float, 1640> buffer_{};
};

class RoomReverb {
  public:
    RoomReverb() {
        left_.setSizes({666, 938, 1121, 1356, 1422, 1491, 1557, 1617}, {556, 441, 341, 225});
        right_.setSizes({1139, 1211, 1300, 1379, 1445, 1514, 1580, 1640}, {579, 464, 364, 248});
    }

    void setRoomSize(float feedback) { feedback_ = feedback; }
    void setDamp(float damp) { damp_ = damp; }
    void setLevels(float wet, float dry) {
        wet_ = wet;
        dry_ = dry;
    }
    // The loops' filters keep their states.
    void mute() {
        for (Side* side : {&left_, &right_}) {
            for (ReverbRing& ring : side->combs) ring.clear();
            for (ReverbRing& ring : side->allpasses) ring.clear();
        }
    }
    void clear() {
        mute();
        for (Side* side : {&left_, &right_}) {
            side->stores.fill(0.0f);
            for (dsp::Smoother& blocker : side->dcBlockers) blocker.clear();
        }
    }

    StereoSample tick(StereoSample in) {
        const float x = (in.left + in.right) * 0.015f;
        const float left = tickSide(left_, x);
        const float right = tickSide(right_, x);
        const float outLeft = left * (0.75f * wet_) + right * (0.25f * wet_) + in.left * dry_;
        // intentional: the right side takes the finished left output, dry part included
        return {outLeft, right * (0.75f * wet_) + outLeft * (0.25f * wet_) + in.right * dry_};
    }

  private:
    struct Side {
        std::array<ReverbRing, 8> combs;
        std::array<float, 8> stores{};
        std::array<dsp::Smoother, 8> dcBlockers;
        std::array<ReverbRing, 4> allpasses;

        void setSizes(const std::array<int, 8>& longs, const std::array<int, 4>& shorts) {
            for (std::size_t i = 0; i < 8; ++i) combs[i].setSize(longs[i]);
            for (std::size_t i = 0; i < 4; ++i) allpasses[i].setSize(shorts[i]);
            for (dsp::Smoother& blocker : dcBlockers) blocker.setTime(0.0f);  // high-pass on
        }
    };
    float tickSide(Side& side, float x) {
        float sum = 0.0f;
        for (std::size_t i = 0; i < 8; ++i) {
            const float y = side.combs[i].read();
            const float low = dsp::flushed(y * (1.0f - damp_) + side.stores[i] * damp_);
            side.stores[i] = side.dcBlockers[i].highPass(low);
            side.combs[i].write(x + side.stores[i] * feedback_);
            sum += y;
        }
        for (ReverbRing& ring : side.allpasses) {
            const float delayed = ring.read();
            ring.write(0.5f * delayed + sum);
            sum = delayed - 0.5f * sum;
        }
        return sum;
    }

    float feedback_ = 0.84f;
    float damp_ = 0.32f;
    float wet_ = 1.0f;
    float dry_ = 0.0f;
    Side left_;
    Side right_;
};

}  // namespace reference
