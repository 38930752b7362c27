#include "banks/take.h"

#include <algorithm>

namespace banks {

namespace {

constexpr int kBlock = 512;

struct Event {
    std::size_t frame;
    int key;
    int velocity;  // 0: let go
};

class Player : public engine::EventSource {
  public:
    Player(engine::SoundEngine& engine, const std::vector<Note>& notes) : engine_(engine) {
        for (const Note& note : notes) {
            events_.push_back({frameAt(note.on) + 1, note.key, note.velocity});
            events_.push_back({frameAt(note.off) + 1, note.key, 0});
        }
        const auto earlier = [](const Event& a, const Event& b) { return a.frame < b.frame; };
        std::stable_sort(events_.begin(), events_.end(), earlier);
    }

    void beginBlock(std::size_t start) { start_ = start; }

    int dispatchUpTo(int frame) override {
        for (; next_ < events_.size(); ++next_) {
            const Event& event = events_[next_];
            if (event.frame > start_ + frame) return static_cast<int>(event.frame - start_);
            engine_.wake();
            if (event.velocity > 0) {
                engine_.noteOn(event.key, event.velocity);
            } else {
                engine_.noteOff(event.key);
            }
        }
        return kNothingDue;
    }

  private:
    engine::SoundEngine& engine_;
    std::vector<Event> events_;
    std::size_t next_ = 0;
    std::size_t start_ = 0;  // of the block
};

}  // namespace

Take play(state::Instrument& instrument, const std::vector<Note>& notes, double seconds) {
    Take take;
    take.left.resize(frameAt(seconds));
    take.right.resize(frameAt(seconds));
    Player player(instrument.engine(), notes);
    for (std::size_t at = 0; at < take.frames(); at += kBlock) {
        player.beginBlock(at);
        const std::size_t frames = std::min<std::size_t>(kBlock, take.frames() - at);
        instrument.render(&take.left[at], &take.right[at], static_cast<int>(frames), player);
    }
    return take;
}

void choose(state::Instrument& instrument, int program) {
    constexpr int kHalvings = 12;
    for (int i = 0; i < kHalvings; ++i) instrument.setProgram(program);
}

}  // namespace banks
