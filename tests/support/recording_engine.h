// A silent engine that records the calls that it receives.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

#include "engine/sound_engine.h"

// All calls in order, separated by spaces: "volume=0.3 reset level:brass=0.1".
class EngineLog {
  public:
    void add(const std::string& call) { text_ += (text_.empty() ? "" : " ") + call; }
    void add(const std::string& what, double value) {
        char number[32];
        std::snprintf(number, sizeof number, "=%.7g", value);
        add(what + number);
    }
    std::string take() { return std::exchange(text_, std::string()); }

  private:
    std::string text_;
};

class RecordingEngine : public engine::SoundEngine {
  public:
    EngineLog log;

    void setSampleRate(double rate) override {
        log.add("rate", rate);
        rate_ = rate;
    }
    double sampleRate() const override { return rate_; }
    void beginBlock() override {}
    int render(float* left, float* right, int frames) override {
        std::fill_n(left, frames, 0.0f);
        std::fill_n(right, frames, 0.0f);
        log.add("render", frames);
        return frames;
    }
    void endBlock(float*, float*, int) override {}
    void reset() override { log.add("reset"); }

    void noteOn(int key, int velocity) override {
        log.add("note-on=" + std::to_string(key) + '/' + std::to_string(velocity));
    }
    void noteOff(int key) override { log.add("note-off", key); }
    void allNotesOff() override { log.add("all-notes-off"); }
    void allSoundOff() override { log.add("all-sound-off"); }
    void resetControllers() override { log.add("reset-controllers"); }
    void setPedal(bool down) override { log.add("pedal", down); }
    void setPitchBend(int value) override { log.add("bend", value); }
    void setExpression(float gain) override { log.add("expression", gain); }
    void wake() override {}
    bool asleep() const override { return false; }

    void setPolyphony(int voices) override { log.add("polyphony", voices); }
    int polyphony() const override { return 43; }

    void setVolume(float v) override { log.add("volume", v); }
    void setPitchOffset(float v) override { log.add("pitch-offset", v); }
    void setHighPass(float v) override { log.add("high-pass", v); }
    void setBrightness(float v) override { log.add("brightness", v); }
    void setWaveform(engine::Waveform v) override { log.add("waveform", static_cast<int>(v)); }
    void setSharedEnvelope(float v) override { log.add("shared-envelope", v); }
    void setViolinPhase(float v) override { log.add("violin-phase", v); }
    void setVelocityAmount(float v) override { log.add("velocity", v); }
    void setAttackTime(float v) override { log.add("attack", v); }
    void setDecayTime(float v) override { log.add("decay", v); }
    void setSustain(float v) override { log.add("sustain", v); }
    void setRelease(const engine::ReleaseTime& v) override { log.add("release", v.span); }
    void setSectionLevel(engine::Section s, float v) override {
        log.add(std::string("level:") + kSections[s], v);
    }
    void setSectionSwitch(engine::Section s, float v) override {
        log.add(std::string("switch:") + kSections[s], v);
    }
    void setKeySplit(float v) override { log.add("split", v); }

    engine::ChorusControl& chorus() override { return chorus_; }
    engine::PhaserControl& phaser() override { return phaser_; }
    engine::ReverbControl& reverb() override { return reverb_; }

    int heldNotes() const override { return 0; }
    int lastKey() const override { return -1; }
    float chorusTap(int) const override { return 0.0f; }
    void forgetHeldNotes() override {}

  private:
    static constexpr const char* kSections[] = {"viola", "violin",     "brass",
                                                "horn",  "contrabass", "cello"};
    struct Chorus : engine::ChorusControl {
        explicit Chorus(EngineLog& to) : log(to) {}
        void setOn(bool v) override { log.add("chorus", v); }
        void setSlowDepth(float v) override { log.add("slow-depth", v); }
        void setFastDepth(float v) override { log.add("fast-depth", v); }
        void setWide(float v) override { log.add("wide", v); }
        void setStereo(float v) override { log.add("stereo", v); }
        void setDryAdd(float v) override { log.add("dry-add", v); }
        EngineLog& log;
    };
    struct Phaser : engine::PhaserControl {
        explicit Phaser(EngineLog& to) : log(to) {}
        void setDefaults() override { log.add("phaser-defaults"); }
        void setOn(bool v) override { log.add("phaser", v); }
        void setRateControl(float v) override { log.add("phaser-rate", v); }
        void setDepthControl(float v) override { log.add("phaser-depth", v); }
        void setFeedback(float v) override { log.add("phaser-feedback", v); }
        void setStages(float v) override { log.add("phaser-stages", v); }
        EngineLog& log;
    };
    struct Reverb : engine::ReverbControl {
        explicit Reverb(EngineLog& to) : log(to) {}
        void setOn(bool v) override { log.add("reverb", v); }
        void set(const engine::ReverbSettings& v) override { log.add("reverb-settings", v.mix); }
        void setMix(float v) override { log.add("mix", v); }
        void setSize(float v) override { log.add("size", v); }
        void setBrite(float v) override { log.add("brite", v); }
        void setSpring(float v) override { log.add("spring", v); }
        EngineLog& log;
    };

    double rate_ = 44100.0;
    Chorus chorus_{log};
    Phaser phaser_{log};
    Reverb reverb_{log};
};
