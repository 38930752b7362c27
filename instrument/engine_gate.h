// Decides which thread may change the engine. The renderer never waits.
#pragma once

#include <atomic>
#include <cstdint>

namespace instrument {

// The engine has one owner at a time: the renderer during a block, or a thread that makes a change
// between blocks. The rendering thread may always make a change at once, and so may any thread
// while nobody renders. In all other cases, leave the change as a request.
class EngineGate {
  public:
    // Audio thread, around each block. beginBlock returns false if another thread is inside the
    // engine, because no block was expected or because two threads render. Render silence then, and
    // do not call endBlock.
    bool beginBlock();
    void endBlock();

    // Lets any thread make changes until the next block begins.
    void expectNoBlocks();

    // Whether the calling thread is inside a block.
    bool withinBlock() const;
    // Whether the calling thread rendered the last block.
    bool rendersHere() const;

    // Owns the engine for one change between blocks, if granted.
    class Change {
      public:
        explicit Change(EngineGate& gate);
        ~Change();
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        bool granted() const { return granted_; }

      private:
        EngineGate& gate_;
        bool granted_;
    };

  private:
    enum Owner : std::uint64_t { kNobody, kRenderer, kChange };
    static constexpr int kOwnerBits = 2;
    static constexpr std::uint64_t kOwnerMask = (1 << kOwnerBits) - 1;

    static std::uint64_t onThisThread(Owner owner);
    bool beginChange();
    void release() { state_.fetch_and(~kOwnerMask); }

    // The owner in the low bits, and above them the thread of the last block (0 for none). Both
    // share one word, because a renderer that has just been replaced could otherwise mistake its
    // successor's block for its own.
    std::atomic<std::uint64_t> state_{kNobody};
};

}  // namespace instrument
