// A limiter without look-ahead: the gain falls at once and rises exponentially.
#include "app/ceiling.h"

#include <algorithm>
#include <cmath>

namespace app {
namespace {

constexpr double kRecoverySeconds = 0.1;
// From here on, the gain counts as restored.
constexpr float kRestored = 0.9999f;

}  // namespace

Ceiling::Ceiling(int sampleRate)
    : recovery_(static_cast<float>(1.0 - std::exp(-1.0 / (kRecoverySeconds * sampleRate)))) {}

void Ceiling::hold(float& left, float& right) {
    const float peak = std::max(std::fabs(left), std::fabs(right));
    if (gain_ < 1.0f) {
        gain_ += (1.0f - gain_) * recovery_;
        if (gain_ > kRestored) gain_ = 1.0f;
    }
    if (peak * gain_ > 1.0f) gain_ = 1.0f / peak;
    left = std::clamp(left * gain_, -1.0f, 1.0f);
    right = std::clamp(right * gain_, -1.0f, 1.0f);
}

}  // namespace app
