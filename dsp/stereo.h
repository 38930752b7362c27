// Left and right side by side in one register, so that both cost as much as one; blocks that are
// templates of their sample type take it in place of a number.
#pragma once

#include <cmath>

#include "dsp/denormal.h"

namespace dsp {

typedef float StereoFloat __attribute__((vector_size(16)));  // left, right, and two idle lanes
typedef double StereoDouble __attribute__((vector_size(16)));

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
    typedef int Words __attribute__((vector_size(16)));
    return (StereoFloat)((Words)x & 0x7FFFFFFF);
}
inline StereoDouble magnitude(StereoDouble x) {
    typedef long long Words __attribute__((vector_size(16)));
    return (StereoDouble)((Words)x & 0x7FFFFFFFFFFFFFFF);
}

// `size`, which is not negative, with the sign of `sign`.
inline double withSign(double size, double sign) {
    return std::copysign(size, sign);
}
inline StereoDouble withSign(StereoDouble size, StereoDouble sign) {
    typedef long long Words __attribute__((vector_size(16)));
    return (StereoDouble)((Words)size | ((Words)sign & ~0x7FFFFFFFFFFFFFFF));
}

inline StereoFloat flushed(StereoFloat x) {
    typedef int Words __attribute__((vector_size(16)));
    return (StereoFloat)((Words)x & (((Words)x & 0x7F800000) != 0));
}

}  // namespace dsp
