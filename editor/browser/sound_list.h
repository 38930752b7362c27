// What a browser shows, and the order in which keys walk through it.
#pragma once

#include <string>
#include <vector>

namespace editor {

struct BrowserItem {
    enum Kind { kProgram, kSound, kBank, kFolder, kPicker };

    Kind kind = kProgram;
    int program = -1;  // of kProgram
    std::string path;  // of sounds, banks and folders
    std::string name;
    std::string family;  // the heading above it
    std::string character;
    bool favourite = false;
    bool edited = false;

    // A click is enough to see what is in it.
    bool opensAtOnce() const { return kind == kFolder || kind == kPicker; }
};

// Some items one below the other. A family with more than kMostRows goes on in the next column.
struct BrowserColumn {
    static constexpr int kMostRows = 8;

    std::string family;
    bool continues = false;
    int first = 0;  // index of the item on top
    int count = 0;
};

enum class Walk { kUp, kDown, kLeft, kRight, kFirst, kLast, kPreviousFamily, kNextFamily };

// Whether every word of the search is in the number, name, family or character. Ignores case.
bool matches(const BrowserItem& item, const std::string& search);

// Keeps the order of the items. Items of one family must be neighbours.
std::vector<BrowserColumn> columnsOf(const std::vector<BrowserItem>& items);

// The item that a step leads to from `at`; the first one from nowhere (-1), and -1 without items.
int walked(const std::vector<BrowserColumn>& columns, int at, Walk step);

// "007"
std::string programNumber(int program);

}  // namespace editor
