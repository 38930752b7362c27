// Tests as text: each line says what is done and, after "=>", what comes of it.
//
//   == The handle follows the pointer            begins a case
//   knob 60,60,120,120 10x10                     words of the test's own
//   down 90,90 move 90,40 up => begin 0.75 end
//
// Words of every script, where a point is "x,y" or "row:3" of the open menu, and "shift+", "ctrl+",
// "alt+", "left+", "right+" or "double+" may precede a word of the pointer or the keys:
//   down move hover up click  a point (without one: where the pointer is)
//   wheel  a point and the notches up [and right]
//   leave  type "text"  key Name  wait milliseconds
//   see  a point: says the colour there        look  says A, B...: the same letter, the same
//   picture modal  says the area of the modal view     focus  says whether a view has the focus
#pragma once

#include "gui/headless.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace script {

struct Step {
    int line;
    std::string words;
    std::optional<std::string> expected;
};

struct Case {
    std::string file;
    std::string title;
    std::vector<Step> steps;
};

inline void PrintTo(const Case& one, std::ostream* out) {
    *out << one.file;
}

std::vector<Case> casesOf(const std::string& path);
std::string nameOf(const testing::TestParamInfo<Case>& info);

// Reads the next word, which may be quoted. Empty at the end of the line.
std::string word(std::istream& words);
double number(std::istream& words);
VSTGUI::CRect rectangle(std::istream& words);  // "left,top,right,bottom"

class Player {
  public:
    using Command = std::function<void(std::istream&)>;

    // `frame` may return null while none is open. `said` returns what was reported since its last
    // call.
    Player(std::function<VSTGUI::CFrame*()> frame, std::function<std::string()> said,
           VSTGUI::headless::HeldClock& clock);

    void play(const Case& one);
    void say(const std::string& text);

    std::map<std::string, Command> commands;
    // Gets a whole line that begins with "<".
    std::function<void(const std::string&)> markup;

  private:
    void addPointer();
    void addKeys();
    void addLooks();
    void perform(const std::string& line);
    // A point in the line, or the last one.
    VSTGUI::CPoint point(std::istream& words);
    std::string look(uint64_t hash);

    std::function<VSTGUI::CFrame*()> frame_;
    std::function<std::string()> said_;
    VSTGUI::headless::HeldClock& clock_;
    VSTGUI::CPoint at_;
    int32_t modifiers_ = 0;
    std::string out_;
    std::vector<uint64_t> looks_;
};

}  // namespace script
