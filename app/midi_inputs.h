// MIDI ports as they come and go, through RtMidi.
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

// The names by which --midi-api asks for one, the preferred first.
std::vector<std::string> midiApis();

// The inputs of every API.
std::vector<MidiPorts> midiPorts();

// User-interface thread; what comes in goes to the inbox from threads of RtMidi's own.
class MidiInputs {
  public:
    // api: empty for the first one that works. portName: a part of the name of the only port to
    // listen to; empty for all. say is told of ports that come and go.
    using Say = std::function<void(const std::string& sentence)>;
    MidiInputs(MidiInbox& inbox, std::string api, std::string portName, Say say);
    ~MidiInputs();

    // Opens ports that are new and drops those that are gone. To be called about once a second.
    void poll();
    // Begins anew where a server stands behind the ports: it may be another one.
    void restart();

  private:
    struct Port {
        std::string name;
        int lane;
        std::unique_ptr<RtMidiIn> input;
    };
    // What RtMidi gives back with a message.
    struct Receiver {
        MidiInbox* inbox;
        int lane;
    };

    void connect();
    void listenOn(RtMidiIn& input, int lane);
    void open(unsigned number, const std::string& name);
    void dropMissing(const std::vector<std::string>& names);
    int freeLane() const;

    MidiInbox& inbox_;
    std::string wantedApi_;
    std::string portName_;
    Say say_;
    std::vector<Receiver> receivers_;      // one a lane
    std::string api_;                      // that works; empty while none does
    std::unique_ptr<RtMidiIn> ownPort_;    // for programs that look for a port to send to
    std::unique_ptr<RtMidiIn> directory_;  // asked for names only
    std::vector<Port> ports_;
    std::vector<std::string> refused_;  // could not be opened: said once, tried again
};

}  // namespace app
