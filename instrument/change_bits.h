// Which of up to 64 things have changed since somebody last looked.
#pragma once

#include <atomic>
#include <cstdint>

namespace instrument {

// Any thread marks; a mark made while another thread takes is seen by that take or the next.
class ChangeBits {
  public:
    void mark(std::uint64_t bits) { bits_.fetch_or(bits); }
    std::uint64_t take() { return any() ? bits_.exchange(0) : 0; }
    bool any() const { return bits_.load() != 0; }

  private:
    std::atomic<std::uint64_t> bits_{0};
};

}  // namespace instrument
