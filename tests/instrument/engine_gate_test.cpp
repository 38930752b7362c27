// Only one thread enters the engine at a time. Also run this under the thread sanitizer.
#include "instrument/engine_gate.h"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

namespace {

using instrument::EngineGate;

// Stands in for the engine: only one thread may touch it.
struct Guarded {
    EngineGate gate;
    std::atomic<int> inside{0};
    std::atomic<int> clashes{0};
    long entries = 0;

    void enter() {
        if (inside.fetch_add(1) != 0) ++clashes;
        ++entries;
        inside.fetch_sub(1);
    }
};

TEST(EngineGate, GivesABlockToOneOfTwoThreadsThatRender) {
    EngineGate gate;
    ASSERT_TRUE(gate.beginBlock());
    std::thread([&] {
        EXPECT_FALSE(gate.beginBlock());
        EXPECT_FALSE(gate.withinBlock());
        EXPECT_FALSE(EngineGate::Change(gate).granted());
    }).join();
    EXPECT_TRUE(gate.withinBlock());
    gate.endBlock();
}

// The threads take turns at rendering a block, and request changes during every block.
TEST(EngineGate, HoldsWhileTheRenderingMovesFromThreadToThread) {
    constexpr int kTurns = 20000;
    Guarded guarded;
    std::atomic<int> turn{0};
    const auto play = [&](int thread) {
        while (turn < kTurns) {
            if (turn % 2 == thread) {
                if (guarded.gate.beginBlock()) {
                    guarded.enter();
                    guarded.gate.endBlock();
                }
                ++turn;
            }
            const EngineGate::Change change(guarded.gate);
            if (change.granted() || guarded.gate.withinBlock()) guarded.enter();
        }
    };
    std::thread other(play, 1);
    play(0);
    other.join();
    EXPECT_EQ(guarded.clashes, 0);
}

}  // namespace
