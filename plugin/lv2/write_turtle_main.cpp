// Writes the bundle's Turtle files: write_turtle FACTORY.bank PRESETS.md FOLDER
#include <iostream>
#include <stdexcept>

#include "banks/bank_source.h"
#include "platform/file.h"
#include "plugin/lv2/turtle.h"

namespace {

std::string contentsOf(const std::string& path) {
    constexpr std::size_t kLargest = 1 << 20;
    const auto text = platform::readFile(path, kLargest);
    if (!text) throw std::runtime_error(path + ": cannot be read");
    return *text;
}

void write(const std::string& path, const std::string& text) {
    if (!platform::writeFile(path, text)) throw std::runtime_error(path + ": cannot be written");
}

// The manual's tables name the bank's programs, each once and in order.
void check(const banks::BankSource& source, const std::vector<lv2::SoundNote>& sounds) {
    if (sounds.size() != static_cast<std::size_t>(source.programs)) {
        throw std::runtime_error("the tables list " + std::to_string(sounds.size()) +
                                 " sounds, the bank has " + std::to_string(source.programs));
    }
    int program = 0;
    for (const lv2::SoundNote& sound : sounds) {
        if (sound.program != program || sound.name != source.bank.programName(program)) {
            throw std::runtime_error("program " + std::to_string(program) + " is not \"" +
                                     sound.name + '"');
        }
        ++program;
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 4) {
        std::cerr << "Usage: write_turtle FACTORY.bank PRESETS.md FOLDER\n";
        return 2;
    }
    try {
        const banks::BankSource source = banks::parseBankSource(contentsOf(arguments[1]));
        const auto sounds = lv2::readSoundNotes(contentsOf(arguments[2]));
        check(source, sounds);
        const std::string folder = arguments[3] + std::string("/");
        write(folder + "manifest.ttl", lv2::manifestTurtle(sounds));
        write(folder + "QuarzelStrings.ttl", lv2::pluginTurtle(source.bank));
        write(folder + "presets.ttl", lv2::presetsTurtle(source.bank, sounds));
    } catch (const std::exception& error) {
        std::cerr << "write_turtle: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
