// Scales rows of a picture horizontally and adds the results up.
#include "gui/graphics/row_scaler.h"
#include "gui/graphics/wide_vectors.h"

#include <algorithm>
#include <cstring>

namespace VSTGUI {
namespace {

constexpr size_t kBytes = 4;  // of a pixel
constexpr uint16_t kHalf = kWholeWeight / 2;

// Of many columns, few weights differ, and what is read for each row should be little. Returns
// where the weights stand in `known`.
template <class Weights>
uint32_t placeAmong(std::vector<Weights>& known, const Weights& weights) {
    constexpr size_t kLatest = 16;
    const auto* const wanted = reinterpret_cast<const uint8_t*>(&weights);
    const auto isAt = [&](size_t place) {
        const auto* const bytes = reinterpret_cast<const uint8_t*>(&known[place]);
        return std::equal(bytes, bytes + sizeof weights, wanted);
    };
    size_t at = known.size() - std::min(known.size(), kLatest);
    while (at < known.size() && !isAt(at)) ++at;
    if (at == known.size()) known.push_back(weights);
    return static_cast<uint32_t>(at);
}

// The number of columns, filled up to whole groups.
size_t inGroups(const std::vector<Taps>& columns, size_t group) {
    return (columns.size() + group - 1) / group * group;
}

const Taps& columnOrLast(const std::vector<Taps>& columns, size_t x) {
    return columns[std::min(x, columns.size() - 1)];
}

// Two pixels at a time, in sixteen bits. Sums of bytes fit, because the weights add up to
// kWholeWeight.
template <int kTaps>
class PlainRowScaler final : public RowScaler {
  public:
    explicit PlainRowScaler(const std::vector<Taps>& columns)
        : RowScaler(inGroups(columns, kFour)) {
        for (size_t x = 0; x < rowSize(); x += kPair) {
            const Taps& left = columnOrLast(columns, x);
            const Taps& right = columnOrLast(columns, x + 1);
            const PairWeights weights = {{weightsOf(left), weightsOf(right)}};
            const int first = columns.front().begin;
            pairs_.push_back(
                {{left.begin - first, right.begin - first}, placeAmong(weights_, weights)});
        }
    }

    bool across(std::vector<uint32_t>& from, std::vector<uint32_t>& to) const override {
        Wide common = ~Wide{};
        uint32_t* out = to.data();
        for (const Pair& pair : pairs_) {
            const PairWeights& weights = weights_[pair.weights];
            Wide sum = Wide{} + kHalf;
            for (size_t i = 0; i < kTaps / kPair; ++i) {
                const auto left =
                    reinterpret_cast<Words>(pixels(from, pair.at[0], i) * weights[0][i]);
                const auto right =
                    reinterpret_cast<Words>(pixels(from, pair.at[1], i) * weights[1][i]);
                // What the even and the odd neighbours give to each column.
                sum += reinterpret_cast<Wide>(Words{left[0], right[0]}) +
                       reinterpret_cast<Wide>(Words{left[1], right[1]});
            }
            sum >>= 8;
            common &= sum;
            const auto bytes = __builtin_convertvector(sum, Octets);
            std::memcpy(out, &bytes, sizeof bytes);
            out += kPair;
        }
        constexpr uint16_t kOpaque = 255;
        return common[3] == kOpaque && common[7] == kOpaque;
    }

    void add(std::array<const uint32_t*, kMostTaps> rows, const Taps& taps, uint32_t* line,
             size_t width) const override {
        for (size_t x = 0; x < width; x += kFour) {
            WideFour sum = WideFour{} + kHalf;
            for (int i = 0; i < kTaps; ++i) {
                OctetsOfFour row;
                std::memcpy(&row, rows[i] + x, sizeof row);
                sum +=
                    __builtin_convertvector(row, WideFour) * static_cast<uint16_t>(taps.weight[i]);
            }
            const auto pixels = __builtin_convertvector(sum >> 8, OctetsOfFour);
            std::memcpy(line + x, &pixels, std::min(width - x, kFour) * kBytes);
        }
    }

  private:
    static constexpr size_t kPair = 2;
    static constexpr size_t kFour = 4;
    typedef uint8_t Octets __attribute__((vector_size(8)));
    typedef uint16_t Wide __attribute__((vector_size(16)));
    typedef uint64_t Words __attribute__((vector_size(16)));
    typedef uint8_t OctetsOfFour __attribute__((vector_size(16)));
    typedef uint16_t WideFour __attribute__((vector_size(32)));
    using Weights = std::array<Wide, kTaps / kPair>;  // of a column
    using PairWeights = std::array<Weights, kPair>;
    struct Pair {
        std::array<int, kPair> at;  // the first neighbour of each column
        uint32_t weights;
    };

    static Weights weightsOf(const Taps& column) {
        constexpr uint64_t kEach = 0x0001000100010001u;
        Weights weights;
        for (size_t i = 0; i < weights.size(); ++i)
            weights[i] = reinterpret_cast<Wide>(
                Words{kEach * column.weight[kPair * i], kEach * column.weight[kPair * i + 1]});
        return weights;
    }

    static Wide pixels(const std::vector<uint32_t>& from, int at, size_t pair) {
        Octets both;
        std::memcpy(&both, &from[at + pair * kPair], sizeof both);
        return __builtin_convertvector(both, Wide);
    }

    std::vector<Pair> pairs_;
    std::vector<PairWeights> weights_;
};

#ifdef QUARZEL_WIDE

// Eight pixels at a time. One instruction multiplies unsigned bytes, the weights, by signed ones
// and adds up the pairs, so pixels and scaled rows are kept 128 lower.
template <int kTaps>
class WideRowScaler final : public RowScaler {
  public:
    explicit WideRowScaler(const std::vector<Taps>& columns)
        : RowScaler(inGroups(columns, kEight)) {
        for (size_t x = 0; x < rowSize(); x += kEight) {
            Group group;
            Weights weights;
            for (size_t i = 0; i < kEight; ++i) {
                const Taps& column = columnOrLast(columns, x + i);
                group.at[i] = static_cast<uint32_t>(column.begin - columns.front().begin);
                uint8_t* const to = &weights[placeOf(i) * kTaps * kBytes];
                for (size_t pair = 0; pair < kTaps / 2; ++pair)
                    for (size_t byte = 0; byte < 2 * kBytes; ++byte)
                        to[pair * 2 * kBytes + byte] =
                            static_cast<uint8_t>(column.weight[2 * pair + byte % 2]);
            }
            group.weights = placeAmong(weights_, weights);
            groups_.push_back(group);
        }
    }

    QUARZEL_WIDE bool across(std::vector<uint32_t>& from,
                             std::vector<uint32_t>& to) const override {
        for (uint32_t& pixel : from) pixel ^= kLower;
        const uint32_t* const pixels = from.data();
        const __m256i lower = _mm256_set1_epi32(static_cast<int>(kLower));
        const __m256i interleave = _mm256_broadcastsi128_si256(
            _mm_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15));
        __m256i common = _mm256_set1_epi32(-1);
        uint32_t* out = to.data();
        for (const Group& group : groups_) {
            const auto* const weights =
                reinterpret_cast<const __m256i*>(weights_[group.weights].data());
            __m256i low, high;  // sums of the pixels 0, 1, 4, 5 and 2, 3, 6, 7
            if constexpr (kTaps == 2) {
                low = _mm256_maddubs_epi16(
                    _mm256_loadu_si256(weights),
                    _mm256_shuffle_epi8(four(pixels, group.at, 0), interleave));
                high = _mm256_maddubs_epi16(
                    _mm256_loadu_si256(weights + 1),
                    _mm256_shuffle_epi8(four(pixels, group.at, 2), interleave));
            } else {
                __m256i halves[4];  // of pixels 0 and 4, 1 and 5, ..., by pairs of taps
                for (int i = 0; i < 4; ++i)
                    halves[i] = _mm256_maddubs_epi16(
                        _mm256_loadu_si256(weights + i),
                        _mm256_shuffle_epi8(
                            _mm256_inserti128_si256(
                                _mm256_castsi128_si256(sixteenBytes(pixels + group.at[i])),
                                sixteenBytes(pixels + group.at[i + 4]), 1),
                            interleave));
                low = _mm256_add_epi16(_mm256_unpacklo_epi64(halves[0], halves[1]),
                                       _mm256_unpackhi_epi64(halves[0], halves[1]));
                high = _mm256_add_epi16(_mm256_unpacklo_epi64(halves[2], halves[3]),
                                        _mm256_unpackhi_epi64(halves[2], halves[3]));
            }
            const __m256i eight = rounded(low, high);
            common = _mm256_and_si256(common, eight);
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm256_xor_si256(eight, lower));
            out += kEight;
        }
        const __m256i solid = _mm256_set1_epi32(static_cast<int>(0xFF000000u));
        return _mm256_testc_si256(common, solid) != 0;
    }

    QUARZEL_WIDE void add(std::array<const uint32_t*, kMostTaps> rows, const Taps& taps,
                          uint32_t* line, size_t width) const override {
        __m256i weights[kTaps / 2];
        for (int pair = 0; pair < kTaps / 2; ++pair) {
            uint32_t first = taps.weight[2 * pair];
            uint32_t second = taps.weight[2 * pair + 1];
            if (first + second == kWholeWeight && (first == 0 || second == 0)) {
                // 256 is no byte. The same row twice, by half each, is the same.
                rows[2 * pair] = rows[2 * pair + 1] = rows[2 * pair + (first == 0 ? 1 : 0)];
                first = second = kHalf;
            }
            weights[pair] = _mm256_set1_epi16(static_cast<int16_t>(first | second << 8));
        }
        for (size_t x = 0; x < width; x += kEight) {
            __m256i low = _mm256_setzero_si256();
            __m256i high = _mm256_setzero_si256();
            for (int pair = 0; pair < kTaps / 2; ++pair) {
                const __m256i first = eightAt(rows[2 * pair] + x);
                const __m256i second = eightAt(rows[2 * pair + 1] + x);
                low = _mm256_add_epi16(
                    low, _mm256_maddubs_epi16(weights[pair], _mm256_unpacklo_epi8(first, second)));
                high = _mm256_add_epi16(
                    high, _mm256_maddubs_epi16(weights[pair], _mm256_unpackhi_epi8(first, second)));
            }
            const __m256i eight = rounded(low, high);
            if (width - x >= kEight) {
                _mm256_storeu_si256(reinterpret_cast<__m256i*>(line + x), eight);
            } else {
                std::memcpy(line + x, &eight, (width - x) * kBytes);
            }
        }
    }

  private:
    static constexpr size_t kEight = 8;
    static constexpr uint32_t kLower = 0x80808080u;
    using Weights = std::array<uint8_t, kEight * kTaps * kBytes>;
    struct Group {
        std::array<uint32_t, kEight> at;  // the first neighbour of each column
        uint32_t weights;
    };

    // Where the weights of a column stand within a group: the halves of a vector are computed
    // apart from each other.
    static size_t placeOf(size_t column) {
        constexpr std::array<size_t, kEight> kTwo = {0, 1, 4, 5, 2, 3, 6, 7};
        constexpr std::array<size_t, kEight> kFour = {0, 2, 4, 6, 1, 3, 5, 7};
        return kTaps == 2 ? kTwo[column] : kFour[column];
    }

    QUARZEL_WIDE static __m128i sixteenBytes(const uint32_t* from) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    }

    QUARZEL_WIDE static __m128i neighboursOfTwo(const uint32_t* left, const uint32_t* right) {
        return _mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(left)),
                                  _mm_loadl_epi64(reinterpret_cast<const __m128i*>(right)));
    }

    // The neighbours of the columns i, i + 1, i + 4 and i + 5.
    QUARZEL_WIDE static __m256i four(const uint32_t* pixels, const std::array<uint32_t, kEight>& at,
                                     size_t i) {
        return _mm256_inserti128_si256(
            _mm256_castsi128_si256(neighboursOfTwo(pixels + at[i], pixels + at[i + 1])),
            neighboursOfTwo(pixels + at[i + 4], pixels + at[i + 5]), 1);
    }

    QUARZEL_WIDE static __m256i eightAt(const uint32_t* from) {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
    }

    // Sums of pixels that are 128 lower, divided by kWholeWeight.
    QUARZEL_WIDE static __m256i rounded(const __m256i& low, const __m256i& high) {
        const __m256i half = _mm256_set1_epi16(static_cast<int16_t>(0x8000 + kHalf));
        return _mm256_packus_epi16(_mm256_srli_epi16(_mm256_add_epi16(low, half), 8),
                                   _mm256_srli_epi16(_mm256_add_epi16(high, half), 8));
    }

    std::vector<Group> groups_;
    std::vector<Weights> weights_;
};

bool areBytes(const std::vector<Taps>& columns) {
    return std::all_of(columns.begin(), columns.end(), [](const Taps& column) {
        return std::all_of(column.weight.begin(), column.weight.end(),
                           [](uint32_t weight) { return weight < kWholeWeight; });
    });
}

#endif  // QUARZEL_WIDE

}  // namespace

std::unique_ptr<RowScaler> makePlainRowScaler(const std::vector<Taps>& columns, int tapCount) {
    if (tapCount == 2) return std::make_unique<PlainRowScaler<2>>(columns);
    return std::make_unique<PlainRowScaler<kMostTaps>>(columns);
}

std::unique_ptr<RowScaler> makeRowScaler(const std::vector<Taps>& columns, int tapCount) {
#ifdef QUARZEL_WIDE
    if (hasWideVectors() && areBytes(columns)) {
        if (tapCount == 2) return std::make_unique<WideRowScaler<2>>(columns);
        return std::make_unique<WideRowScaler<kMostTaps>>(columns);
    }
#endif
    return makePlainRowScaler(columns, tapCount);
}

}  // namespace VSTGUI
