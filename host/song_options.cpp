// Reads lists of channels.
#include "host/song_options.h"

#include "host/error.h"
#include "host/option_parser.h"

namespace host {
namespace {

constexpr int kChannels = 16;
constexpr int kDrumBit = 9;

int readChannel(const std::string& text) {
    return readInteger("--channels", text, 1, kChannels);
}

// "1-4,7"
std::bitset<16> readChannels(const std::string& text) {
    std::bitset<16> channels;
    for (std::size_t begin = 0, end = 0; end != std::string::npos; begin = end + 1) {
        end = text.find(',', begin);
        const std::string part = text.substr(begin, end - begin);
        const auto dash = part.find('-');
        const int first = readChannel(part.substr(0, dash));
        const int last = dash == std::string::npos ? first : readChannel(part.substr(dash + 1));
        if (last < first) throw UsageError("--channels: " + part + " ends before it begins");
        for (int channel = first; channel <= last; ++channel) channels.set(channel - 1);
    }
    return channels;
}

}  // namespace

void SongOptions::declare(OptionParser& parser) {
    parser.addText("--channels", channels_, "LIST",
                   "Channels of songs to play, for example 1-4,7 (default: all but 10, the drums)");
    parser.addFlag("--no-drums", noDrums_, "Leave channel 10 out of --channels");
    parser.addFlag("--ignore-programs", ignorePrograms_, "Leave out the program changes of songs");
}

SongSelection SongOptions::selection() const {
    SongSelection selection;
    if (channels_) selection.channels = readChannels(*channels_);
    if (noDrums_) selection.channels.reset(kDrumBit);
    selection.programs = !ignorePrograms_;
    return selection;
}

}  // namespace host
