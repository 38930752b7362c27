// The instrument whole, free of every plug-in format: programs, controllers, events and sound.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "editor/editor_host.h"
#include "engine/sound_engine.h"
#include "engine/voice_allocator.h"
#include "instrument/change_bits.h"
#include "instrument/engine_gate.h"
#include "instrument/host.h"
#include "instrument/event_queue.h"
#include "state/bank.h"
#include "state/controller_map.h"
#include "state/saved_state.h"

namespace instrument {

// Every change is readable at once, from any thread, and reaches the engine when no other thread is
// inside it: at once, or before the renderer's next segment.
//
// Threads: addMessage, addEvent, discardMessages, playMessagesUpTo and render belong to the audio
// thread; names, chunks and what the editor asks belong to the host's user-interface thread; any
// thread calls the rest. After start nothing blocks or allocates but the names and the chunks.
class Instrument final : public editor::EditorHost {
  public:
    // Host outlives the instrument. Nothing reaches the engine before start.
    explicit Instrument(Host& host);
    // The same around an engine of the caller's choice.
    Instrument(Host& host, std::unique_ptr<engine::SoundEngine> engine);
    ~Instrument() override;  // saves the controller map

    // Ends construction: loads the controller map and the default bank, and sends program 0 to the
    // engine at this rate (Hz; 44100 instead of one that is not usable). Call it once.
    void start(double sampleRate);

    // The rate from now on, in Hz; one that is not usable is ignored.
    void setSampleRate(double rate);
    // Around everything that is rendered. While stopped, changes are carried out at once, and
    // messages that no block has played are dropped.
    void resume();
    void suspend();

    // A message of the block that is rendered next, at its frame, in order of frames.
    void addMessage(int frame, const std::uint8_t* bytes) { events_.add(frame, bytes); }
    // The same for any event, given in any order of frames.
    void addEvent(const TimedEvent& event) { events_.insert(event); }
    // Drops the events added since the last block.
    void discardMessages() { events_.discard(); }
    // Plays the messages that are due at the frame, counted from 0; render does so itself. Returns
    // the number of the next message in the block, -1 when none is left.
    int playMessagesUpTo(int frame);
    // Renders `frames` samples of both sides. A block that cannot be played (no frames, no buffers,
    // another thread inside the engine) is silent and leaves its messages to the next one.
    void render(float* left, float* right, int frames);

    // Whether nothing sounds until something happens; for the audio thread.
    bool asleep() const { return engine_->asleep(); }

    // Parameters. An index outside the table reads as 0, but for the one past its end.
    int parameterCount() const override { return state::kNumParams; }
    float parameter(int index) const override;
    // Other indices than parameters and state::kVoiceCountParam are ignored.
    void setParameter(int index, float value) override;
    // setParameter, but for a value that the parameter has already.
    void changeParameter(int index, float value);
    void setParameterAutomated(int index, float value) override;
    void beginEdit(int index) override { host_.gestureBegins(index); }
    void endEdit(int index) override { host_.gestureEnds(index); }
    std::string parameterName(int index) const override;
    std::string parameterDisplay(int index) const override;
    std::string parameterLabel(int) const override { return ""; }
    std::uint64_t takeChangedParameters() override { return shown_.take(); }

    // Programs.
    int programCount() const override { return state::kNumPrograms; }
    int program() const override { return program_.load(std::memory_order_relaxed); }
    // Makes the program current and sends all its values to the engine. Nothing happens out of
    // range, and from within a program that is being sent.
    void setProgram(int program) override;
    std::string programName(int program) const override;
    void setProgramName(const char* name);                              // of the current one
    void renameProgram(int program, const std::string& name) override;  // and tells the host
    bool copyProgram(int destination);                                  // of the current one

    // Saved state. The bytes are live.
    state::BankChunk& bankChunk() { return bank_.chunk(); }
    state::ProgramRecord& programChunk() { return bank_.chunk().programs[program()]; }
    // Take what was saved and send the current program anew. A size that is not right is refused
    // with a message; a refused bank sends the program all the same: kept.
    void loadBankChunk(const void* data, std::int32_t size);
    void loadProgramChunk(const void* data, std::int32_t size);
    // The same for formats that save the whole instrument: bank and current program in one.
    state::SavedState savedState();
    void loadSavedState(const state::SavedState& saved);

    // What the editor shows of the sound.
    int heldNotes() const override { return engine_->heldNotes(); }
    int lastKey() const override { return engine_->lastKey(); }
    float outputLevel() const override { return engine_->outputLevel(); }
    int chorusTapCount() const override;
    float chorusTap(int tap) const override { return engine_->chorusTap(tap); }

    state::LearnSlot& learnSlot() override { return learnSlot_; }
    void sizeWindow(int width, int height) override { host_.resizeEditor(width, height); }

  private:
    // Requests: one bit a parameter, and these.
    static constexpr std::uint64_t kPushProgram = std::uint64_t{1} << state::kNumParams;
    static constexpr std::uint64_t kChangeRate = kPushProgram << 1;
    static constexpr std::uint64_t kChangeVoices = kPushProgram << 2;
    static_assert(state::kNumParams + 3 <= 64, "one word holds every request");
    static constexpr std::uint64_t kAllParameters = kPushProgram - 1;

    void sendProgram();

    // Asks for the changes of `requests`: at once, alone if the block is under way on this thread;
    // or before the renderer's next segment.
    void demand(std::uint64_t requests);
    void carryOut(std::uint64_t requests);
    void carryOutPending() { carryOut(requests_.take()); }
    void apply(int index);
    float valueForEngine(int index) const;
    void pushProgram();

    void letGoOfBoundControllers();
    void play(const TimedEvent& event);
    void playMessage(const std::uint8_t* message);
    // Moves the parameters that follow the controller; false when there are none.
    bool moveBoundParameters(int controller, int value);

    Host& host_;
    state::Bank bank_;
    const std::unique_ptr<engine::SoundEngine> engine_;
    EventQueue events_;
    state::LearnSlot learnSlot_;
    // Until start has run, parameters, programs and messages have no effect.
    std::atomic<bool> starting_{true};

    EngineGate gate_;
    std::atomic<int> program_{0};
    std::atomic<double> sampleRate_;
    std::atomic<int> voices_{engine::kInitialVoices};
    static constexpr std::uintptr_t kNoThread = 0;
    std::atomic<std::uintptr_t> pusher_{kNoThread};  // the thread that is sending a program
    ChangeBits requests_;                            // what has not reached the engine
    ChangeBits shown_;                               // what the editor has not seen
    // "HP" moves half way each time it is set, so its requests are counted.
    std::atomic<int> highPassMoves_{0};
};

}  // namespace instrument
