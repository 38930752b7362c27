// Writes the bundle's Turtle files: write_turtle FACTORY.bank FOLDER
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

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3) {
        std::cerr << "Usage: write_turtle FACTORY.bank FOLDER\n";
        return 2;
    }
    try {
        const banks::BankSource source = banks::parseBankSource(contentsOf(arguments[1]));
        const std::string folder = arguments[2] + std::string("/");
        write(folder + "manifest.ttl", lv2::manifestTurtle(source.bank));
        write(folder + "QuarzelStrings.ttl", lv2::pluginTurtle(source.bank));
        write(folder + "presets.ttl", lv2::presetsTurtle(source.bank));
    } catch (const std::exception& error) {
        std::cerr << "write_turtle: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
