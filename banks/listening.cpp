#include "banks/listening.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace banks {

namespace {

constexpr double kPi = 3.141592653589793;

// Direct form II, transposed.
struct Biquad {
    double b0, b1, b2, a1, a2;
    double s1 = 0.0, s2 = 0.0;

    double tick(double x) {
        const double y = b0 * x + s1;
        s1 = b1 * x - a1 * y + s2;
        s2 = b2 * x - a2 * y;
        return y;
    }
};

// The two filters of the K weighting, as the recommendation's analogue prototypes give them.
Biquad headFilter() {
    const double k = std::tan(kPi * 1681.974450955533 / kSampleRate);
    const double q = 0.7071752369554196;
    const double high = std::pow(10.0, 3.999843853973347 / 20.0);
    const double band = std::pow(high, 0.4996667741545416);
    const double a0 = 1.0 + k / q + k * k;
    return {(high + band * k / q + k * k) / a0, 2.0 * (k * k - high) / a0,
            (high - band * k / q + k * k) / a0, 2.0 * (k * k - 1.0) / a0,
            (1.0 - k / q + k * k) / a0};
}

Biquad lowCut() {
    const double k = std::tan(kPi * 38.13547087602444 / kSampleRate);
    const double q = 0.5003270373238773;
    const double a0 = 1.0 + k / q + k * k;
    return {1.0, -2.0, 1.0, 2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0};
}

// RBJ band-pass of unit gain at its centre, half an octave wide.
Biquad bandFilter(int band) {
    const double w = 2.0 * kPi * 62.0 * std::pow(2.0, 0.5 * band) / kSampleRate;
    const double alpha = std::sin(w) / (2.0 * 2.87);
    const double a0 = 1.0 + alpha;
    return {alpha / a0, 0.0, -alpha / a0, -2.0 * std::cos(w) / a0, (1.0 - alpha) / a0};
}

// Sums of both sides' weighted energy over steps of 0.1 s; the last may be short and is left out.
constexpr std::size_t kStep = frameAt(0.1);
std::vector<double> weightedSteps(const Take& take, std::size_t from, std::size_t to) {
    std::vector<double> steps((to - from) / kStep, 0.0);
    for (const auto* side : {&take.left, &take.right}) {
        Biquad head = headFilter();
        Biquad cut = lowCut();
        for (std::size_t i = 0; i < steps.size() * kStep; ++i) {
            const double y = cut.tick(head.tick((*side)[from + i]));
            steps[i / kStep] += y * y / kStep;
        }
    }
    return steps;
}

double loudness(double power) {
    return -0.691 + 10.0 * std::log10(std::max(power, 1e-12));
}

// Means over 0.4 s, one each 0.1 s.
std::vector<double> weightedWindows(const Take& take, std::size_t from, std::size_t to) {
    const std::vector<double> steps = weightedSteps(take, from, to);
    std::vector<double> windows;
    for (std::size_t i = 0; i + 4 <= steps.size(); ++i) {
        windows.push_back((steps[i] + steps[i + 1] + steps[i + 2] + steps[i + 3]) / 4.0);
    }
    return windows;
}

double meanAbove(const std::vector<double>& windows, double gate) {
    double sum = 0.0;
    int count = 0;
    for (const double power : windows) {
        if (loudness(power) <= gate) continue;
        sum += power;
        ++count;
    }
    return count > 0 ? sum / count : 0.0;
}

double energy(const std::vector<float>& side, std::size_t from, std::size_t to) {
    double sum = 0.0;
    for (std::size_t i = from; i < to; ++i) sum += static_cast<double>(side[i]) * side[i];
    return sum;
}

}  // namespace

double decibels(double amplitude) {
    return 20.0 * std::log10(std::max(amplitude, 1e-9));
}

double peakDb(const Take& take) {
    float highest = 0.0f;
    for (const auto* side : {&take.left, &take.right}) {
        for (const float x : *side) highest = std::max(highest, std::fabs(x));
    }
    return decibels(highest);
}

double momentaryLoudness(const Take& take, std::size_t from, std::size_t to) {
    const std::vector<double> windows = weightedWindows(take, from, std::min(to, take.frames()));
    return windows.empty() ? loudness(0.0)
                           : loudness(*std::max_element(windows.begin(), windows.end()));
}

double integratedLoudness(const Take& take) {
    const std::vector<double> windows = weightedWindows(take, 0, take.frames());
    return loudness(meanAbove(windows, loudness(meanAbove(windows, -70.0)) - 10.0));
}

double silentFrom(const Take& take) {
    constexpr float kSilence = 3.16e-4f;
    std::size_t end = take.frames();
    while (end > 0 && std::fabs(take.left[end - 1]) < kSilence &&
           std::fabs(take.right[end - 1]) < kSilence) {
        --end;
    }
    return static_cast<double>(end) / kSampleRate;
}

double leanDb(const Take& take, std::size_t from, std::size_t to) {
    return 10.0 * std::log10((energy(take.right, from, to) + 1e-12) /
                             (energy(take.left, from, to) + 1e-12));
}

Edge sharpestEdge(const Take& take, std::size_t from) {
    constexpr std::size_t kWindow = frameAt(0.005);
    constexpr std::size_t kBefore = 12;  // windows; the last is left out, an edge may begin in it
    // -68 dB of full scale: 46 dB under the music, below the bow noise around it. Softer edges are
    // measured against this.
    constexpr double kInaudible = 4e-4;

    // Bends of the waveform: the second difference, which passes what is smooth by.
    std::vector<double> sharpness;
    for (std::size_t at = from; at + kWindow + 2 < take.frames(); at += kWindow) {
        double highest = 0.0;
        for (std::size_t i = at; i < at + kWindow; ++i) {
            for (const auto* side : {&take.left, &take.right}) {
                const double bend = (*side)[i] - 2.0 * (*side)[i + 1] + (*side)[i + 2];
                highest = std::max(highest, std::fabs(bend));
            }
        }
        sharpness.push_back(highest);
    }
    Edge edge;
    for (std::size_t i = kBefore; i < sharpness.size(); ++i) {
        const double usual = *std::max_element(&sharpness[i - kBefore], &sharpness[i - 1]);
        const double db = decibels(sharpness[i] / std::max(usual, kInaudible));
        if (db > edge.db) {
            edge = {db, static_cast<double>(from + i * kWindow) / kSampleRate};
        }
    }
    return edge;
}

std::array<double, kBands> bandsDb(const Take& take) {
    std::array<double, kBands> levels{};
    for (int band = 0; band < kBands; ++band) {
        for (const auto* side : {&take.left, &take.right}) {
            Biquad filter = bandFilter(band);
            for (const float x : *side) {
                const double y = filter.tick(x);
                levels[band] += y * y;
            }
        }
        levels[band] = 10.0 * std::log10(levels[band] + 1e-12);
    }
    const double loudest = *std::max_element(levels.begin(), levels.end());
    for (double& level : levels) level -= loudest;
    return levels;
}

Picture picture(const Take& take) {
    constexpr double kFloorDb = -50.0;  // of the whole sound; what lies below is not heard

    Picture levels{};
    double total = 0.0;
    const std::vector<float>* const sides[] = {&take.left, &take.right};
    for (int side = 0; side < 2; ++side) {
        const std::vector<float>& samples = *sides[side];
        for (int band = 0; band < kBands; ++band) {
            Biquad filter = bandFilter(band);
            float* const row = &levels[(side * kBands + band) * kFrames];
            for (std::size_t i = 0; i < std::min(samples.size(), kStep * kFrames); ++i) {
                const double y = filter.tick(samples[i]);
                row[i / kStep] += static_cast<float>(y * y / kStep);
            }
            for (int frame = 0; frame < kFrames; ++frame) total += row[frame] / kFrames;
        }
    }
    for (float& level : levels) {
        const double db = 10.0 * std::log10(std::max(level / total, 1e-12));
        level = static_cast<float>(std::max(db, kFloorDb));
    }
    return levels;
}

double distanceDb(const Picture& a, const Picture& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
    return std::sqrt(sum / static_cast<double>(a.size()));
}

}  // namespace banks
