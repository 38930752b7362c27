// Polls RtMidi for ports and forwards their channel messages.
#include "app/midi_inputs.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include <RtMidi.h>

namespace app {
namespace {

constexpr const char* kApiNames[] = {"alsa", "jack"};
constexpr const char* kClientName = "Quarzel Strings MIDI";
// JACK would number a second client of that name, and the port that others connect to is known by
// it.
constexpr const char* kOtherClientName = "Quarzel Strings MIDI input";
// Longer than a JACK server with large blocks takes to tell its clients of a change.
constexpr std::chrono::milliseconds kTimeToSettle(200);
constexpr int kOwnLane = 1;
constexpr int kFirstPortLane = 2;

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<std::string> namesOf(RtMidiIn& input) {
    std::vector<std::string> names;
    const unsigned count = input.getPortCount();
    for (unsigned i = 0; i < count; ++i) names.push_back(input.getPortName(i));
    return names;
}

// Returns null if the API does not work here.
std::unique_ptr<RtMidiIn> tryApi(const std::string& api,
                                 const char* clientName = kOtherClientName) {
    try {
        auto input = std::make_unique<RtMidiIn>(RtMidi::getCompiledApiByName(api), clientName);
        // Without a server, RtMidi's JACK API only warns: here and on every query of ports.
        bool hasFailed = false;
        input->setErrorCallback([](RtMidiError::Type, const std::string&,
                                   void* flag) { *static_cast<bool*>(flag) = true; },
                                &hasFailed);
        input->getPortCount();
        input->setErrorCallback([](RtMidiError::Type, const std::string&, void*) {});
        return hasFailed ? nullptr : std::move(input);
    } catch (const RtMidiError&) {
        return nullptr;
    }
}

// Runs on one of RtMidi's threads.
void receive(const std::vector<unsigned char>& bytes, MidiInbox& inbox, int lane) {
    const bool isChannelMessage = !bytes.empty() && bytes[0] >= 0x80 && bytes[0] < 0xf0;
    if (!isChannelMessage || bytes.size() > 3) return;
    host::MidiMessage message = {};
    std::copy(bytes.begin(), bytes.end(), message.begin());
    inbox.post(lane, message);
}

}  // namespace

std::vector<std::string> midiApis() {
    std::vector<std::string> names;
    for (const char* const name : kApiNames) {
        if (RtMidi::getCompiledApiByName(name) != RtMidi::UNSPECIFIED) names.push_back(name);
    }
    return names;
}

std::vector<MidiPorts> midiPorts() {
    std::vector<MidiPorts> all;
    for (const auto& api : midiApis()) {
        const auto input = tryApi(api);
        all.push_back({api, input ? namesOf(*input) : std::vector<std::string>{}});
    }
    return all;
}

MidiInputs::MidiInputs(MidiInbox& inbox, std::string api, std::string portName, Say say)
    : inbox_(inbox),
      wantedApi_(std::move(api)),
      portName_(std::move(portName)),
      say_(std::move(say)) {
    for (int lane = 0; lane < MidiInbox::kLanes; ++lane) receivers_.push_back({&inbox, lane});
    connect();
}

MidiInputs::~MidiInputs() = default;

// libjack's own thread goes through the ports of a client when it hears that another client has
// gone, and crashes if one is removed meanwhile. So each of ours waits until the last is forgotten.
void MidiInputs::Closer::operator()(RtMidiIn* input) const {
    if (input->getCurrentApi() == RtMidi::UNIX_JACK) std::this_thread::sleep_for(kTimeToSettle);
    delete input;
}

void MidiInputs::connect() {
    const auto apis = wantedApi_.empty() ? midiApis() : std::vector<std::string>{wantedApi_};
    for (const auto& api : apis) {
        auto directory = tryApi(api);
        auto ownPort = directory ? tryApi(api, kClientName)
                                 : nullptr;  // the server may refuse a second client
        if (!ownPort) continue;
        api_ = api;
        directory_ = std::move(directory);
        ownPort_.reset(ownPort.release());
        listenOn(*ownPort_, kOwnLane);
        ownPort_->openVirtualPort("in");
        return;
    }
}

void MidiInputs::listenOn(RtMidiIn& input, int lane) {
    input.setCallback(
        [](double, std::vector<unsigned char>* bytes, void* user) {
            const auto& receiver = *static_cast<const Receiver*>(user);
            receive(*bytes, *receiver.inbox, receiver.lane);
        },
        &receivers_[lane]);
}

void MidiInputs::restart() {
    if (api_ != "jack") return;
    dropMissing({});
    ownPort_.reset();
    directory_.reset();
    connect();
}

void MidiInputs::poll() {
    if (!directory_) return connect();
    const auto names = namesOf(*directory_);
    const bool allGo = names.empty() && !ports_.empty();
    dropMissing(names);
    if (allGo) return restart();
    for (unsigned number = 0; number < names.size(); ++number) {
        const auto& name = names[number];
        if (!isWanted(name)) continue;
        const auto isThat = [&](const Port& port) { return port.name == name; };
        if (std::none_of(ports_.begin(), ports_.end(), isThat)) open(number, name);
    }
    if (portName_.empty() ||
        std::any_of(names.begin(), names.end(), [&](const auto& name) { return isWanted(name); })) {
        saidNoneMatches_ = false;
    } else if (!std::exchange(saidNoneMatches_, true)) {
        std::string list;
        for (const auto& name : names) list += (list.empty() ? "" : ", ") + name;
        say_("No MIDI port has " + portName_ + " in its name; waiting for one. " +
             (list.empty() ? "There are no ports." : "There are: " + list + "."));
    }
}

bool MidiInputs::isWanted(const std::string& name) const {
    return name.find(portName_) != std::string::npos;
}

std::vector<std::string> MidiInputs::portNames() const {
    return directory_ ? namesOf(*directory_) : std::vector<std::string>{};
}

void MidiInputs::listenTo(std::string portName) {
    portName_ = std::move(portName);
    saidNoneMatches_ = false;
    const auto isOther = [&](const Port& port) { return !isWanted(port.name); };
    ports_.erase(std::remove_if(ports_.begin(), ports_.end(), isOther), ports_.end());
    releaseKeys();
    poll();
}

// Nobody else will release the keys and the pedal of a port that is gone.
void MidiInputs::releaseKeys() {
    inbox_.post(MidiInbox::kPlayerLane, {0xb0, 64, 0});
    inbox_.post(MidiInbox::kPlayerLane, {0xb0, 123, 0});
}

int MidiInputs::freeLane() const {
    for (int lane = kFirstPortLane; lane < MidiInbox::kLanes; ++lane) {
        const auto takes = [lane](const Port& port) { return port.lane == lane; };
        if (std::none_of(ports_.begin(), ports_.end(), takes)) return lane;
    }
    return -1;
}

void MidiInputs::open(unsigned number, const std::string& name) {
    const int lane = freeLane();
    auto input = lane < 0 ? nullptr : tryApi(api_);
    if (input && namesOf(*input).size() > number && input->getPortName(number) == name) {
        listenOn(*input, lane);
        input->openPort(number, "in");
    }
    if (!input || !input->isPortOpen()) {
        if (contains(refused_, name)) return;
        refused_.push_back(name);
        return say_("The MIDI port " + name + " cannot be opened.");
    }
    refused_.erase(std::remove(refused_.begin(), refused_.end(), name), refused_.end());
    ports_.push_back({name, lane, OpenInput(input.release())});
    say_("Listening to the MIDI port " + name + ".");
}

void MidiInputs::dropMissing(const std::vector<std::string>& names) {
    const auto isGone = [&](const std::string& name) { return !contains(names, name); };
    refused_.erase(std::remove_if(refused_.begin(), refused_.end(), isGone), refused_.end());
    for (auto port = ports_.begin(); port != ports_.end();) {
        if (!isGone(port->name)) {
            ++port;
            continue;
        }
        const std::string name = port->name;
        port = ports_.erase(port);
        releaseKeys();
        say_("The MIDI port " + name + " is gone.");
    }
}

}  // namespace app
