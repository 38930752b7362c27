// Search, columns and steps.
#include "editor/browser/sound_list.h"

#include <algorithm>
#include <sstream>

namespace editor {

namespace {

// ASCII only: the names of the sounds have no other capitals.
std::string lowered(std::string text) {
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + ('a' - 'A'));
    }
    return text;
}

int familyStart(const std::vector<BrowserColumn>& columns, int column) {
    while (column > 0 && columns[column].continues) --column;
    return column;
}

}  // namespace

std::string programNumber(int program) {
    std::string number = std::to_string(program);
    return number.insert(0, 3 - std::min<std::size_t>(number.size(), 3), '0');
}

bool matches(const BrowserItem& item, const std::string& search) {
    std::string text = item.name + '\n' + item.family + '\n' + item.character;
    if (item.program >= 0) text += '\n' + programNumber(item.program);
    text = lowered(std::move(text));
    std::istringstream words(lowered(search));
    for (std::string word; words >> word;) {
        if (text.find(word) == std::string::npos) return false;
    }
    return true;
}

std::vector<BrowserColumn> columnsOf(const std::vector<BrowserItem>& items) {
    std::vector<BrowserColumn> columns;
    for (int i = 0; i < static_cast<int>(items.size()); ++i) {
        const bool same = !columns.empty() && columns.back().family == items[i].family;
        if (!same || columns.back().count == BrowserColumn::kMostRows) {
            columns.push_back({items[i].family, same, i, 0});
        }
        ++columns.back().count;
    }
    return columns;
}

int walked(const std::vector<BrowserColumn>& columns, int at, Walk step) {
    if (columns.empty()) return -1;
    const int last = columns.back().first + columns.back().count - 1;
    const int lastColumn = static_cast<int>(columns.size()) - 1;
    if (at < 0 || at > last || step == Walk::kFirst) return 0;
    int column = lastColumn;
    while (columns[column].first > at) --column;
    const int row = at - columns[column].first;
    const auto inColumn = [&](int number) {
        const BrowserColumn& there = columns[std::clamp(number, 0, lastColumn)];
        return there.first + std::min(row, there.count - 1);
    };
    switch (step) {
        case Walk::kUp:
            return std::max(at - 1, 0);
        case Walk::kDown:
            return std::min(at + 1, last);
        case Walk::kLeft:
            return inColumn(column - 1);
        case Walk::kRight:
            return inColumn(column + 1);
        case Walk::kPreviousFamily: {
            const int start = familyStart(columns, column);
            return columns[row > 0 ? start : familyStart(columns, std::max(start - 1, 0))].first;
        }
        case Walk::kNextFamily:
            do ++column;
            while (column <= lastColumn && columns[column].continues);
            return column <= lastColumn ? columns[column].first : last;
        case Walk::kFirst:
        case Walk::kLast:
            break;
    }
    return last;
}

}  // namespace editor
