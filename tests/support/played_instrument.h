// An instrument without a plug-in format: takes messages, returns sound and the calls to its host.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "engine/engine.h"
#include "instrument/instrument.h"
#include "tests/support/sound.h"

// Records the calls that it receives.
class RecordingHost : public instrument::Host {
  public:
    void gestureBegins(int parameter) override { note("begin " + std::to_string(parameter)); }
    void edited(int parameter, float value) override {
        note("edit " + std::to_string(parameter) + ' ' + state::valueText(value));
    }
    void gestureEnds(int parameter) override { note("end " + std::to_string(parameter)); }
    void displayChanged(instrument::DisplayChange change) override {
        note(change == instrument::DisplayChange::kProgram ? "program" : "name");
    }
    void resizeEditor(int width, int height) override {
        note("size " + std::to_string(width) + ' ' + std::to_string(height));
    }

    // All calls since the last query, separated by semicolons.
    std::string calls() { return std::exchange(log_, std::string()); }

  private:
    void note(const std::string& call) { log_ += (log_.empty() ? "" : "; ") + call; }
    std::string log_;
};

class PlayedInstrument {
  public:
    explicit PlayedInstrument(double sampleRate = 44100.0)
        : PlayedInstrument(std::make_unique<engine::Engine>(sampleRate), sampleRate) {}
    explicit PlayedInstrument(std::unique_ptr<engine::SoundEngine> engine,
                              double sampleRate = 44100.0)
        : engine_(*engine),
          instrument_(std::make_unique<instrument::Instrument>(host_, std::move(engine))) {
        instrument_->start(sampleRate);
        instrument_->resume();
    }

    instrument::Instrument* operator->() { return instrument_.get(); }
    instrument::Instrument& operator*() { return *instrument_; }
    engine::SoundEngine& engine() { return engine_; }
    RecordingHost& host() { return host_; }

    // Queues a message for the next block.
    void send(int status, int data1, int data2 = 0, int frame = 0) {
        const std::uint8_t bytes[] = {static_cast<std::uint8_t>(status),
                                      static_cast<std::uint8_t>(data1),
                                      static_cast<std::uint8_t>(data2)};
        instrument_->addMessage(frame, bytes);
    }
    void noteOn(int key, int velocity = 100) { send(0x90, key, velocity); }
    void noteOff(int key) { send(0x80, key); }

    // Renders one block.
    tests::Sound render(int frames) {
        tests::Sound sound{std::vector<float>(frames), std::vector<float>(frames)};
        instrument_->render(sound.left.data(), sound.right.data(), frames);
        return sound;
    }

  private:
    RecordingHost host_;
    engine::SoundEngine& engine_;
    std::unique_ptr<instrument::Instrument> instrument_;
};
