// The whole instrument through the plug-in interface, with the engine that ships and the literal
// one.
#include <fstream>
#include <memory>
#include <sstream>
#include <utility>

#include "banks/bank_source.h"
#include "bench/bench_support.h"
#include "dsp/lanes/kernels.h"
#include "engine/engine.h"
#include "plugin/vst_synth.h"
#include "tests/reference/engine.h"

namespace bench {
namespace {

// One instance as a host plays it.
class Host {
  public:
    explicit Host(std::unique_ptr<engine::SoundEngine> engine)
        : synth_(std::make_unique<plugin::VstSynth>(nullptr, std::move(engine))) {
        synth_->resume();
    }

    void set(int index, float value) { synth_->setParameter(index, value); }

    void noteOn(int key) { send(0x90, key, 100); }
    void noteOff(int key) { send(0x80, key, 0); }

    void render(float* left, float* right, int frames) {
        float* outputs[] = {left, right};
        synth_->processReplacing(nullptr, outputs, frames);
    }

  private:
    void send(int status, int key, int velocity) {
        VstMidiEvent midi{};
        midi.type = kVstMidiType;
        midi.byteSize = sizeof midi;
        midi.midiData[0] = static_cast<char>(status);
        midi.midiData[1] = static_cast<char>(key);
        midi.midiData[2] = static_cast<char>(velocity);
        VstEvents list{};
        list.numEvents = 1;
        list.events[0] = reinterpret_cast<VstEvent*>(&midi);
        synth_->processEvents(&list);
        float left[1], right[1];
        render(left, right, 1);
    }

    std::unique_ptr<plugin::VstSynth> synth_;
};

// Every section and effect on, short attack, slow release.
void useEverything(Host& host) {
    using namespace state;
    for (int index = kViola; index <= kCello; ++index) host.set(index, 0.5f);
    for (int index = kViola2; index <= kCello2; ++index) host.set(index, 1.0f);
    host.set(kVoiceCountParam, 1.0f);
    host.set(kConfigs, 1.0f);
    host.set(kEnvAttack, 0.1f);
    host.set(kChorus, 1.0f);
    host.set(kPhaser, 1.0f);
    host.set(kStages, 0.8f);
    host.set(kReverb, 1.0f);
    host.set(kSpring, 0.5f);
}

template <typename Engine>
void held(benchmark::State& state) {
    Host host(std::make_unique<Engine>(kRate));
    useEverything(host);
    for (int i = 0; i < state.range(0); ++i) host.noteOn(40 + i);
    timeBlocks(state, [&](float* l, float* r, int n) { host.render(l, r, n); });
}

// As on a processor without AVX2.
void heldOnBaseline(benchmark::State& state) {
    dsp::useInstructionSet(dsp::InstructionSet::kBaseline);
    held<engine::Engine>(state);
    dsp::useInstructionSet(dsp::widestInstructionSet());
}

// All voices in their release, which lasts 40 s.
template <typename Engine>
void decaying(benchmark::State& state) {
    Host host(std::make_unique<Engine>(kRate));
    useEverything(host);
    host.set(state::kEnvRelease, 1.0f);
    for (int i = 0; i < state.range(0); ++i) host.noteOn(40 + i);
    for (int i = 0; i < state.range(0); ++i) host.noteOff(40 + i);
    int blocks = 0;
    timeBlocks(state, [&](float* l, float* r, int n) {
        // Struck again before the first of them ends.
        if (++blocks % 4096 == 0) {
            for (int i = 0; i < state.range(0); ++i) host.noteOn(40 + i);
            for (int i = 0; i < state.range(0); ++i) host.noteOff(40 + i);
        }
        host.render(l, r, n);
    });
}

// The effects behind the last voice.
template <typename Engine>
void tail(benchmark::State& state) {
    Host host(std::make_unique<Engine>(kRate));
    useEverything(host);
    host.set(state::kEnvRelease, 0.0f);
    int blocks = 0;
    timeBlocks(state, [&](float* l, float* r, int n) {
        if (blocks++ % 1024 == 0) {
            host.noteOn(60);
            host.noteOff(60);
        }
        host.render(l, r, n);
    });
}

template <typename Engine>
void asleep(benchmark::State& state) {
    Host host(std::make_unique<Engine>(kRate));
    float left[kBlock], right[kBlock];
    for (int frame = 0; frame < 20 * kRate; frame += kBlock) host.render(left, right, kBlock);
    timeBlocks(state, [&](float* l, float* r, int n) { host.render(l, r, n); });
}

banks::BankSource factoryBank() {
    std::ifstream file(QUARZEL_FACTORY_BANK);
    std::stringstream text;
    text << file.rdbuf();
    return banks::parseBankSource(text.str());
}

// Every factory program in turn, a chord of eight keys from the bass up; a run of blocks each.
void programs(benchmark::State& state) {
    const banks::BankSource source = factoryBank();
    Host host(std::make_unique<engine::Engine>(kRate));
    int blocks = 0;
    timeBlocks(state, [&](float* l, float* r, int n) {
        if (blocks % 64 == 0) {
            const int program = blocks / 64 % source.programs;
            for (int i = 0; i < 8; ++i) host.noteOff(38 + 5 * i);
            for (int index = 0; index < state::kNumParams; ++index) {
                host.set(index, source.bank.value(program, index));
            }
            for (int i = 0; i < 8; ++i) host.noteOn(38 + 5 * i);
        }
        ++blocks;
        host.render(l, r, n);
    });
}

using Fast = engine::Engine;
using Literal = reference::Engine;
BENCHMARK(held<Fast>)->Name("instrument/held")->Arg(44)->Arg(10)->Arg(1)->UseManualTime();
BENCHMARK(decaying<Fast>)->Name("instrument/release")->Arg(44)->Arg(10)->UseManualTime();
BENCHMARK(tail<Fast>)->Name("instrument/tail")->UseManualTime();
BENCHMARK(programs)->Name("instrument/programs")->UseManualTime();
BENCHMARK(asleep<Fast>)->Name("instrument/asleep")->UseManualTime();
BENCHMARK(heldOnBaseline)->Name("baseline/held")->Arg(44)->Arg(10)->Arg(1)->UseManualTime();
BENCHMARK(held<Literal>)->Name("literal/held")->Arg(44)->Arg(10)->Arg(1)->UseManualTime();
BENCHMARK(asleep<Literal>)->Name("literal/asleep")->UseManualTime();

}  // namespace
}  // namespace bench
