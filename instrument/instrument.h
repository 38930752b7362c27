// The whole instrument, independent of plug-in formats: programs, controllers, events and sound.
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
#include "instrument/key_presses.h"
#include "state/bank.h"
#include "state/controller_map.h"
#include "state/saved_state.h"

namespace instrument {

// Every thread can read a change back at once. The change reaches the engine at once if no other
// thread is inside it, else before the renderer's next segment.
//
// Threads: addMessage, addEvent, discardEvents, playEventsUpTo and render belong to the audio
// thread. Names, chunks and the editor's queries belong to the host's user-interface thread. Any
// thread may call the rest. After start, only names and chunks may block or allocate.
//
// "intentional" marks an oddity that saved sessions and hosts depend on.
class Instrument final : public editor::EditorHost {
  public:
    // `host` must outlive the instrument. Nothing reaches the engine before start.
    explicit Instrument(Host& host);
    // Uses the given engine.
    Instrument(Host& host, std::unique_ptr<engine::SoundEngine> engine);
    ~Instrument() override;  // saves the controller map

    // Call once, after construction. Loads the controller map and the default bank, and sends
    // program 0 to the engine. `sampleRate` is in Hz; an unusable rate becomes 44100.
    void start(double sampleRate);

    // In Hz; an unusable rate is ignored.
    void setSampleRate(double rate);
    // Call resume before the first block and suspend after the last. Both drop pending messages.
    // While suspended, changes reach the engine at once.
    void resume();
    void suspend();

    // Adds a message (3 bytes) to the next block. Messages must come in order of their frames.
    void addMessage(int frame, const std::uint8_t* bytes) { events_.add(frame, bytes); }
    // Adds any event to the next block, in any order of frames.
    void addEvent(const TimedEvent& event) { events_.insert(event); }
    // Drops the events added since the last block.
    void discardEvents() { events_.discard(); }
    // Plays the events that are due at `frame`, counted from 0. render does this itself. Returns
    // the index of the next event in the block, or -1 if none is left.
    int playEventsUpTo(int frame);
    // Renders `frames` frames. A block that cannot be played (no frames, no buffers, another thread
    // inside the engine) is silent, and its messages move to the next one.
    void render(float* left, float* right, int frames);

    // Audio thread. While asleep, the instrument stays silent until the next event.
    bool asleep() const { return engine_->asleep(); }

    // Parameters. An index outside the table reads as 0. intentional: the first index past its end
    // reads Bank::valuePastTable.
    int parameterCount() const override { return state::kNumParams; }
    float parameter(int index) const override;
    // Ignores every index except parameters and state::kVoiceCountParam.
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
    // Selects the program and sends all its values to the engine. Ignored if out of range, or if
    // called while this thread is sending a program.
    void setProgram(int program) override;
    std::string programName(int program) const override;
    void setProgramName(const char* name);                              // current program
    void renameProgram(int program, const std::string& name) override;  // also tells the host
    bool copyProgram(int destination);                                  // from the current program

    // Saved state: the live bytes, not copies.
    state::BankChunk& bankChunk() { return bank_.chunk(); }
    state::ProgramRecord& programChunk() { return bank_.chunk().programs[program()]; }
    // Load saved bytes and send the current program again. A wrong size is refused with a message.
    // intentional: a refused bank still sends the program.
    void loadBankChunk(const void* data, std::int32_t size);
    void loadProgramChunk(const void* data, std::int32_t size);
    // Replaces a program and selects it.
    void loadProgram(int program, const state::ProgramRecord& record) override;
    // The same, but what was loaded stays what it is.
    void putProgram(int program, const state::ProgramRecord& record) override;
    state::ProgramRecord programRecord(int program) const override;
    state::ProgramRecord loadedProgram(int program) const override;
    // The same for formats that save the whole instrument: bank and current program in one.
    state::SavedState savedState() override;
    void loadSavedState(const state::SavedState& saved) override;

    // What the editor shows about the sound.
    int heldNotes() const override { return engine_->heldNotes(); }
    int lastKey() const override { return engine_->lastKey(); }
    std::bitset<128> heldKeys() const override { return engine_->heldKeys(); }
    void playKey(int key, int velocity) override;
    const state::ToneCurve& toneCurve() override;
    editor::OutputPeaks takeOutputPeaks() override {
        const engine::StereoPeaks peaks = engine_->takePeaks();
        return {peaks.left, peaks.right};
    }
    int chorusTapCount() const override;
    float chorusTap(int tap) const override { return engine_->chorusTap(tap); }

    state::LearnSlot& learnSlot() override { return learnSlot_; }
    bool sizeWindow(int width, int height) override { return host_.resizeEditor(width, height); }

  private:
    // Requests: one bit per parameter, and these.
    static constexpr std::uint64_t kPushProgram = std::uint64_t{1} << state::kNumParams;
    static constexpr std::uint64_t kChangeRate = kPushProgram << 1;
    static constexpr std::uint64_t kChangeVoices = kPushProgram << 2;
    static_assert(state::kNumParams + 3 <= 64, "one word holds every request");
    static constexpr std::uint64_t kAllParameters = kPushProgram - 1;

    void sendProgram();
    void rememberLoaded(int program);
    void rememberLoadedBank();

    // Carries `requests` out at once if this thread may enter the engine. Otherwise the renderer
    // does so before its next segment. Inside a block of this thread, other pending requests wait.
    void demand(std::uint64_t requests);
    void carryOut(std::uint64_t requests);
    void carryOutPending() { carryOut(requests_.take()); }
    void apply(int index);
    float valueForEngine(int index) const;
    void pushProgram();

    void letGoOfBoundControllers();
    void play(const TimedEvent& event);
    void playMessage(const std::uint8_t* message);
    // Moves the parameters bound to the controller; returns false if there are none.
    bool moveBoundParameters(int controller, int value);

    Host& host_;
    state::Bank bank_;
    state::Bank loaded_;  // as it came, for the editor
    const std::unique_ptr<engine::SoundEngine> engine_;
    EventQueue events_;
    KeyPresses keyPresses_;
    state::LearnSlot learnSlot_;
    std::uint32_t mapChanges_ = 0;  // of the controller map, up to the last block
    // Until start has run, parameters, programs and messages have no effect.
    std::atomic<bool> starting_{true};

    EngineGate gate_;
    std::atomic<int> program_{0};
    std::atomic<double> sampleRate_;
    std::atomic<int> voices_{engine::kInitialVoices};
    static constexpr std::uintptr_t kNoThread = 0;
    std::atomic<std::uintptr_t> pusher_{kNoThread};  // the thread that is sending a program
    ChangeBits requests_;                            // changes that have not reached the engine
    ChangeBits shown_;                               // changes that the editor has not seen
    // "HP" moves halfway each time it is set, so its requests are counted.
    std::atomic<int> highPassMoves_{0};
    // What the editor has been shown.
    state::ToneSettings toneSettings_;
    state::ToneCurve toneCurve_;
};

}  // namespace instrument
