// One instance, used at random like a host and a hurried musician do.
#pragma once

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "gui/headless.h"
#include "plugin/vst2/vst_synth.h"

namespace soak {

// Totals over all sessions. A complaint fails the run.
struct Findings {
    float peak = 0.0f;            // highest sample, full scale 1
    double slowestSilence = 0.0;  // seconds from all notes off to lasting exact zeros
    long events = 0, editors = 0, instances = 0, rateChanges = 0, chunks = 0;
    std::vector<std::string> complaints;
};

class Session {
  public:
    Session(unsigned seed, VSTGUI::headless::HeldClock& clock, Findings& findings);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Dense playing: notes, wheels, controllers, programs, automation, in blocks of many sizes.
    void play(double seconds);
    // Changes the rate, with or without a pause.
    void changeRate();
    // Saves the bank or program, disturbs it and restores it.
    void saveAndRestore();
    // Opens the editor, drags and clicks in it, sometimes learns a controller, and closes it.
    void visitEditor();
    // Ends all notes and renders until the sound has ended.
    void fallSilent();

    // Median ns per sample of a fixed chord with fresh settings at 44.1 kHz, and of the sleep after
    // it.
    struct Cost {
        double sounding;
        double asleep;
    };
    Cost measureCost();

  private:
    static constexpr int kLargestBlock = 1024;

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    float value() { return static_cast<float>(random_() % 1001) / 1000.0f; }
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f);
    void setRate(float rate);
    void queue(int status, int data1, int data2, int frame);
    void queueAtRandom(int frames);
    void disturb();
    // Renders with the queued events. Returns whether all samples are exact zeros.
    bool render(int frames);
    double medianBlock(int blocks);

    std::mt19937 random_;
    VSTGUI::headless::HeldClock& clock_;
    Findings& findings_;
    std::unique_ptr<vst2::VstSynth> synth_;
    float rate_ = 44100.0f;
    std::vector<VstMidiEvent> queued_;
    std::vector<char> eventList_;
    std::vector<float> left_ = std::vector<float>(kLargestBlock);
    std::vector<float> right_ = std::vector<float>(kLargestBlock);
};

}  // namespace soak
