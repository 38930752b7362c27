// Blocks: points and events to their frames, sound into the host's buffers.
#include <algorithm>
#include <cmath>

#include "plugin/block.h"
#include "plugin/vst3/shell.h"
#include "state/parameter_text.h"

namespace vst3 {

using instrument::TimedEvent;
using plugin::frameIn;
using plugin::isSilent;
using plugin::kNoFrames;

namespace {

// False for what the instrument has no message for.
bool writeMessage(const Event& event, plugin::Message& bytes) {
    const auto write = [&bytes](int16 key, const plugin::Message& message) {
        bytes = message;
        return plugin::isKey(key);
    };
    switch (event.type) {
        case Event::kNoteOnEvent: {
            const int16 key = event.noteOn.pitch;
            const float velocity = event.noteOn.velocity;
            return write(key,
                         velocity > 0.0f ? plugin::noteOn(key, velocity) : plugin::noteOff(key));
        }
        case Event::kNoteOffEvent:
            return write(event.noteOff.pitch, plugin::noteOff(event.noteOff.pitch));
        case Event::kPolyPressureEvent: {
            const auto& pressure = event.polyPressure;
            return write(pressure.pitch, {0xA0, static_cast<uint8>(pressure.pitch),
                                          plugin::dataByte(pressure.pressure)});
        }
        default:
            return false;
    }
}

}  // namespace

tresult Shell::canProcessSampleSize(int32 symbolicSampleSize) {
    return symbolicSampleSize == kSample32 ? kResultTrue : kResultFalse;
}

// A rate that no engine can follow is not refused: hosts take that for a fault. The one before goes
// on.
tresult Shell::setupProcessing(ProcessSetup& setup) {
    if (setup.symbolicSampleSize != kSample32) return kResultFalse;
    if (setup.sampleRate == sampleRate_) return kResultOk;
    sampleRate_ = setup.sampleRate;
    instrument_.setSampleRate(sampleRate_);
    return kResultOk;
}

uint32 Shell::getTailSamples() {
    return plugin::tailFrames(sampleRate_);
}

tresult Shell::process(ProcessData& data) {
    if (data.symbolicSampleSize != kSample32) return kResultFalse;
    const bool hasBuffers = data.numSamples > 0 && data.numOutputs > 0 && data.outputs &&
                            data.outputs[0].numChannels >= 2 && data.outputs[0].channelBuffers32;
    float* const left = hasBuffers ? data.outputs[0].channelBuffers32[0] : nullptr;
    float* const right = hasBuffers ? data.outputs[0].channelBuffers32[1] : nullptr;
    const int frames = left && right ? data.numSamples : kNoFrames;
    takeParameters(data.inputParameterChanges, frames);
    followBypass();
    takeEvents(data.inputEvents, frames);
    if (frames == kNoFrames) {
        instrument_.render(left, right, data.numSamples);
    } else {
        render(data, left, right);
    }
    return kResultOk;
}

void Shell::takeParameters(IParameterChanges* changes, int frames) {
    const int32 count = changes ? changes->getParameterCount() : 0;
    // A program comes before the parameters of its frame, which change it.
    for (const bool programs : {true, false}) {
        for (int32 i = 0; i < count; ++i) {
            IParamValueQueue* const queue = changes->getParameterData(i);
            if (queue && (queue->getParameterId() == kProgramId) == programs) {
                takeQueue(*queue, frames);
            }
        }
    }
}

void Shell::takeQueue(IParamValueQueue& queue, int frames) {
    const ParamID id = queue.getParameterId();
    const int32 points = isKnownId(id) ? queue.getPointCount() : 0;
    for (int32 i = 0; i < points; ++i) {
        int32 offset = 0;
        ParamValue value = 0.0;
        if (queue.getPoint(i, offset, value) != kResultOk || std::isnan(value)) continue;
        takePoint(id, frameIn(offset, frames), std::clamp(value, 0.0, 1.0), frames);
    }
}

void Shell::takePoint(ParamID id, int frame, double value, int frames) {
    if (id == kBypassId) {
        bypassed_ = value >= 0.5;
    } else if (isControllerId(id)) {
        const auto controller = static_cast<int>(id - kFirstControllerId);
        controllers_[controller] = static_cast<float>(value);
        TimedEvent event{frame};
        writeControllerMessage(controller, value, event.bytes.data());
        instrument_.addEvent(event);
    } else if (id == kProgramId) {
        const int program = static_cast<int>(value * (state::kNumPrograms - 1) + 0.5);
        told_.setProgram(program);
        if (frames > kNoFrames) {
            instrument_.addEvent({frame, TimedEvent::kProgram, {}, program});
        } else if (program != instrument_.program()) {
            instrument_.setProgram(program);
        }
    } else {
        const auto index = static_cast<int>(id);
        const float wanted = state::valueFromNormalized(index, value);
        told_.set(index, wanted);
        if (frames > kNoFrames) {
            instrument_.addEvent({frame, TimedEvent::kParameter, {}, index, wanted});
        } else {
            instrument_.changeParameter(index, wanted);
        }
    }
}

void Shell::takeEvents(IEventList* events, int frames) {
    const int32 count = events ? events->getEventCount() : 0;
    for (int32 i = 0; i < count; ++i) {
        Event event{};
        if (events->getEvent(i, event) != kResultOk) continue;
        if (bypassed_ && event.type == Event::kNoteOnEvent) continue;
        TimedEvent timed{frameIn(event.sampleOffset, frames)};
        if (writeMessage(event, timed.bytes)) instrument_.addEvent(timed);
    }
}

void Shell::followBypass() {
    const bool bypassed = bypassed_;
    if (bypassed && !silenced_) instrument_.addEvent({0, TimedEvent::kSilence});
    silenced_ = bypassed;
}

// Rendering goes on in bypass, so that the instrument comes out of it where the song is.
void Shell::render(ProcessData& data, float* left, float* right) {
    const int frames = data.numSamples;
    instrument_.render(left, right, frames);
    if (silenced_) {
        std::fill_n(left, frames, 0.0f);
        std::fill_n(right, frames, 0.0f);
    }
    const bool quiet = silenced_ || instrument_.asleep();
    const uint64 leftSilent = quiet && isSilent(left, frames) ? 1 : 0;
    const uint64 rightSilent = quiet && isSilent(right, frames) ? 2 : 0;
    data.outputs[0].silenceFlags = leftSilent | rightSilent;
}

}  // namespace vst3
