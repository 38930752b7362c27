// References, life, and buses: no audio in, stereo out, events in.
#include "plugin/vst3/shell.h"

#include "plugin/vst3/text.h"

namespace vst3 {

namespace {

constexpr int kIdleMilliseconds = 50;
constexpr int kMidiChannels = 16;

bool isOutput(MediaType type, BusDirection direction) {
    return type == kAudio && direction == kOutput;
}

bool isEventInput(MediaType type, BusDirection direction) {
    return type == kEvent && direction == kInput;
}

}  // namespace

Shell::Shell(FUnknown* moduleContext)
    : instrument_(*this), sampleRate_(engine::kInitialRate), moduleContext_(shared(moduleContext)) {
    instrument_.start(engine::kInitialRate);
    told_.take(instrument_);
    for (int i = 0; i < state::kNumParams; ++i) {
        defaults_[i] = state::engineValue(instrument_.parameter(i));
    }
    for (int i = 0; i < kCountCtrlNumber; ++i) {
        controllers_[i] = static_cast<float>(controllerDefault(i));
    }
}

tresult Shell::queryInterface(const TUID iid, void** object) {
    if (!object) return kInvalidArgument;
    *object = nullptr;
    IComponent* const component = this;
    const bool known =
        answers<FUnknown>(component, iid, object) || answers<IPluginBase>(component, iid, object) ||
        answers<IComponent>(this, iid, object) || answers<IAudioProcessor>(this, iid, object) ||
        answers<IEditController>(this, iid, object) ||
        answers<IEditController2>(this, iid, object) || answers<IMidiMapping>(this, iid, object) ||
        answers<IUnitInfo>(this, iid, object) ||
        answers<IProcessContextRequirements>(this, iid, object);
    return known ? kResultOk : kNoInterface;
}

uint32 Shell::release() {
    const uint32 left = references_.remove();
    if (left == 0) delete this;
    return left;
}

tresult Shell::initialize(FUnknown* context) {
    if (initialized_) return kResultFalse;
    initialized_ = true;
    const auto tick = [this] { tellHost(); };
    timer_ = std::make_unique<IdleTimer>(context, kIdleMilliseconds, tick);
    if (!timer_->runs()) {
        timer_ = std::make_unique<IdleTimer>(moduleContext_.get(), kIdleMilliseconds, tick);
    }
    return kResultOk;
}

tresult Shell::terminate() {
    timer_.reset();
    handler_.reset();
    initialized_ = false;
    return kResultOk;
}

int32 Shell::getBusCount(MediaType type, BusDirection direction) {
    return isOutput(type, direction) || isEventInput(type, direction) ? 1 : 0;
}

tresult Shell::getBusInfo(MediaType type, BusDirection direction, int32 index, BusInfo& bus) {
    if (index < 0 || index >= getBusCount(type, direction)) return kInvalidArgument;
    bus.mediaType = type;
    bus.direction = direction;
    bus.channelCount = type == kAudio ? 2 : kMidiChannels;
    copyText(type == kAudio ? "Stereo Out" : "MIDI In", bus.name);
    bus.busType = kMain;
    bus.flags = BusInfo::kDefaultActive;
    return kResultOk;
}

tresult Shell::getRoutingInfo(RoutingInfo& input, RoutingInfo& output) {
    if (input.mediaType != kEvent || input.busIndex != 0) return kResultFalse;
    output = {kAudio, 0, -1};
    return kResultOk;
}

tresult Shell::activateBus(MediaType type, BusDirection direction, int32 index, TBool) {
    const bool exists = index >= 0 && index < getBusCount(type, direction);
    return exists ? kResultOk : kInvalidArgument;
}

tresult Shell::setActive(TBool state) {
    state ? instrument_.resume() : instrument_.suspend();
    return kResultOk;
}

tresult Shell::setBusArrangements(SpeakerArrangement*, int32 numIns, SpeakerArrangement* outputs,
                                  int32 numOuts) {
    const bool isOurs = numIns == 0 && numOuts == 1 && outputs && outputs[0] == kArrangementStereo;
    return isOurs ? kResultTrue : kResultFalse;
}

tresult Shell::getBusArrangement(BusDirection direction, int32 index,
                                 SpeakerArrangement& arrangement) {
    if (direction != kOutput || index != 0) return kInvalidArgument;
    arrangement = kArrangementStereo;
    return kResultOk;
}

}  // namespace vst3
