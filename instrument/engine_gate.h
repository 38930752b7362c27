// Decides which thread may change the engine, without ever making the renderer wait.
#pragma once

#include <atomic>
#include <cstdint>

namespace instrument {

// The engine has one owner at a time: the renderer during a block, or a thread that changes
// something between blocks. A change may run at once on the thread that renders, within a block or
// between two, and on any thread while nobody renders; otherwise it has to be left as a request.
class EngineGate {
  public:
    // Audio thread, at both ends of a block. False: another thread is inside the engine at this
    // moment, because no block was expected or two threads render; the block is then silent.
    bool beginBlock();
    void endBlock();

    // From now on nobody is expected to render, until the next block begins.
    void expectNoBlocks();

    // Whether a block is under way on the calling thread.
    bool withinBlock() const;
    // Whether the next block is expected on the calling thread.
    bool rendersHere() const;

    // Ownership for one change between blocks, held for the object's life.
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

    // The owner, and above it the thread of the last block, 0 for none. One word: read apart, a
    // renderer that has just been replaced would take its successor's block for its own.
    std::atomic<std::uint64_t> state_{kNobody};
};

}  // namespace instrument
