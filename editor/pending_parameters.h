// The ring through which changed parameters reach the editor from any thread.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace editor {

// Any thread pushes, one takes; nobody waits. More than kSlots indices between two looks overwrite
// the oldest, and the taker learns that some are lost.
class PendingParameters {
  public:
    static constexpr std::uint32_t kSlots = 256;
    static constexpr int kNone = -1;

    PendingParameters() {
        for (auto& slot : slots_) slot.store(kNone, std::memory_order_relaxed);
    }

    void push(int index) {
        const std::uint32_t position = written_.fetch_add(1, std::memory_order_relaxed);
        slots_[position % kSlots].store(index, std::memory_order_release);
    }

    // The oldest index, or kNone when there is none or its writer has not finished.
    int take() {
        const std::uint32_t waiting = written_.load(std::memory_order_relaxed) - read_;
        if (waiting == 0) return kNone;
        if (waiting > kSlots) {
            overrun_ = true;
            read_ += waiting - kSlots;
        }
        const int index = slots_[read_ % kSlots].exchange(kNone, std::memory_order_acquire);
        if (index != kNone) ++read_;
        return index;
    }

    void clear() {
        while (take() != kNone) continue;
        overrun_ = false;
    }

    // Whether indices were lost since the last call.
    bool takeOverrun() {
        const bool lost = overrun_;
        overrun_ = false;
        return lost;
    }

  private:
    std::array<std::atomic<int>, kSlots> slots_;
    std::atomic<std::uint32_t> written_{0};
    std::uint32_t read_ = 0;
    bool overrun_ = false;
};

}  // namespace editor
