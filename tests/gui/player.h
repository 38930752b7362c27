// Words of every script that works on a frame. A point is "x,y" or "row:3" of the open menu, and
// "shift+", "ctrl+", "alt+", "left+", "right+" or "double+" may precede the pointer's and the
// keys':
//   down move hover up click  a point (without one: where the pointer is)
//   wheel  a point and the notches up [and right]
//   leave  type "text"  key Name  wait milliseconds
//   see  a point: says the colour there        look  says A, B...: the same letter, the same
//   picture modal  says the area of the modal view     focus  says whether a view has the focus
#pragma once

#include "gui/headless.h"
#include "tests/support/script.h"

namespace script {

VSTGUI::CRect rectangle(std::istream& words);  // "left,top,right,bottom"

class Player : public Runner {
  public:
    // `frame` may return null while none is open. `reported` returns what was reported since its
    // last call.
    Player(std::function<VSTGUI::CFrame*()> frame, std::function<std::string()> reported,
           VSTGUI::headless::HeldClock& clock);

  protected:
    void prepare(std::string& name) override;
    std::string reported() override { return reported_(); }

  private:
    void addPointer();
    void addKeys();
    void addLooks();
    // A point in the line, or the last one.
    VSTGUI::CPoint point(std::istream& words);

    std::function<VSTGUI::CFrame*()> frame_;
    std::function<std::string()> reported_;
    VSTGUI::headless::HeldClock& clock_;
    VSTGUI::CPoint at_;
    int32_t modifiers_ = 0;
    std::vector<uint64_t> looks_;
};

}  // namespace script
