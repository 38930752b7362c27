// Scales rows of a picture horizontally and adds the results up, with the widest vectors there are.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace VSTGUI {

constexpr int kMostTaps = 4;  // per axis: the pixels that a window of the largest step can touch
constexpr uint32_t kWholeWeight = 256;

// Neighbours along one axis and their weights. The weights add up to kWholeWeight.
struct Taps {
    int begin;  // the first neighbour, perhaps beyond the edge
    std::array<int, kMostTaps> at;
    std::array<uint32_t, kMostTaps> weight;
};

// All implementations give the same bytes. Several threads may use one.
class RowScaler {
  public:
    virtual ~RowScaler() = default;

    // The pixels that a scaled row takes.
    size_t rowSize() const { return rowSize_; }
    // Mixes the pixels of one row into each column. `from` holds the neighbours from the first
    // column's to the last column's, those beyond the edges included, and is overwritten. What `to`
    // receives is for add() only. Returns whether all pixels are opaque.
    virtual bool across(std::vector<uint32_t>& from, std::vector<uint32_t>& to) const = 0;
    // Adds up scaled rows by their weights.
    virtual void add(std::array<const uint32_t*, kMostTaps> rows, const Taps& taps, uint32_t* line,
                     size_t width) const = 0;

  protected:
    explicit RowScaler(size_t rowSize) : rowSize_(rowSize) {}

  private:
    const size_t rowSize_;
};

// Of each column, the first `tapCount` taps count, 2 or kMostTaps. The plain scaler needs no more
// than the baseline of the processor.
std::unique_ptr<RowScaler> makeRowScaler(const std::vector<Taps>& columns, int tapCount);
std::unique_ptr<RowScaler> makePlainRowScaler(const std::vector<Taps>& columns, int tapCount);

}  // namespace VSTGUI
