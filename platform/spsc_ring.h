// A wait-free queue between two threads.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

namespace platform {

// One thread pushes, one pops. kCapacity is a power of two.
template <typename Item, std::size_t kCapacity>
class SpscRing {
  public:
    // Returns false if the queue is full.
    bool push(const Item& item) {
        const std::size_t written = written_.load(std::memory_order_relaxed);
        if (written - read_.load(std::memory_order_acquire) == kCapacity) return false;
        items_[written % kCapacity] = item;
        written_.store(written + 1, std::memory_order_release);
        return true;
    }

    // Returns false if the queue is empty.
    bool pop(Item& item) {
        const std::size_t read = read_.load(std::memory_order_relaxed);
        if (read == written_.load(std::memory_order_acquire)) return false;
        item = items_[read % kCapacity];
        read_.store(read + 1, std::memory_order_release);
        return true;
    }

  private:
    static_assert((kCapacity & (kCapacity - 1)) == 0);
    std::array<Item, kCapacity> items_{};
    std::atomic<std::size_t> written_{0};
    std::atomic<std::size_t> read_{0};
};

}  // namespace platform
