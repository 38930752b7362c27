// Runs the stages of a chain in one loop, each a frame behind the one before.
#pragma once

namespace dsp {

// Calls stage(t) of every stage for t = from .. until - 1, in order, and for each t in the order of
// the stages. A recursive stage waits for its own last frame; in this loop no stage waits for
// another, and the processor fills the wait of one with the work of the others. Stages hand on
// what they compute in rows.
template <typename... Stages>
inline void stagger(int from, int until, const Stages&... stages) {
    constexpr int kBehind = sizeof...(Stages) - 1;
    for (int step = from; step < until + kBehind; ++step) {
        int t = step;
        if (step >= from + kBehind && step < until) {
            (stages(t--), ...);
            continue;
        }
        const auto visit = [&](const auto& stage) {
            if (t >= from && t < until) stage(t);
            --t;
        };
        (visit(stages), ...);
    }
}

}  // namespace dsp
