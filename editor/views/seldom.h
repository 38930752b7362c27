// For what need not be looked at in each idle turn.
#pragma once

namespace editor {

// One of several turns, as CView::onIdle comes; by default ten of them a second. The first turn is
// due, so views of one frame look in the same turns.
class Seldom {
  public:
    explicit Seldom(unsigned turns = 3) : turns_(turns) {}

    bool isDue() {
        if (turnsOften_ == 0) return turn_++ % turns_ == 0;
        --turnsOften_;
        return true;
    }
    // What has changed may go on changing, as during a drag. For a second, every time is due.
    void becomeOften() { turnsOften_ = 30; }

  private:
    unsigned turns_;
    unsigned turn_ = 0;
    unsigned turnsOften_ = 0;
};

// What moves while nobody plays needs half of the turns.
constexpr unsigned kTurnsAtRest = 2;

}  // namespace editor
