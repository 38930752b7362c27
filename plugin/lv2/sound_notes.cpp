// The tables of the factory sounds.
#include <algorithm>
#include <cctype>
#include <sstream>

#include "plugin/lv2/turtle.h"

namespace lv2 {

namespace {

// A cell without its margins and its marks for slanted letters.
std::string plainCell(const std::string& cell) {
    std::string text;
    std::copy_if(cell.begin(), cell.end(), std::back_inserter(text),
                 [](char c) { return c != '*'; });
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

bool isNumber(const std::string& text) {
    return !text.empty() && text.size() <= 3 &&
           std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c); });
}

}  // namespace

std::vector<SoundNote> readSoundNotes(const std::string& markdown) {
    std::vector<SoundNote> notes;
    std::string family;
    std::istringstream lines(markdown);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("## ", 0) == 0) family = line.substr(3);
        std::istringstream cells(line);
        std::string margin, number, name, character;
        const bool isRow = std::getline(cells, margin, '|') && std::getline(cells, number, '|') &&
                           std::getline(cells, name, '|') && std::getline(cells, character, '|');
        if (!isRow || !isNumber(plainCell(number))) continue;
        notes.push_back({std::stoi(number), plainCell(name), family, plainCell(character)});
    }
    return notes;
}

}  // namespace lv2
