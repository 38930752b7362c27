// The instrument's own operations, called directly. It is too large for some systems' stacks.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <vector>

#include "engine/engine.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "plugin/vst_synth.h"
#include "tests/plugin/midi_block.h"
#include "tests/plugin/recording_effect.h"
#include "tests/plugin/test_host.h"
#include "tests/support/random_bytes.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace plugin {
namespace {

constexpr VstInt32 kMessage = 0x73744341;  // 'stCA'
constexpr VstInt32 kTurn = 0x57686565;     // 'Whee'

TEST(VstSynth, PassesWheelMessagesToItsEditor) {
    CallNote note(nullptr);
    const auto synth = std::make_unique<VstSynth>(nullptr);
    synth->setEditor(new RecordingEditor(synth.get(), note));
    struct {
        VstInt32 lArg;
        VstIntPtr lArg2;
        float distance;
        const char* reached;
        VstIntPtr answer;
    } const rows[] = {
        {kMessage, kTurn, 1.0f, "onWheel 1", 1},
        {kMessage, kTurn, -2.0f, "onWheel -2", 0},  // this editor uses upward turns only
        {kTurn, kMessage, 1.0f, "", 0},
        {kMessage, 0, 1.0f, "", 0},
        {kMessage, kTurn + (VstIntPtr{1} << 32), 1.0f, "", 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(synth->onWheelMessage(row.lArg, row.lArg2, nullptr, row.distance), row.answer);
        EXPECT_EQ(note.take(), row.reached);
    }
    AEffect* const record = synth->getAeffect();
    EXPECT_EQ(record->dispatcher(record, effVendorSpecific, kMessage, kTurn, nullptr, 1.0f), 0);
    EXPECT_EQ(note.take(), "");
    synth->setEditor(nullptr);
    EXPECT_EQ(synth->onWheelMessage(kMessage, kTurn, nullptr, 1.0f), 0);
}

TEST(VstSynth, IsASynthOnlyForAHost) {
    const auto alone = std::make_unique<VstSynth>(nullptr);
    EXPECT_EQ(alone->getPlugCategory(), kPlugCategUnknown);
    EXPECT_EQ(alone->getAeffect()->flags,
              effFlagsHasEditor | effFlagsCanReplacing | effFlagsProgramChunks);
    TestHost host;
    const auto hosted = std::make_unique<VstSynth>(TestHost::callback);
    EXPECT_EQ(hosted->getPlugCategory(), kPlugCategSynth);
}

// "HP" moves half way to each value that is sent.
class NotesHighPass : public engine::Engine {
  public:
    explicit NotesHighPass(std::vector<float>& sent) : Engine(44100.0), sent_(sent) {}
    void setHighPass(float control) override { sent_.push_back(control); }

  private:
    std::vector<float>& sent_;
};

TEST(VstSynth, SendsProgramZeroOnceWhenItIsBuilt) {
    std::vector<float> sent;
    const auto synth = std::make_unique<VstSynth>(nullptr, std::make_unique<NotesHighPass>(sent));
    EXPECT_EQ(sent, std::vector<float>{0.327f});
}

TEST(VstSynth, AdoptsTheHostsRate) {
    struct {
        VstIntPtr answer;
        float rate;
    } const rows[] = {{0, 44100.0f},
                      {-48000, 44100.0f},
                      {96000, 96000.0f},
                      {5, 44100.0f},
                      {VstIntPtr{1} << 40, 44100.0f}};
    for (const auto& row : rows) {
        TestHost host;
        host.answers[audioMasterGetSampleRate] = row.answer;
        const auto synth = std::make_unique<VstSynth>(TestHost::callback);
        EXPECT_EQ(synth->getSampleRate(), row.rate) << row.answer;
    }
}

// Plays a message into the instance; false when a sample was not finite.
bool play(VstSynth& synth, int status, int data1, int data2) {
    const MidiBlock block = playMessage(synth, status, data1, data2);
    return std::all_of(block.begin(), block.end(), [](float x) { return std::isfinite(x); });
}

bool control(VstSynth& synth, int controller, int value) {
    return play(synth, 0xB5, controller, value);
}

struct DataFolder {
    TemporaryFolder module;
    TemporaryFolder applicationData;
    platform::ScopedFolders scope{module.path(), applicationData.path()};

    // The entry of the saved map; -2 without one.
    int saved(int parameter) const {
        const auto bytes = platform::readFile(
            applicationData.path() + "Quarzel Studio 9/Quarzel Strings/Pluginccmap.bin", 1000);
        return bytes ? static_cast<signed char>(bytes->at(4 * parameter)) : -2;
    }
};

TEST(VstSynth, SharesItsControllersWithEveryInstance) {
    const DataFolder folder;
    std::string file(168, '\xFF');
    file.replace(4 * state::kPan, 4, std::string("\x14\0\0\0", 4));
    file.replace(4 * state::kMix, 4, std::string("\x14\0\0\0", 4));
    folder.module.write("Pluginccmap.bin", file);
    TestHost host;
    auto first = std::make_unique<VstSynth>(TestHost::callback);
    auto second = std::make_unique<VstSynth>(TestHost::callback);
    control(*second, 20, 127);
    EXPECT_EQ(second->getParameter(state::kPan), 1.0f);
    EXPECT_EQ(second->getParameter(state::kMix), 1.0f);
    EXPECT_EQ(first->getParameter(state::kPan), 0.5f);

    host.calls.clear();
    first->learnSlot().arm(state::kSpring);
    control(*first, 21, 127);
    EXPECT_EQ(first->getParameter(state::kSpring), 1.0f);
    control(*second, 21, 0);
    EXPECT_EQ(second->getParameter(state::kSpring), 0.0f);
    EXPECT_TRUE(std::none_of(host.calls.begin(), host.calls.end(),
                             [](const auto& call) { return call.opcode == audioMasterAutomate; }));

    EXPECT_EQ(folder.saved(state::kSpring), -2);
    first.reset();
    EXPECT_EQ(folder.saved(state::kSpring), 21);
    second->learnSlot().arm(state::kVolume);
    control(*second, 22, 64);
    EXPECT_EQ(second->getParameter(state::kVolume), 64.0f * (1.0f / 127.0f));
    second.reset();
    EXPECT_EQ(folder.saved(state::kVolume), 22);
    EXPECT_EQ(folder.saved(state::kPan), 20);

    const auto third = std::make_unique<VstSynth>(TestHost::callback);
    control(*third, 22, 127);
    EXPECT_EQ(third->getParameter(state::kVolume), 1.0f);
}

TEST(VstSynth, PlaysOnWhereItsMapCanNeitherBeReadNorWritten) {
    const DataFolder folder;
    const RecordedMessages messages;
    std::filesystem::create_directories(folder.applicationData.path() +
                                        "Quarzel Studio 9/Quarzel Strings/Pluginccmap.bin/folder");
    auto synth = std::make_unique<VstSynth>(nullptr);
    synth->learnSlot().arm(state::kSpring);
    EXPECT_TRUE(control(*synth, 21, 127));
    state::controllerMap().saveIfChanged();
    EXPECT_EQ(synth->getParameter(state::kSpring), 1.0f);
    EXPECT_TRUE(play(*synth, 0x90, 60, 100));
    synth.reset();
    EXPECT_TRUE(messages.all.empty());
}

TEST(VstSynth, PlaysFiniteWithWhateverControllerMap) {
    const DataFolder folder;
    const auto synth = std::make_unique<VstSynth>(nullptr);
    std::mt19937 random(13);
    for (int round = 0, rounds = mutationCount(100); round < rounds; ++round) {
        // Many small words, so that controllers meet bindings.
        std::string file = randomlyDamaged(std::string(168, '\0'), random);
        for (std::size_t i = 0; i < file.size(); i += 4)
            file[i] = static_cast<char>(random() % 128);
        folder.module.write("Pluginccmap.bin", file);
        state::controllerMap().load();
        ASSERT_TRUE(play(*synth, 0x90, 24 + round % 72, 100)) << round;
        ASSERT_TRUE(control(*synth, random() % 256, random() % 256)) << round;
    }
}

}  // namespace
}  // namespace plugin
