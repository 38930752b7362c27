// Renders block after block without allocating or waiting.
#include "app/player.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "host/song_selection.h"

namespace app {
namespace {

constexpr double kFadeSeconds = 0.02;
constexpr double kLoadSmoothing = 0.05;  // weight of a block's load
constexpr host::MidiMessage kSilence[] = {{0xb0, 64, 0}, {0xb0, 123, 0}};  // release pedal and keys
constexpr std::size_t kMessagesAfterSong = 3;
constexpr int kProgramsOfMidi = 128;
constexpr host::MidiMessage kResetControllers = {0xb0, 121, 0};

}  // namespace

Player::Player(host::PluginHost& host, MidiInbox& inbox, const host::MidiSong* song,
               bool hasCeiling)
    : host_(host),
      inbox_(inbox),
      song_(song),
      hasCeiling_(hasCeiling),
      songHasEnded_(song == nullptr) {
    const std::size_t songEvents =
        song ? std::min(song->events.size(), host::SongFeed::kMaxEventsPerBlock) : 0;
    events_.reserve(songEvents + 3 * std::size(kSilence) + kMessagesAfterSong +
                    Jump::kMostMessages + MidiInbox::kMaxMessagesPerBlock);
    host.reserveEvents(events_.capacity());
}

void Player::start() {
    const int rate = host_.sampleRate();
    if (song_) {
        if (songRate_ > 0 && songRate_ != rate) songFrame_ = songFrame_ * rate / songRate_;
        songRate_ = rate;
        position_ = songFrame_;
        feed_.emplace(*song_, rate);
        feed_->goTo(songFrame_);
        ending_.emplace(*song_, rate, std::nullopt);
        if (!std::exchange(hasBegun_, true)) beginSong();
    }
    if (hasCeiling_) ceiling_.emplace(rate);
    lateBlocks_ = 0;
    inbox_.clear();
    lastBlock_ = Clock::now();
    isRunning_ = true;
    host_.resume();
}

void Player::stop() {
    host_.suspend();
    isRunning_ = false;
    takeJumps();
    load_ = 0.0;
    wasStopped_ = true;
}

void Player::leaveSong() {
    if (programBefore_ != kNoProgram) host_.setProgram(std::exchange(programBefore_, kNoProgram));
}

void Player::beginSong() {
    if (host::changesProgram(*song_)) firstProgram_ = host_.program();
    if (!isRunning_) programBefore_ = firstProgram_;
}

void Player::playSong() {
    if (!hasBegun_) return;
    if (songHasEnded_) beginSong();
    if (songHasEnded_ || songPosition() >= songLength()) {
        jumpTo(0);
    } else if (paused_) {
        jumpTo(position_);
    }
    paused_ = false;
}

void Player::moveSongTo(double seconds) {
    if (!hasBegun_) return;
    if (songHasEnded_) {
        beginSong();
        paused_ = true;
    }
    jumpTo(std::llround(std::clamp(seconds, 0.0, songLength()) * songRate_));
}

double Player::songPosition() const {
    return songRate_ > 0 ? std::min(position_ / double(songRate_), songLength()) : 0.0;
}

double Player::songLength() const {
    return song_ ? static_cast<double>(song_->endTime) / song_->unitsPerSecond : 0.0;
}

void Player::jumpTo(int64_t frame) {
    // Controllers by number, then the others by kind. Each holds an index of the song plus one.
    constexpr int kControllers = 128;
    std::array<std::size_t, kControllers + 2> latest = {};
    const std::size_t end = song_->firstEventFrom(frame, songRate_);
    for (std::size_t i = 0; i < end; ++i) {
        const auto& message = song_->events[i].message;
        const int kind = message[0] & 0xf0;
        if (kind == 0xb0) latest[message[1] % kControllers] = i + 1;
        if (kind == 0xc0) latest[kControllers] = i + 1;
        if (kind == 0xe0) latest[kControllers + 1] = i + 1;
    }
    Jump jump = {frame, firstProgram_, 0, {}};
    if (latest[kControllers] == 0 && firstProgram_ >= 0 && firstProgram_ < kProgramsOfMidi) {
        const auto program = static_cast<unsigned char>(firstProgram_);
        jump.messages[jump.messageCount++] = {0xc0, program, 0};
    }
    std::sort(latest.begin(), latest.end());
    for (const std::size_t place : latest) {
        if (place > 0) jump.messages[jump.messageCount++] = song_->events[place - 1].message;
    }
    jumps_.push(jump);
    position_ = frame;
    if (!isRunning_) takeJumps();
}

// The last one counts.
void Player::takeJumps() {
    while (jumps_.pop(jump_)) {
        jumped_ = true;
        songFrame_ = jump_.frame;
        position_ = songFrame_;
        programBefore_ = jump_.programBefore;
        feed_->goTo(songFrame_);
        *ending_ = host::SongEnding(*song_, songRate_, std::nullopt);
        songIsOver_ = false;
        songHasEnded_ = false;
    }
}

void Player::render(float* left, float* right, int frames, bool late) {
    const auto begin = Clock::now();
    if (late) lateBlocks_.fetch_add(1, std::memory_order_relaxed);
    if (frames > host_.blockSize()) {
        std::fill_n(left, frames, 0.0f);
        std::fill_n(right, frames, 0.0f);
        return;
    }
    collectEvents({lastBlock_, begin, frames});
    lastBlock_ = begin;
    host_.process(events_, frames);
    followSong(host_.output(0), host_.output(host_.outputCount() > 1 ? 1 : 0), frames);
    putOut(left, right, frames);

    const double seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    const double load = load_.load(std::memory_order_relaxed);
    load_.store(load + (seconds * host_.sampleRate() / frames - load) * kLoadSmoothing,
                std::memory_order_relaxed);
}

void Player::collectEvents(const BlockWindow& window) {
    events_.clear();
    if (std::exchange(wasStopped_, false)) release();
    addSong(window.frames);
    inbox_.takeInto(events_, window);
}

void Player::release() {
    for (const auto& message : kSilence) events_.push_back({0, message});
}

void Player::addSong(int frames) {
    const bool paused = paused_;  // read before the jumps: playSong() writes it after its jump
    takeJumps();
    if (songIsOver_) {
        events_.push_back({0, kResetControllers});
        if (programBefore_ != kNoProgram && programBefore_ < kProgramsOfMidi) {
            const auto program =
                static_cast<unsigned char>(std::exchange(programBefore_, kNoProgram));
            events_.push_back({0, {0xc0, program, 0}});
        }
        return;
    }
    if (songHasEnded_) return;
    if (paused && !wasPaused_) release();
    wasPaused_ = paused;
    if (paused) return;
    if (std::exchange(jumped_, false)) {
        release();
        events_.push_back({0, kResetControllers});
        for (std::size_t i = 0; i < jump_.messageCount; ++i) {
            events_.push_back({0, jump_.messages[i]});
        }
    }
    const auto& song = feed_->eventsBetween(songFrame_, songFrame_ + frames);
    events_.insert(events_.end(), song.begin(), song.end());
}

void Player::putOut(float* left, float* right, int frames) {
    const float* const hostLeft = host_.output(0);
    const float* const hostRight = host_.output(host_.outputCount() > 1 ? 1 : 0);
    const bool fading = fading_.load(std::memory_order_relaxed);
    const auto step = static_cast<float>(1.0 / (kFadeSeconds * host_.sampleRate()));
    for (int i = 0; i < frames; ++i) {
        if (fading) gain_ = std::max(gain_ - step, 0.0f);
        left[i] = hostLeft[i] * gain_;
        right[i] = hostRight[i] * gain_;
        if (ceiling_) ceiling_->hold(left[i], right[i]);
    }
    if (gain_ == 0.0f) faded_.store(true, std::memory_order_relaxed);
}

void Player::followSong(const float* left, const float* right, int frames) {
    if (std::exchange(songIsOver_, false)) songHasEnded_ = true;  // and all is reset
    if (songHasEnded_ || wasPaused_) return;
    for (int i = 0; i < frames; ++i) {
        ending_->hear(songFrame_ + i, left[i]);
        ending_->hear(songFrame_ + i, right[i]);
    }
    songFrame_ += frames;
    position_.store(songFrame_, std::memory_order_relaxed);
    songIsOver_ = songFrame_ >= ending_->end();
}

}  // namespace app
