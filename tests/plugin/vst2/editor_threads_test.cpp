// Editors open and close while another thread renders. Also run under the thread sanitizer.
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "gui/headless.h"
#include "plugin/vst2/editor_adapter.h"
#include "tests/plugin/vst2/installed_skin.h"
#include "tests/plugin/vst2/midi_block.h"
#include "tests/support/host_window.h"
#include "tests/support/recorded_messages.h"

namespace {

class Threads : public testing::Test {
  protected:
    ~Threads() override { EXPECT_TRUE(messages_.all.size() <= 2); }

    InstalledSkin skin_;
    RecordedMessages messages_;
};

TEST_F(Threads, EditorsComeAndGoWhileTheInstrumentsRender) {
    const VSTGUI::headless::Scope scope;
    const std::unique_ptr<vst2::VstSynth> synths[] = {std::make_unique<vst2::VstSynth>(nullptr),
                                                      std::make_unique<vst2::VstSynth>(nullptr)};
    std::atomic<bool> finished{false};
    std::atomic<int> blocks{0};
    std::thread audio([&] {
        while (!finished) {
            // The controller is bound, so the audio thread sets parameters.
            for (const auto& synth : synths) playMessage(*synth, 0xB0, 74, blocks % 128);
            ++blocks;
        }
    });
    for (int i = 0; i < 40 || blocks < 10; ++i) {
        for (const auto& synth : synths) {
            vst2::AEffEditor& host = *synth->getEditor();
            EXPECT_TRUE(host.open(&host));
            host.idle();
            synth->instrument().learnSlot().arm(i % state::kNumParams);
            synth->setProgram(i % 128);
            synth->setSampleRate(i % 2 ? 44100.0f : 48000.0f);
            state::controllerMap().bind(i % state::kNumParams, state::ControllerMap::kUnbound);
            host.idle();
        }
        for (const auto& synth : synths) synth->getEditor()->close();
    }
    finished = true;
    audio.join();
}

// Plays a chord that grows by a note every 20 blocks.
MidiBlock playChord(vst2::VstSynth& synth, std::size_t block) {
    const int note = static_cast<int>(block / 20);
    const bool begins = block % 20 == 0 && note < 12;
    return playMessage(synth, begins ? 0x90 : 0xA0, 48 + 5 * (note % 12), 100);
}

TEST_F(Threads, EditorsInWindowsCostNoBlock) {
    const HostWindow windows[] = {{300, 200}, {300, 200}};
    if (!windows[0].isOpen()) GTEST_SKIP() << "needs a desktop; on Linux Xvfb and xdotool";
    const auto makeSynth = [] { return std::make_unique<vst2::VstSynth>(nullptr); };
    const std::unique_ptr<vst2::VstSynth> synths[] = {makeSynth(), makeSynth()};
    std::vector<MidiBlock> heard[2];
    std::atomic<bool> finished{false};
    std::atomic<int> blocks{0};
    std::thread audio([&] {
        while (!finished) {
            for (int i = 0; i < 2; ++i) heard[i].push_back(playChord(*synths[i], heard[i].size()));
            ++blocks;
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    });
    for (int i = 0; i < 100 || blocks < 300; ++i) {
        for (int w = 0; w < 2; ++w) {
            vst2::AEffEditor& host = *synths[w]->getEditor();
            EXPECT_TRUE(host.open(windows[w].parent()));
            host.idle();
        }
        for (const auto& synth : synths) synth->getEditor()->idle();
        for (const auto& synth : synths) synth->getEditor()->close();
    }
    finished = true;
    audio.join();

    const auto undisturbed = makeSynth();
    std::size_t silent = 0;
    std::size_t differing = 0;
    for (std::size_t block = 0; block < heard[0].size(); ++block) {
        const MidiBlock wanted = playChord(*undisturbed, block);
        silent += wanted == MidiBlock{};
        differing += (heard[0][block] != wanted) + (heard[1][block] != wanted);
    }
    EXPECT_EQ(silent, 0u);
    EXPECT_EQ(differing, 0u);
}

}  // namespace
