// The rule, port by port.
#include "plugin/lv2/port_watch.h"

#include <algorithm>
#include <cmath>

#include "plugin/lv2/ports.h"

namespace lv2 {

namespace {
constexpr double kPatienceSeconds = 1.0;
}  // namespace

void PortWatch::start(int index, float port) {
    seen_[index] = known_[index] = port;
}

void PortWatch::beginBlock(int frames, double sampleRate) {
    frames_ = frames;
    patience_ = static_cast<int>(kPatienceSeconds * sampleRate);
}

bool PortWatch::moved(int index, float port) {
    if (std::isnan(port)) return false;
    const bool still = port == seen_[index];
    int left = framesLeft_[index];
    if (left == kArrived) {
        if (still) return false;
        seen_[index] = known_[index] = port;
        return true;
    }
    const float told = known_[index];
    const bool arrived =
        port == told || (!still && standsAt(index, port, valueAtPort(index, told)));
    if (arrived) seen_[index] = port;
    const int from = left == kJustTold ? patience_ : left;
    // Unless somebody has told another value meanwhile.
    framesLeft_[index].compare_exchange_strong(left,
                                               arrived ? kArrived : std::max(from - frames_, 0));
    return false;
}

void PortWatch::expect(int index, float port) {
    known_[index] = port;
    framesLeft_[index] = kJustTold;
}

bool PortWatch::isBehind(int index, float value) const {
    return framesLeft_[index] == kArrived && !standsAt(index, known_[index], value);
}

}  // namespace lv2
