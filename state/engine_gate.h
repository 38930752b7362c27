// Decides which thread may change the engine, without ever making the renderer wait.
#pragma once

#include <atomic>
#include <cstdint>

namespace state {

// The engine has one owner at a time: the renderer during a block, or a thread that changes
// something between blocks. A change may run at once on the thread that renders, within a block or
// between two, and on any thread while nobody renders; otherwise it has to be left as a request.
class EngineGate {
  public:
    // Audio thread, at both ends of a block. False: another thread is changing the engine at this
    // moment, which only happens when no block was expected; the block is then silent.
    bool beginBlock();
    void endBlock();

    // From now on nobody is expected to render, until the next block begins.
    void expectNoBlocks();

    // Ownership for one change, held for the object's life.
    class Change {
      public:
        explicit Change(EngineGate& gate);
        ~Change();
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        bool granted() const { return kind_ != Kind::kRefused; }

      private:
        enum class Kind { kRefused, kOwner, kWithinBlock };
        EngineGate& gate_;
        Kind kind_;
    };

  private:
    enum class Owner { kNobody, kRenderer, kChange };
    bool take(Owner owner);

    std::atomic<Owner> owner_{Owner::kNobody};
    static constexpr std::uintptr_t kNoThread = 0;
    std::atomic<std::uintptr_t> renderer_{kNoThread};  // the thread of the last block
};

}  // namespace state
