// Draws the progress bar with a carriage return, a few times a second.
#include "render/progress_bar.h"

#include <cmath>
#include <string>

namespace render {
namespace {

constexpr auto kPatience = std::chrono::seconds(1);
constexpr auto kInterval = std::chrono::milliseconds(100);
constexpr int kWidth = 40;  // characters

}  // namespace

ProgressBar::ProgressBar(std::ostream& terminal, bool shown)
    : terminal_(terminal), shown_(shown), nextDrawing_(Clock::now() + kPatience) {}

ProgressBar::~ProgressBar() {
    if (drawn_) terminal_ << '\r' << std::string(kWidth + 7, ' ') << '\r' << std::flush;
}

void ProgressBar::update(double done) {
    if (!shown_ || Clock::now() < nextDrawing_) return;
    nextDrawing_ = Clock::now() + kInterval;
    drawn_ = true;
    const int filled = static_cast<int>(done * kWidth);
    const std::string percent = std::to_string(std::lround(done * 100.0));
    terminal_ << "\r[" << std::string(filled, '#') << std::string(kWidth - filled, '-') << "] "
              << std::string(3 - percent.size(), ' ') << percent << '%' << std::flush;
}

}  // namespace render
