// Uses one instance at random and checks its output.
#include "tests/soak/session.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstring>

#include "plugin/vst2/editor_adapter.h"
#include "state/bank.h"

namespace soak {
namespace {

namespace headless = VSTGUI::headless;

constexpr float kRates[] = {22050.0f, 44100.0f, 48000.0f, 88200.0f, 96000.0f};
constexpr float kLoudest = 64.0f;      // the reverb's limit of 4, amplified twice by 4
constexpr double kSlowestSilence = 5;  // seconds: the shortest release, then four of watching
constexpr double kPatience = 20;       // seconds
constexpr int kProbeBlock = 256;

// The host of all sessions. It only answers its version.
VstIntPtr hostAnswer(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
    return opcode == audioMasterVersion ? kVstVersion : 0;
}

}  // namespace

Session::Session(unsigned seed, headless::HeldClock& clock, Findings& findings)
    : random_(seed),
      clock_(clock),
      findings_(findings),
      synth_(std::make_unique<vst2::VstSynth>(hostAnswer)) {
    ++findings_.instances;
    setRate(rate_);
}

Session::~Session() = default;

VstIntPtr Session::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                            float opt) {
    AEffect* const record = synth_->getAeffect();
    return record->dispatcher(record, opcode, index, value, ptr, opt);
}

void Session::setRate(float rate) {
    rate_ = rate;
    dispatch(effMainsChanged, 0, 0);
    dispatch(effSetSampleRate, 0, 0, nullptr, rate);
    dispatch(effSetBlockSize, 0, kLargestBlock);
    dispatch(effMainsChanged, 0, 1);
}

void Session::queue(int status, int data1, int data2, int frame) {
    VstMidiEvent midi = {};
    midi.type = kVstMidiType;
    midi.byteSize = sizeof midi;
    midi.deltaFrames = frame;
    midi.midiData[0] = static_cast<char>(status);
    midi.midiData[1] = static_cast<char>(data1);
    midi.midiData[2] = static_cast<char>(data2);
    queued_.push_back(midi);
}

void Session::queueAtRandom(int frames) {
    for (int count = below(3); count > 0; --count) {
        const int frame = below(frames);
        switch (below(12)) {
            case 0:
                queue(0xE0, 0, below(128), frame);
                break;
            case 1:
                queue(0xB0, 1 + below(119), below(128), frame);
                break;
            case 2:
                if (below(20) == 0) queue(0xC0, below(128), 0, frame);
                break;
            case 3:
            case 4:
            case 5:
            case 6:
                queue(0x90, 24 + below(80), 1 + below(127), frame);
                break;
            default:
                queue(0x80, 24 + below(80), 0, frame);
        }
    }
    std::sort(queued_.begin(), queued_.end(), [](const VstMidiEvent& a, const VstMidiEvent& b) {
        return a.deltaFrames < b.deltaFrames;
    });
}

bool Session::render(int frames) {
    const std::size_t head = offsetof(VstEvents, events);
    eventList_.resize(head + queued_.size() * sizeof(VstEvent*));
    auto* const list = reinterpret_cast<VstEvents*>(eventList_.data());
    list->numEvents = static_cast<VstInt32>(queued_.size());
    list->reserved = 0;
    for (std::size_t i = 0; i < queued_.size(); ++i) {
        const VstMidiEvent* const event = &queued_[i];
        std::memcpy(eventList_.data() + head + i * sizeof event, &event, sizeof event);
    }
    if (!queued_.empty()) dispatch(effProcessEvents, 0, 0, list);
    float* outputs[] = {left_.data(), right_.data()};
    AEffect* const record = synth_->getAeffect();
    record->processReplacing(record, nullptr, outputs, frames);
    findings_.events += static_cast<long>(queued_.size());
    queued_.clear();

    bool silent = true;
    for (int i = 0; i < frames; ++i) {
        const float level = std::max(std::fabs(left_[i]), std::fabs(right_[i]));
        if (!std::isfinite(left_[i]) || !std::isfinite(right_[i]) || level > kLoudest) {
            findings_.complaints.push_back("a sample of " + std::to_string(left_[i]) + ", " +
                                           std::to_string(right_[i]));
            break;
        }
        findings_.peak = std::max(findings_.peak, level);
        silent = silent && level == 0.0f;
    }
    return silent;
}

void Session::disturb() {
    AEffect* const record = synth_->getAeffect();
    record->setParameter(record, below(state::kNumParams), value());
    if (below(50) == 0) record->setParameter(record, state::kVoiceCountParam, value());
}

void Session::play(double seconds) {
    for (int left = static_cast<int>(seconds * rate_); left > 0;) {
        const int frames = std::min(left, 1 + below(kLargestBlock));
        queueAtRandom(frames);
        if (below(4) == 0) disturb();
        if (below(400) == 0) dispatch(effSetProgram, 0, below(128));
        render(frames);
        left -= frames;
    }
}

void Session::changeRate() {
    const float rate = kRates[below(std::size(kRates))];
    if (below(2) == 0) {
        setRate(rate);
    } else {
        rate_ = rate;
        dispatch(effSetSampleRate, 0, 0, nullptr, rate);
    }
    ++findings_.rateChanges;
}

void Session::saveAndRestore() {
    const int isPreset = below(2);
    void* data = nullptr;
    const VstIntPtr size = dispatch(effGetChunk, isPreset, 0, &data);
    const std::vector<char> saved(static_cast<char*>(data), static_cast<char*>(data) + size);
    for (int i = 0; i < 20; ++i) disturb();
    std::vector<char> chunk = saved;
    dispatch(effSetChunk, isPreset, size, chunk.data());
    dispatch(effGetChunk, isPreset, 0, &data);
    if (std::memcmp(data, saved.data(), saved.size()) != 0) {
        findings_.complaints.push_back("a chunk that came back changed");
    }
    ++findings_.chunks;
}

void Session::visitEditor() {
    if (dispatch(effEditOpen, 0, 0, this) != 1) {
        findings_.complaints.push_back("an editor that did not open");
        return;
    }
    auto& frame = *static_cast<vst2::EditorAdapter*>(synth_->getEditor())->editor().getFrame();
    const auto somewhere = [&] { return VSTGUI::CPoint(below(900), below(600)); };
    for (int i = 0; i < 10; ++i) {
        const auto from = somewhere();
        headless::press(frame, from);
        headless::move(frame, somewhere());
        headless::release(frame, somewhere());
        if (i == 5) headless::wheel(frame, somewhere(), 1.0);
        disturb();
        dispatch(effEditIdle);
        clock_.run(frame, 100);
        play(0.01);
    }
    if (below(4) == 0) {
        synth_->instrument().learnSlot().arm(below(state::kNumParams));
        queue(0xB0, 1 + below(119), below(128), 0);
        render(64);
        dispatch(effEditIdle);
    }
    headless::picture(frame);
    dispatch(effEditClose);
    ++findings_.editors;
}

void Session::fallSilent() {
    AEffect* const record = synth_->getAeffect();
    record->setParameter(record, state::kEnvRelease, 0.0f);
    queue(0xB0, 123, 0, 0);
    double now = 0.0, lastSound = 0.0;
    // Wait for lasting silence: asleep, and one more second.
    while (now < kPatience && now - lastSound < 1.0) {
        if (!render(kProbeBlock) || !synth_->instrument().asleep()) lastSound = now;
        now += kProbeBlock / rate_;
    }
    findings_.slowestSilence = std::max(findings_.slowestSilence, lastSound);
    if (lastSound > kSlowestSilence) {
        findings_.complaints.push_back("silence only after " + std::to_string(lastSound) + " s");
    }
}

double Session::medianBlock(int blocks) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> times;
    for (int i = 0; i < blocks; ++i) {
        const auto start = Clock::now();
        render(kProbeBlock);
        const std::chrono::duration<double, std::nano> taken = Clock::now() - start;
        times.push_back(taken.count() / kProbeBlock);
    }
    std::nth_element(times.begin(), times.begin() + blocks / 2, times.end());
    return times[static_cast<std::size_t>(blocks / 2)];
}

Session::Cost Session::measureCost() {
    setRate(44100.0f);
    state::Bank fresh;
    dispatch(effSetChunk, 0, sizeof fresh.chunk(), &fresh.chunk());
    AEffect* const record = synth_->getAeffect();
    record->setParameter(record, state::kVoiceCountParam, 1.0f);
    for (int key = 40; key < 56; ++key) queue(0x90, key, 100, 0);
    Cost cost = {};
    cost.sounding = medianBlock(300);
    fallSilent();
    cost.asleep = medianBlock(300);
    return cost;
}

}  // namespace soak
