// For what need not be looked at in each idle turn.
#pragma once

namespace editor {

// Ten times a second, as CView::onIdle comes. The first time is due, so views of one frame look in
// the same turns.
class Seldom {
  public:
    bool isDue() {
        if (turnsOften_ == 0) return turn_++ % kTurns == 0;
        --turnsOften_;
        return true;
    }
    // What has changed may go on changing, as during a drag. For a second, every time is due.
    void becomeOften() { turnsOften_ = 30; }

  private:
    static constexpr unsigned kTurns = 3;
    unsigned turn_ = 0;
    unsigned turnsOften_ = 0;
};

}  // namespace editor
