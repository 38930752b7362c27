// Editors that come and go while another thread renders; run it under the thread sanitizer, too.
#include <atomic>
#include <filesystem>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "editor/skin_missing.h"
#include "editor/skin_preview.h"
#include "gui/headless.h"
#include "platform/folders.h"
#include "platform/settings_store.h"
#include "plugin/editor_adapter.h"
#include "plugin/vst_synth.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr int kBlock = 64;

// Blocks with a controller that is bound, so that the audio thread sets parameters.
void render(plugin::VstSynth& synth, int value) {
    VstMidiEvent midi = {};
    midi.type = kVstMidiType;
    midi.midiData[0] = static_cast<char>(0xB0);
    midi.midiData[1] = 74;
    midi.midiData[2] = static_cast<char>(value % 128);
    VstEvents list = {};
    list.numEvents = 1;
    list.events[0] = reinterpret_cast<VstEvent*>(&midi);
    synth.processEvents(&list);
    float left[kBlock];
    float right[kBlock];
    float* outputs[] = {left, right};
    synth.processReplacing(nullptr, outputs, kBlock);
}

TEST(Threads, EditorsComeAndGoWhileTheInstrumentsRender) {
    namespace headless = VSTGUI::headless;
    const TemporaryFolder module;
    const TemporaryFolder applicationData;
    const platform::ScopedFolders folders(module.path(), applicationData.path());
    const platform::ScopedSettings settings;
    const RecordedMessages messages;
    const headless::Scope scope;
    editor::setSkinMissing(false);
    std::filesystem::create_directories(module.path() + "skin");
    editor::writePng(module.path() + "skin/bg.png", VSTGUI::PixelBuffer(200, 100));
    module.write("skin/skin.xml", R"(<GUI><background filename="bg.png"/>
        <knob x="0" y="0" w="40" h="40" id="1"/><NoteDisplay x="50" y="0" w="60" h="20" id="0"/>
        <ViewTaps x="50" y="30" w="60" h="30"/><anydisp x="0" y="50" w="40" h="20" style="0"/>
        <vumeter x="150" y="0" id="0" leds="4" style="2" bitmap_on="bg.png" bitmap_off="bg.png"/>
        </GUI>)");

    const std::unique_ptr<plugin::VstSynth> synths[] = {
        std::make_unique<plugin::VstSynth>(nullptr), std::make_unique<plugin::VstSynth>(nullptr)};
    std::atomic<bool> finished{false};
    std::atomic<int> blocks{0};
    std::thread audio([&] {
        while (!finished) {
            for (const auto& synth : synths) render(*synth, blocks);
            ++blocks;
        }
    });
    for (int i = 0; i < 100 || blocks < 10; ++i) {
        for (const auto& synth : synths) {
            plugin::AEffEditor& host = *synth->getEditor();
            ASSERT_TRUE(host.open(&host));
            host.idle();
            synth->learnSlot().arm(i % state::kNumParams);
            synth->setProgram(i % 128);
            host.idle();
        }
        for (const auto& synth : synths) synth->getEditor()->close();
    }
    finished = true;
    audio.join();
    EXPECT_TRUE(messages.all.size() <= 2);
}

}  // namespace
