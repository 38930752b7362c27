// Measures loudness with libebur128.
#include "render/loudness.h"

#include <cmath>
#include <new>

#include <ebur128.h>

namespace render {

struct Loudness::Analysis {
    // The histogram keeps the memory constant, however long the song.
    Analysis(int channels, int sampleRate)
        : state(ebur128_init(static_cast<unsigned>(channels),
                             static_cast<unsigned long>(sampleRate),
                             EBUR128_MODE_I | EBUR128_MODE_HISTOGRAM)) {
        if (!state) throw std::bad_alloc();
    }
    ~Analysis() { ebur128_destroy(&state); }
    Analysis(const Analysis&) = delete;
    Analysis& operator=(const Analysis&) = delete;

    ebur128_state* state;
};

bool canMeasureLoudness() {
    return true;
}

Loudness::Loudness(int channels, int sampleRate)
    : analysis_(std::make_unique<Analysis>(channels, sampleRate)) {}

Loudness::~Loudness() = default;

void Loudness::hear(const float* samples, std::size_t frames) {
    ebur128_add_frames_float(analysis_->state, samples, frames);
}

std::optional<double> Loudness::lufs() const {
    double loudness = -HUGE_VAL;
    ebur128_loudness_global(analysis_->state, &loudness);
    return loudness;
}

}  // namespace render
