// A progress bar on one terminal line. It appears only if the work takes a while.
#pragma once

#include <chrono>
#include <ostream>

namespace render {

class ProgressBar {
  public:
    // Draws nothing unless shown.
    ProgressBar(std::ostream& terminal, bool shown);
    // Clears the line.
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // done is 0..1.
    void update(double done);

  private:
    using Clock = std::chrono::steady_clock;

    std::ostream& terminal_;
    bool shown_;
    bool drawn_ = false;
    Clock::time_point nextDrawing_;
};

}  // namespace render
