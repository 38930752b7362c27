// Event lists in blocks of odd sizes, with any settings. Compares the shipped engine on every
// instruction set with the literal one.
#include <algorithm>
#include <cmath>

#include "dsp/lanes/kernels.h"
#include "engine/engine.h"
#include "fuzz/support/instance.h"
#include "fuzz/support/target.h"
#include "fuzz/support/world.h"
#include "tests/reference/engine.h"

namespace {

constexpr float kRates[] = {44100.0f, 22050.0f, 48000.0f, 96000.0f, 192000.0f};
constexpr int kBlocks[] = {1, 2, 7, 16, 31, 32, 33, 64, 65, 99, 128};
constexpr int kMostFrames = 2000;
constexpr float kLoudest = 63.1f;  // +36 dBFS

std::vector<fuzz::Sound> play(std::string_view bytes, fuzz::Instance& instance) {
    fuzz::Input input(bytes);
    instance.dispatch(effSetSampleRate, 0, 0, nullptr, kRates[input.below(std::size(kRates))]);
    for (int count = input.below(16); count > 0; --count) {
        const int index = input.byte() % (state::kNumParams + 1);
        const float value = input.share();
        instance->setParameter(instance.record(),
                               index < state::kNumParams ? index : state::kVoiceCountParam, value);
    }
    std::vector<fuzz::Sound> sounds;
    fuzz::EventList events;
    for (int frames = 0; frames < kMostFrames && !input.empty();) {
        const int block = kBlocks[input.below(std::size(kBlocks))];
        events.clear();
        events.add(input, block);
        sounds.push_back(instance.render(block, events));
        frames += block;
    }
    return sounds;
}

std::vector<fuzz::Sound> playOn(dsp::InstructionSet set, std::string_view bytes) {
    dsp::useInstructionSet(set);
    fuzz::Instance instance;
    dsp::useInstructionSet(dsp::widestInstructionSet());
    return play(bytes, instance);
}

void run(std::string_view bytes) {
    const fuzz::World world;
    const auto shipped = playOn(dsp::widestInstructionSet(), bytes);
    for (const auto set : {dsp::InstructionSet::kBaseline, dsp::InstructionSet::kAvx2}) {
        fuzz::require(sameBits(shipped, playOn(set, bytes)),
                      "every instruction set gives the same bits");
    }

    fuzz::Instance instance(std::make_unique<reference::Engine>(44100.0));
    fuzz::require(sameBits(shipped, play(bytes, instance)), "both engines sound the same");
    for (const fuzz::Sound& sound : shipped) {
        for (const auto& channel : {sound.left, sound.right}) {
            for (const float x : channel) {
                fuzz::require(std::fabs(x) < kLoudest, "the sound is bounded");
            }
        }
    }
}

const fuzz::Registered registered("events", run);

}  // namespace
