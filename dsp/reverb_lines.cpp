// Settings and rendering of the reverb's combs.
#include "dsp/reverb_lines.h"

namespace dsp {

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

void ReverbCombs::begin(Run& run, int frames) {
    run.frames = frames;
    for (int comb = 0; comb < CombLanes::kCount; ++comb)
        run.rows[comb] = rings_[comb].begin(frames);
}

void ReverbCombs::feed(Run& run, const float* in, const BesideCombs& beside) {
    kernels_.runCombs({lanes_, in, run.rows.data(), beside, run.frames});
    for (auto& ring : rings_) ring.end(run.frames);
}

}  // namespace dsp
