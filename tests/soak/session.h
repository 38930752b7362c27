// One instance, used at random like a host and a hurried musician do. The fuzzers' instance checks
// every answer and sample.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "fuzz/support/instance.h"
#include "fuzz/support/target.h"
#include "gui/headless.h"
#include "plugin/vst2/editor_adapter.h"

namespace soak {

// Totals over all sessions.
struct Findings {
    float peak = 0.0f;            // highest sample, full scale 1
    double slowestSilence = 0.0;  // seconds from all notes off to lasting exact zeros
    long events = 0, editors = 0, instances = 0;
};

class Session {
  public:
    Session(unsigned seed, VSTGUI::headless::HeldClock& clock, Findings& findings)
        : random_(seed), clock_(clock), findings_(findings) {
        ++findings_.instances;
        changeRate();
    }

    // Dense playing: notes, wheels, controllers, programs, automation, in blocks of many sizes.
    void play(double seconds) {
        constexpr unsigned char kStatus[] = {0x90, 0x90, 0x90, 0x90, 0x80, 0x80,
                                             0x80, 0x80, 0xE0, 0xB0, 0x80};
        for (int left = static_cast<int>(seconds * rate_); left > 0;) {
            const int frames = std::min(left, 1 + below(1024));
            int frame = 0;
            for (int count = below(3); count > 0; --count) {
                frame += below(frames / 2 + 1);
                const unsigned char status = below(250) == 0 ? 0xC0 : kStatus[below(11)];
                send(frame, status, 24 + below(80), below(128));
            }
            if (below(4) == 0) disturb();
            render(frames);
            left -= frames;
        }
    }
    // Changes the rate, with or without a pause.
    void changeRate() {
        constexpr float kRates[] = {22050.0f, 44100.0f, 48000.0f, 88200.0f, 96000.0f};
        setRate(kRates[below(5)], below(2) == 0);
    }
    // Saves the bank or program, disturbs it and restores it.
    void saveAndRestore() {
        const bool isPreset = below(2) == 0;
        const std::string saved = instance_.chunk(isPreset);
        for (int i = 0; i < 20; ++i) disturb();
        instance_.setChunk(saved, isPreset);
        fuzz::require(instance_.chunk(isPreset) == saved, "a chunk comes back as it was");
    }
    // Opens the editor, drags and clicks in it, sometimes learns a controller, and closes it.
    void visitEditor() {
        namespace headless = VSTGUI::headless;
        fuzz::require(instance_.dispatch(effEditOpen, 0, 0, this) == 1, "an editor opens");
        auto& synth = instance_.synth();
        auto& frame = *static_cast<vst2::EditorAdapter*>(synth.getEditor())->editor().getFrame();
        const auto somewhere = [&] { return VSTGUI::CPoint(below(900), below(600)); };
        for (int i = 0; i < 10; ++i) {
            headless::press(frame, somewhere());
            headless::move(frame, somewhere());
            headless::release(frame, somewhere());
            if (i == 5) headless::wheel(frame, somewhere(), 1.0);
            if (i == 7 && below(4) == 0) {
                synth.instrument().learnSlot().arm(below(state::kNumParams));
                send(0, 0xB0, 1 + below(119), below(128));
            }
            disturb();
            instance_.dispatch(effEditIdle);
            clock_.run(frame, 100);
            play(0.01);
        }
        headless::picture(frame);
        instance_.dispatch(effEditClose);
        ++findings_.editors;
    }
    // Ends all notes and renders until the sound has ended and the instance sleeps.
    void fallSilent() {
        // The shortest release, four seconds of watching, and a second for its proof.
        constexpr double kSlowest = 5, kProof = 1;
        instance_.setParameter(state::kEnvRelease, 0.0f);
        send(0, 0xB0, 123, 0);
        double now = 0.0, lastSound = 0.0;
        while (now - lastSound < kProof && lastSound <= kSlowest) {
            if (!render(kProbe) || !instance_.synth().instrument().asleep()) lastSound = now;
            now += kProbe / rate_;
        }
        findings_.slowestSilence = std::max(findings_.slowestSilence, lastSound);
        fuzz::require(lastSound <= kSlowest, "silence comes in time");
    }

    // Median ns per sample of a fixed chord with fresh settings at 44.1 kHz, and of the sleep after
    // it.
    struct Cost {
        double sounding;
        double asleep;
    };
    Cost measureCost() {
        setRate(44100.0f, true);
        state::Bank fresh;
        instance_.setChunk({reinterpret_cast<const char*>(&fresh.chunk()), sizeof fresh.chunk()},
                           false);
        instance_.setParameter(state::kVoiceCountParam, 1.0f);
        for (int key = 40; key < 56; ++key) send(0, 0x90, key, 100);
        Cost cost = {};
        cost.sounding = medianBlock();
        fallSilent();
        cost.asleep = medianBlock();
        return cost;
    }

  private:
    static constexpr int kProbe = 256;  // frames

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    void send(int frame, int status, int data1, int data2) {
        events_.add(frame, kVstMidiType,
                    {static_cast<unsigned char>(status), static_cast<unsigned char>(data1),
                     static_cast<unsigned char>(data2)});
        ++findings_.events;
    }
    void setRate(float rate, bool pause) {
        rate_ = rate;
        if (pause) instance_.dispatch(effMainsChanged, 0, 0);
        instance_.dispatch(effSetSampleRate, 0, 0, nullptr, rate);
        if (pause) instance_.dispatch(effMainsChanged, 0, 1);
    }
    void disturb() {
        const int index = below(50) == 0 ? state::kVoiceCountParam : below(state::kNumParams);
        instance_->setParameter(instance_.record(), index, static_cast<float>(below(1001)) / 1000);
    }
    // Renders with the sent events. Returns whether all samples are exact zeros.
    bool render(int frames) {
        const fuzz::Sound sound = instance_.render(frames, events_);
        events_.clear();
        float loudest = 0.0f;
        for (int i = 0; i < frames; ++i) {
            loudest = std::max({loudest, std::fabs(sound.left[i]), std::fabs(sound.right[i])});
        }
        // The reverb's limit of 4, amplified twice by 4.
        fuzz::require(loudest <= 64.0f, "the sound is bounded");
        findings_.peak = std::max(findings_.peak, loudest);
        return loudest == 0.0f;
    }
    double medianBlock() {
        using Clock = std::chrono::steady_clock;
        std::vector<double> times;
        for (int i = 0; i < 300; ++i) {
            const auto start = Clock::now();
            render(kProbe);
            const std::chrono::duration<double, std::nano> taken = Clock::now() - start;
            times.push_back(taken.count() / kProbe);
        }
        std::nth_element(times.begin(), times.begin() + 150, times.end());
        return times[150];
    }

    std::mt19937 random_;
    VSTGUI::headless::HeldClock& clock_;
    Findings& findings_;
    fuzz::Instance instance_;
    fuzz::EventList events_;
    float rate_ = 44100.0f;
};

}  // namespace soak
