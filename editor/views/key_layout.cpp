// Where the keys of a keyboard lie.
#include "editor/views/key_layout.h"

#include <algorithm>
#include <cmath>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr int kLowestKey = 0;
constexpr int kHighestKey = 127;
constexpr int kOctave = 12;
constexpr int kWhitesInOctave = 7;
constexpr double kSharpWidth = 0.58;   // of a white key
constexpr double kSharpHeight = 0.63;  // of the keyboard
constexpr int kSoftest = 20;
constexpr int kLoudest = 127;

// How many white keys of the octave lie below each of its keys.
constexpr int kWhitesBelow[kOctave] = {0, 1, 1, 2, 2, 3, 4, 4, 5, 5, 6, 6};
// Sharps are spread within their group, in widths of a white key.
constexpr double kShift[kOctave] = {0, -0.1, 0, 0.1, 0, 0, -0.12, 0, 0, 0, 0.12, 0};

}  // namespace

KeyLayout::KeyLayout(const CRect& area, int first, int last)
    : area_(area),
      first_(std::clamp(first, kLowestKey, kHighestKey)),
      last_(std::clamp(last, first_, kHighestKey)) {
    if (isSharp(first_)) --first_;
    if (isSharp(last_)) ++last_;
    whites_ = whitesBelow(last_) - whitesBelow(first_) + 1;
}

bool KeyLayout::isSharp(int key) {
    const int note = key % kOctave;
    return note == 1 || note == 3 || note == 6 || note == 8 || note == 10;
}

int KeyLayout::whitesBelow(int key) {
    return key / kOctave * kWhitesInOctave + kWhitesBelow[key % kOctave];
}

CCoord KeyLayout::edge(int whites) const {
    return area_.left + std::floor(whites * area_.getWidth() / whites_);
}

CRect KeyLayout::area(int key) const {
    const int whites = whitesBelow(key) - whitesBelow(first_);
    if (!isSharp(key)) return {edge(whites), area_.top, edge(whites + 1), area_.bottom};
    const double white = area_.getWidth() / whites_;
    const double width = std::floor(white * kSharpWidth);
    const double left = edge(whites) + std::round(white * kShift[key % kOctave] - width / 2);
    return {left, area_.top, left + width,
            area_.top + std::floor(area_.getHeight() * kSharpHeight)};
}

int KeyLayout::keyAt(const CPoint& where) const {
    if (!area_.pointInside(where)) return kNoKey;
    int found = kNoKey;
    for (int key = first_; key <= last_; ++key) {
        const bool covers = found == kNoKey || isSharp(key);
        if (covers && area(key).pointInside(where)) found = key;
    }
    return found;
}

int KeyLayout::velocityAt(int key, const CPoint& where) const {
    const CRect shape = area(key);
    const double share = (where.y - shape.top) / std::max(shape.getHeight() - 1, 1.0);
    const double velocity = kSoftest + std::clamp(share, 0.0, 1.0) * (kLoudest - kSoftest);
    return static_cast<int>(std::lround(velocity));
}

}  // namespace editor
