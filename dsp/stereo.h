// Left and right in one vector register: both sides cost as much as one. Blocks that are templates
// of their sample type accept these types in place of a number.
#pragma once

#include <cmath>
#ifdef __SSE__
#include <xmmintrin.h>
#endif

#include "dsp/denormal.h"

namespace dsp {

typedef float StereoFloat __attribute__((vector_size(16)));  // left, right, and two idle lanes
typedef double StereoDouble __attribute__((vector_size(16)));
typedef int StereoMask __attribute__((vector_size(16)));  // all bits of a lane set, or 0

inline StereoFloat stereo(float left, float right) {
    return StereoFloat{left, right, 0.0f, 0.0f};
}
inline StereoDouble widened(StereoFloat x) {
    return StereoDouble{x[0], x[1]};
}

inline float magnitude(float x) {
    return std::fabs(x);
}
inline double magnitude(double x) {
    return std::fabs(x);
}
inline StereoFloat magnitude(StereoFloat x) {
    return (StereoFloat)((StereoMask)x & 0x7FFFFFFF);
}
inline StereoDouble magnitude(StereoDouble x) {
    typedef long long Words __attribute__((vector_size(16)));
    return (StereoDouble)((Words)x & 0x7FFFFFFFFFFFFFFF);
}

// Within -bound .. bound; NaN stays.
inline float bounded(float x, float bound) {
    const float raised = x < -bound ? -bound : x;
    return raised > bound ? bound : raised;
}
inline StereoFloat bounded(StereoFloat x, float bound) {
    const StereoFloat top = StereoFloat{} + bound;
#ifdef __SSE__
    return (StereoFloat)_mm_min_ps((__m128)top, _mm_max_ps((__m128)-top, (__m128)x));
#else
    const StereoFloat raised = x < -top ? -top : x;
    return raised > top ? top : raised;
#endif
}

// `size` (0 or more) with the sign of `sign`.
inline double withSign(double size, double sign) {
    return std::copysign(size, sign);
}
inline StereoDouble withSign(StereoDouble size, StereoDouble sign) {
    typedef long long Words __attribute__((vector_size(16)));
    return (StereoDouble)((Words)size | ((Words)sign & ~0x7FFFFFFFFFFFFFFF));
}

// Lanes whose mask is 0 become +0.
inline StereoFloat masked(StereoFloat x, StereoMask mask) {
    return (StereoFloat)((StereoMask)x & mask);
}

inline StereoFloat flushed(StereoFloat x) {
    return masked(x, ((StereoMask)x & 0x7F800000) != 0);
}

inline StereoFloat select(StereoMask mask, StereoFloat yes, StereoFloat no) {
    return (StereoFloat)(((StereoMask)yes & mask) | ((StereoMask)no & ~mask));
}

}  // namespace dsp
