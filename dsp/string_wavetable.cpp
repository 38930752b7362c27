// Builds the bowed-string cycle from knots, and the columns from its Fourier series.
#include "dsp/string_wavetable.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <iterator>

namespace dsp {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kNumHarmonics = kCyclePoints / 2 - 1;

// The slip: the string leaves the bow and flies back in eight steps.
constexpr double kSlip[] = {-0.004425, -0.420515, -0.709494, -0.853633, -0.926786,
                            -0.970244, -0.989959, -0.996399, -0.994385};
constexpr double kLastPoint = 0.017762;

// The rest of the cycle, where the bow carries the string: a monotone rise, a rounded top, and the
// start of the next slip.
struct Knot {
    double row;
    double value;
    double slope;  // per row
};
constexpr Knot kStick[] = {
    {8.0, -0.994385, 0.003},         // the last point of the slip
    {40.0, -0.84, 0.0056},           // the string now moves with the bow
    {330.0, 0.88, 0.0056},           // up to here
    {374.0, 0.995, 0.0},             // top
    {399.0, kLastPoint, -0.022187},  // meets the repeat of the first point
};

double hermite(const Knot& from, const Knot& to, double row) {
    const double width = to.row - from.row;
    const double t = (row - from.row) / width;
    const double t2 = t * t;
    const double t3 = t2 * t;
    return (2.0 * t3 - 3.0 * t2 + 1.0) * from.value + (t3 - 2.0 * t2 + t) * width * from.slope +
           (3.0 * t2 - 2.0 * t3) * to.value + (t3 - t2) * width * to.slope;
}

// Loudest allowed image that folds back below kCleanHz, against a fundamental of amplitude 1.
constexpr double kImageLevel = 8e-5;
constexpr double kBend = 1.122462048309373;  // two semitones

// The share (0..1) of a harmonic that the column of a fundamental `hz` keeps. `amplitude` is that
// of the harmonic.
double keptShare(int harmonic, double amplitude, double hz) {
    constexpr double kRate = StringWavetable::kDesignRate;
    constexpr double kClean = StringWavetable::kCleanHz;
    // A partial from here on folds back below kClean.
    const double foldHz = kRate - kClean;
    const double bentHz = hz * kBend;
    // Full below kClean, nothing above the fold, a raised cosine in between.
    const double t = (harmonic * hz - kClean) / (foldHz / kBend - kClean);
    if (t >= 1.0) return 0.0;
    const double share = t <= 0.0 ? 1.0 : 0.5 + 0.5 * std::cos(kPi * t);
    // Linear interpolation leaves images at 400 m - h and 400 m + h, each (h / image)^2 of its
    // harmonic h. The lowest one that folds back is the loudest.
    double image = kCyclePoints - harmonic;
    for (int m = 1; image * bentHz < foldHz; ++m) {
        image = kCyclePoints * m + harmonic;
        if (image * bentHz >= foldHz) break;
        image = kCyclePoints * (m + 1) - harmonic;
    }
    const double ratio = harmonic / image;
    return std::min(share, kImageLevel / (ratio * ratio * amplitude));
}

}  // namespace

WaveCycle rawStringCycle() {
    WaveCycle cycle;
    std::copy(std::begin(kSlip), std::end(kSlip), cycle.begin());
    const Knot* knot = kStick;
    for (int row = static_cast<int>(std::size(kSlip)); row < kCyclePoints; ++row) {
        while (row > knot[1].row) ++knot;
        cycle[static_cast<std::size_t>(row)] = static_cast<float>(hermite(knot[0], knot[1], row));
    }
    cycle.back() = cycle.front();
    return cycle;
}

const std::array<double, kNumNotes>& noteFrequencies() {
    static const std::array<double, kNumNotes> frequencies = [] {
        std::array<double, kNumNotes> f{};
        f[0] = 8.175798915636872;
        for (std::size_t n = 1; n < f.size(); ++n) f[n] = f[n - 1] * 1.059463094359;
        return f;
    }();
    return frequencies;
}

const StringWavetable& StringWavetable::shared() {
    static const StringWavetable table;
    return table;
}

StringWavetable::StringWavetable() {
    // One turn in 400 steps; every angle below is a multiple of one step.
    std::array<std::complex<double>, kCyclePoints> turn;
    for (std::size_t i = 0; i < turn.size(); ++i) {
        turn[i] = std::polar(1.0, 2.0 * kPi * static_cast<double>(i) / kCyclePoints);
    }

    const WaveCycle raw = rawStringCycle();
    std::array<std::complex<double>, kNumHarmonics + 1> series{};
    for (std::size_t h = 1; h < series.size(); ++h) {
        for (std::size_t i = 0; i < kCyclePoints; ++i) {
            series[h] += std::conj(turn[h * i % kCyclePoints]) * (2.0 / kCyclePoints * raw[i]);
        }
    }

    const double fundamental = std::abs(series[1]);
    for (int note = 0; note < kNumNotes; ++note) {
        const double hz = noteFrequencies()[static_cast<std::size_t>(note)];
        std::array<double, kCyclePoints> sum{};
        for (std::size_t h = 1; h < series.size(); ++h) {
            const double amplitude = std::abs(series[h]) / fundamental;
            const double share = keptShare(static_cast<int>(h), amplitude, hz);
            if (share == 0.0) break;
            const std::complex<double> term = series[h] * share;
            for (std::size_t i = 0; i < kCyclePoints; ++i) {
                const std::complex<double>& unit = turn[h * i % kCyclePoints];
                sum[i] += term.real() * unit.real() - term.imag() * unit.imag();
            }
        }
        WaveCycle& column = columns_[static_cast<std::size_t>(note)];
        std::copy(sum.begin(), sum.end(), column.begin());
        column.back() = column.front();
    }
}

}  // namespace dsp
