// MIDI input ports through RtMidi, opened as they appear.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/midi_inbox.h"

class RtMidiIn;

namespace app {

struct MidiPorts {
    std::string api;
    std::vector<std::string> ports;
};

// The names that --midi-api accepts, in order of preference.
std::vector<std::string> midiApis();

// The inputs of every API.
std::vector<MidiPorts> midiPorts();

// User-interface thread. RtMidi's own threads post to the inbox.
class MidiInputs {
  public:
    // api may be empty for the first that works. portName limits listening to ports with it in
    // their names; empty means all. say reports ports that come and go.
    using Say = std::function<void(const std::string& sentence)>;
    MidiInputs(MidiInbox& inbox, std::string api, std::string portName, Say say);
    ~MidiInputs();

    // Opens new ports and drops those that are gone. Call it about once a second.
    void poll();
    // The names of all ports.
    std::vector<std::string> portNames() const;
    const std::string& wantedPort() const { return portName_; }
    // Listens to other ports from now on.
    void listenTo(std::string portName);
    // Reconnects APIs that depend on a server, which may have been replaced.
    void restart();

  private:
    struct Closer {
        void operator()(RtMidiIn* input) const;
    };
    using OpenInput = std::unique_ptr<RtMidiIn, Closer>;
    struct Port {
        std::string name;
        int lane;
        OpenInput input;
    };
    // Context that RtMidi passes along with a message.
    struct Receiver {
        MidiInbox* inbox;
        int lane;
    };

    void connect();
    void listenOn(RtMidiIn& input, int lane);
    void open(unsigned number, const std::string& name);
    void dropMissing(const std::vector<std::string>& names);
    void releaseKeys();
    bool isWanted(const std::string& name) const;
    int freeLane() const;

    MidiInbox& inbox_;
    std::string wantedApi_;
    std::string portName_;
    Say say_;
    std::vector<Receiver> receivers_;      // one per lane
    std::string api_;                      // the one that works; empty while none does
    OpenInput ownPort_;                    // so that other programs find a port to send to
    std::unique_ptr<RtMidiIn> directory_;  // only to query names
    std::vector<Port> ports_;
    bool saidNoneMatches_ = false;
    std::vector<std::string> refused_;  // failed to open: reported once, retried
};

}  // namespace app
