// Executes a command line: lists the devices or plays.
#include "app/program.h"

#include <exception>
#include <string>

#include "app/command_line.h"
#include "app/midi_inputs.h"
#include "app/quiet_libraries.h"
#include "app/session.h"
#include "host/error.h"

namespace app {
namespace {

void listDevices(std::ostream& out) {
    out << "Audio outputs (--api, --device; * is the default):\n";
    for (const auto& [api, devices] : audioDevices()) {
        if (devices.empty()) out << "  " << api << "   none\n";
        for (const auto& device : devices) {
            out << "  " << api << (device.isDefault ? " * " : "   ") << device.name << '\n';
        }
    }
    out << "MIDI ports (--midi-api, --midi-port):\n";
    for (const auto& [api, ports] : midiPorts()) {
        if (ports.empty()) out << "  " << api << "   none\n";
        for (const auto& port : ports) out << "  " << api << "   " << port << '\n';
    }
}

void carryOut(const CommandLine& line, const Surroundings& surroundings) {
    if (!line.answer.empty()) {
        surroundings.out << line.answer;
    } else if (line.listsDevices) {
        listDevices(surroundings.out);
    } else {
        Session(line, surroundings).run();
    }
}

}  // namespace

int run(int argc, const char* const* argv, const Surroundings& surroundings) {
    const QuietLibraries quiet;
    return host::exitCodeOf("quarzel", surroundings.err,
                            [&] { carryOut(parseCommandLine(argc, argv), surroundings); });
}

}  // namespace app
