// Editors open and close while another thread renders. Also run under the thread sanitizer.
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "gui/headless.h"
#include "tests/plugin/editor_kit.h"
#include "tests/plugin/vst2/own_instance.h"
#include "tests/support/recorded_messages.h"

namespace {

class Threads : public testing::Test {
  protected:
    ~Threads() override { EXPECT_TRUE(messages_.all.size() <= 2); }

    InstalledSkin skin_;
    RecordedMessages messages_;
    OwnInstance instances_[2];
};

TEST_F(Threads, EditorsComeAndGoWhileTheInstrumentsRender) {
    const VSTGUI::headless::Scope scope;
    std::atomic<bool> finished{false};
    std::atomic<int> blocks{0};
    std::thread audio([&] {
        while (!finished) {
            // The controller is bound, so the audio thread sets parameters.
            for (auto& instance : instances_) instance.play(0xB0, 74, blocks % 128);
            ++blocks;
        }
    });
    for (int i = 0; i < 40 || blocks < 10; ++i) {
        for (auto& instance : instances_) {
            EXPECT_EQ(instance.dispatch(effEditOpen, 0, 0, this), 1);
            instance.dispatch(effEditIdle);
            instance.synth()->instrument().learnSlot().arm(i % state::kNumParams);
            instance.dispatch(effSetProgram, 0, i % 128);
            instance.rate(i % 2 ? 44100.0f : 48000.0f);
            state::controllerMap().bind(i % state::kNumParams, state::ControllerMap::kUnbound);
            instance.dispatch(effEditIdle);
        }
        for (auto& instance : instances_) instance.dispatch(effEditClose);
    }
    finished = true;
    audio.join();
}

// Plays a chord that grows by a note every 20 blocks.
std::vector<float> playChord(OwnInstance& instance, std::size_t block) {
    const int note = static_cast<int>(block / 20);
    const bool begins = block % 20 == 0 && note < 12;
    return instance.play(begins ? 0x90 : 0xA0, 48 + 5 * (note % 12), 100);
}

TEST_F(Threads, EditorsInWindowsCostNoBlock) {
    const HostWindow windows[] = {{300, 200}, {300, 200}};
    if (!windows[0].isOpen()) GTEST_SKIP() << "needs a desktop; on Linux Xvfb and xdotool";
    std::vector<std::vector<float>> heard[2];
    std::atomic<bool> finished{false};
    std::atomic<int> blocks{0};
    std::thread audio([&] {
        while (!finished) {
            for (int i = 0; i < 2; ++i) {
                heard[i].push_back(playChord(instances_[i], heard[i].size()));
            }
            ++blocks;
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    });
    for (int i = 0; i < 100 || blocks < 300; ++i) {
        for (int w = 0; w < 2; ++w) {
            EXPECT_EQ(instances_[w].dispatch(effEditOpen, 0, 0, windows[w].parent()), 1);
            instances_[w].dispatch(effEditIdle);
        }
        for (auto& instance : instances_) instance.dispatch(effEditIdle);
        for (auto& instance : instances_) instance.dispatch(effEditClose);
    }
    finished = true;
    audio.join();

    OwnInstance undisturbed;
    std::size_t differing = 0;
    for (std::size_t block = 0; block < heard[0].size(); ++block) {
        const std::vector<float> wanted = playChord(undisturbed, block);
        EXPECT_NE(wanted, std::vector<float>(128)) << "silent";
        differing += (heard[0][block] != wanted) + (heard[1][block] != wanted);
    }
    EXPECT_EQ(differing, 0u);
}

}  // namespace
