// The bank and the engine joined: every change is readable at once and reaches the engine when no
// other thread is using it.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "engine/sound_engine.h"
#include "engine/voice_allocator.h"
#include "state/bank.h"
#include "state/engine_gate.h"
#include "state/parameters.h"

namespace state {

// Any thread may call any operation but render and the chunk access, which belong to the audio
// thread and the host's user-interface thread. Nothing blocks or allocates after construction,
// but for the names.
//
// A new instrument has sent nothing to its engine: the first setProgram, with the bank and the rate
// as they are to be, does.
class Instrument {
  public:
    explicit Instrument(double sampleRate);
    // The same around an engine of the caller's choice.
    explicit Instrument(std::unique_ptr<engine::SoundEngine> engine);

    // Value as the program or the table holds it; 0 for an index past the table or below 0.
    float value(int index) const;
    // Other indices than parameters and kVoiceCountParam are ignored.
    void setValue(int index, float value);

    int program() const { return program_.load(std::memory_order_relaxed); }
    // Makes the program current and sends all its values to the engine. False, and nothing done,
    // out of range and while another program is being sent.
    bool setProgram(int program);
    // Sends the current program's values anew, after a program that is being sent.
    void resendProgram() { demand(kPushProgram); }

    // Hz; a rate that is not usable is ignored.
    void setSampleRate(double rate);

    // Audio thread. False, with both buffers untouched, when the engine could not be had.
    bool render(float* left, float* right, int frames, engine::EventSource& events);
    // Carries out what is still requested; no block is expected until the next one begins.
    void stopRendering();

    Bank& bank() { return bank_; }
    const Bank& bank() const { return bank_; }
    // For queries, and for the audio thread within a block.
    engine::SoundEngine& engine() { return *engine_; }
    const engine::SoundEngine& engine() const { return *engine_; }

  private:
    class RequestsFirst;
    // Requests: one bit a parameter, and these.
    static constexpr std::uint64_t kPushProgram = std::uint64_t{1} << kNumParams;
    static constexpr std::uint64_t kChangeRate = kPushProgram << 1;
    static constexpr std::uint64_t kChangeVoices = kPushProgram << 2;

    // Asks for the changes of `request`: at once, or before the renderer's next segment.
    void demand(std::uint64_t request);
    void carryOut(std::uint64_t requests);
    void carryOutPending();
    void apply(int index);
    float valueForEngine(int index) const;
    void pushProgram();

    Bank bank_;
    const std::unique_ptr<engine::SoundEngine> engine_;
    EngineGate gate_;
    std::atomic<int> program_{0};
    std::atomic<double> sampleRate_;
    std::atomic<int> voices_{engine::kInitialVoices};
    std::atomic<bool> pushing_{false};
    // What stands here has not reached the engine yet.
    std::atomic<std::uint64_t> requests_{0};
    // "HP" moves half way each time it is set, so its requests are counted.
    std::atomic<int> highPassMoves_{0};
};

}  // namespace state
