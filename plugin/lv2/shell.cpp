// Life, ports, and what the editor tells its host.
#include "plugin/lv2/shell.h"

#include <exception>

#include "lv2/buf-size/buf-size.h"
#include "lv2/midi/midi.h"
#include "lv2/parameters/parameters.h"
#include "plugin/lv2/ui.h"
#include "plugin/lv2/uris.h"

namespace lv2 {

Shell::Urids::Urids(const LV2_URID_Map& map) {
    const auto id = [&map](const char* uri) { return map.map(map.handle, uri); };
    atomChunk = id(LV2_ATOM__Chunk);
    atomFloat = id(LV2_ATOM__Float);
    atomInt = id(LV2_ATOM__Int);
    atomSequence = id(LV2_ATOM__Sequence);
    atomVector = id(LV2_ATOM__Vector);
    midiEvent = id(LV2_MIDI__MidiEvent);
    state = id(kStateKey);
    ports = id(kPortsKey);
    program = id(kProgramKey);
    sampleRate = id(LV2_PARAMETERS__sampleRate);
    blockLength = id(LV2_BUF_SIZE__maxBlockLength);
}

Shell::Shell(double sampleRate, const LV2_URID_Map& map, const ChangeRequest* changeRequest)
    : map_(map),
      urids_(map),
      changeRequest_(changeRequest),
      instrument_(*this),
      sampleRate_(engine::isAcceptedRate(sampleRate) ? sampleRate : engine::kInitialRate) {
    instrument_.start(sampleRate);
    for (int i = 0; i < state::kNumParams; ++i) {
        watch_.start(i, portValue(i, instrument_.parameter(i)));
    }
}

Shell* Shell::begin(double sampleRate, Features features) {
    const auto* const map = feature<LV2_URID_Map>(features, LV2_URID__map);
    if (!map || !map->map) return nullptr;
    const auto* const changeRequest = feature<ChangeRequest>(features, kChangeRequestUri);
    try {
        const auto shell = std::make_shared<Shell>(sampleRate, *map, changeRequest);
        shell->self_ = shell;
        return shell.get();
    } catch (const std::exception&) {  // no memory
        logRefusal(features, "out of memory");
        return nullptr;
    }
}

void Shell::connect(std::uint32_t port, void* data) {
    if (isParameterPort(port)) controls_[port] = static_cast<const float*>(data);
    if (port == kEnabledPort) enabled_ = static_cast<const float*>(data);
    if (port == kMidiPort) midi_ = static_cast<const LV2_Atom_Sequence*>(data);
    if (port == kLeftPort) left_ = static_cast<float*>(data);
    if (port == kRightPort) right_ = static_cast<float*>(data);
}

void Shell::setSampleRate(double rate) {
    if (!engine::isAcceptedRate(rate)) return;
    sampleRate_ = rate;
    instrument_.setSampleRate(rate);
}

bool Shell::show(Ui* ui) {
    if (ui && ui_) return false;
    ui_ = ui;
    return true;
}

void Shell::writePorts() {
    for (int i = 0; ui_ && i < state::kNumParams; ++i) {
        const float value = instrument_.parameter(i);
        if (watch_.isBehind(i, value)) edited(i, value);
    }
}

void Shell::gestureBegins(int parameter) {
    if (ui_ && state::isParameter(parameter)) ui_->touch(parameter, true);
}

void Shell::edited(int parameter, float value) {
    if (!ui_ || !state::isParameter(parameter)) return;
    const float port = portValue(parameter, value);
    watch_.expect(parameter, port);
    ui_->write(parameter, port);
}

void Shell::gestureEnds(int parameter) {
    if (ui_ && state::isParameter(parameter)) ui_->touch(parameter, false);
}

bool Shell::resizeEditor(int width, int height) {
    return ui_ && ui_->requestSize(width, height);
}

}  // namespace lv2
