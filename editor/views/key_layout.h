// Where the keys of a keyboard lie.
#pragma once

#include "vstgui/vstgui.h"

namespace editor {

// Keys are MIDI keys. The ends are white keys: others are moved outwards.
class KeyLayout {
  public:
    static constexpr int kNoKey = -1;

    KeyLayout(const VSTGUI::CRect& area, int first, int last);

    int first() const { return first_; }
    int last() const { return last_; }
    static bool isSharp(int key);

    VSTGUI::CRect area(int key) const;
    // The key at a point, or kNoKey.
    int keyAt(const VSTGUI::CPoint& where) const;
    // 1..127: a key sounds louder the lower it is pressed.
    int velocityAt(int key, const VSTGUI::CPoint& where) const;

  private:
    static int whitesBelow(int key);
    VSTGUI::CCoord edge(int whites) const;  // left edge of a white key, counted from the first

    VSTGUI::CRect area_;
    int first_;
    int last_;
    int whites_;
};

}  // namespace editor
