#include "tests/banks/listening.h"

#include <algorithm>
#include <cmath>

namespace listening {

namespace {

constexpr double kPi = 3.141592653589793;
constexpr int kVelocity = 100;
constexpr int kBlock = 512;
constexpr double kPatience = 15.0;      // s
constexpr double kSilenceDb = -76.0;    // peak of full scale
constexpr double kSilentStretch = 0.2;  // s

struct Event {
    double seconds;
    int key;
    bool on;
};
// In the order of time.
constexpr Event kPhrase[] = {
    {0.0, 43, true},        {0.0, 60, true},         {0.0, 64, true},
    {0.0, 67, true},        {0.0, 71, true},         {0.25, 72, true},
    {0.6, 72, false},       {kLastNoteOn, 76, true}, {kMelodyOff, 76, false},
    {kChordOff, 60, false}, {kChordOff, 64, false},  {kChordOff, 67, false},
    {kChordOff, 71, false}, {kBassOff, 43, false},
};

constexpr std::size_t frameAt(double seconds) {
    return static_cast<std::size_t>(seconds * kSampleRate);
}

double decibels(double amplitude) {
    return 20.0 * std::log10(std::max(amplitude, 1e-9));
}

double peak(const std::vector<float>& side, std::size_t from, std::size_t to) {
    double highest = 0.0;
    for (std::size_t i = from; i < to; ++i) {
        highest = std::max(highest, std::fabs(static_cast<double>(side[i])));
    }
    return highest;
}

// RBJ band-pass of unit gain at its centre.
class BandPass {
  public:
    BandPass(double hertz, double q) {
        const double w = 2.0 * kPi * hertz / kSampleRate;
        const double alpha = std::sin(w) / (2.0 * q);
        b0_ = alpha / (1.0 + alpha);
        a1_ = -2.0 * std::cos(w) / (1.0 + alpha);
        a2_ = (1.0 - alpha) / (1.0 + alpha);
    }
    double tick(double x) {
        const double y = b0_ * (x - x2_) - a1_ * y1_ - a2_ * y2_;
        x2_ = x1_;
        x1_ = x;
        y2_ = y1_;
        y1_ = y;
        return y;
    }

  private:
    double b0_, a1_, a2_;
    double x1_ = 0.0, x2_ = 0.0, y1_ = 0.0, y2_ = 0.0;
};

}  // namespace

Take playPhrase(PlayedInstrument& instrument) {
    Take take;
    const Event* next = std::begin(kPhrase);
    std::size_t silent = 0;
    for (std::size_t at = 0; at < frameAt(kPatience); at += kBlock) {
        for (; next != std::end(kPhrase) && frameAt(next->seconds) < at + kBlock; ++next) {
            const auto frame = static_cast<int>(frameAt(next->seconds) - at);
            instrument.send(next->on ? 0x90 : 0x80, next->key, kVelocity, frame + 1);
        }
        const PlayedSound block = instrument.render(kBlock);
        take.left.insert(take.left.end(), block.left.begin(), block.left.end());
        take.right.insert(take.right.end(), block.right.begin(), block.right.end());
        const double highest = std::max(peak(take.left, at, at + kBlock),  //
                                        peak(take.right, at, at + kBlock));
        silent = decibels(highest) < kSilenceDb ? silent + kBlock : 0;
        take.endedInSilence = silent >= frameAt(kSilentStretch);
        if (at > frameAt(kBassOff) && take.endedInSilence) break;
    }
    return take;
}

double peakDb(const Take& take) {
    return decibels(
        std::max(peak(take.left, 0, take.left.size()), peak(take.right, 0, take.right.size())));
}

double loudnessDb(const Take& take) {
    constexpr std::size_t kWindow = frameAt(0.4);
    double energy = 0.0;
    double loudest = 0.0;
    const auto power = [&take](std::size_t i) {
        return 0.5 * (static_cast<double>(take.left[i]) * take.left[i] +
                      static_cast<double>(take.right[i]) * take.right[i]);
    };
    for (std::size_t i = 0; i < frameAt(kChordOff); ++i) {
        energy += power(i);
        if (i >= kWindow) energy -= power(i - kWindow);
        loudest = std::max(loudest, energy);
    }
    return decibels(std::sqrt(loudest / kWindow));
}

Edge sharpestEdge(const Take& take) {
    constexpr std::size_t kWindow = frameAt(0.005);
    constexpr std::size_t kBefore = 12;  // windows; the last is left out, an edge may begin in it
    // -68 dB of full scale: 46 dB under the music, below the bow noise around it. Softer edges are
    // measured against this.
    constexpr double kInaudible = 4e-4;

    // Bends of the waveform: the second difference, which passes what is smooth by.
    std::vector<double> sharpness;
    for (std::size_t at = frameAt(kLastNoteOn + 0.05); at + kWindow + 2 < take.left.size();
         at += kWindow) {
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
            edge = {db, kLastNoteOn + 0.05 + static_cast<double>(i * kWindow) / kSampleRate};
        }
    }
    return edge;
}

Picture picture(const Take& take) {
    constexpr double kLowestHertz = 62.0;
    constexpr double kHalfOctave = 1.4142135623730951;
    constexpr double kQ = 2.87;  // half an octave wide
    constexpr std::size_t kFrame = frameAt(0.1);
    constexpr double kFloorDb = -50.0;  // of the whole sound; what lies below is not heard

    Picture levels{};
    double total = 0.0;
    const std::vector<float>* const sides[] = {&take.left, &take.right};
    for (int side = 0; side < 2; ++side) {
        const std::vector<float>& samples = *sides[side];
        for (int band = 0; band < kBands; ++band) {
            BandPass filter(kLowestHertz * std::pow(kHalfOctave, band), kQ);
            float* const row = &levels[(side * kBands + band) * kFrames];
            for (std::size_t i = 0; i < std::min(samples.size(), kFrame * kFrames); ++i) {
                const double y = filter.tick(samples[i]);
                row[i / kFrame] += static_cast<float>(y * y / kFrame);
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

}  // namespace listening
