// Renders block after block without allocating or waiting.
#include "app/player.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/song_selection.h"

namespace app {
namespace {

constexpr double kFadeSeconds = 0.02;
constexpr double kLoadSmoothing = 0.05;  // weight of a block's load
constexpr host::MidiMessage kSilence[] = {{0xb0, 64, 0}, {0xb0, 123, 0}};  // release pedal and keys
constexpr std::size_t kMessagesAfterSong = 2;
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
    events_.reserve(songEvents + std::size(kSilence) + kMessagesAfterSong +
                    MidiInbox::kMaxMessagesPerBlock);
    host.reserveEvents(events_.capacity());
}

void Player::start() {
    const int rate = host_.sampleRate();
    if (!songHasEnded_) {
        if (songRate_ > 0 && songRate_ != rate) songFrame_ = songFrame_ * rate / songRate_;
        songRate_ = rate;
        feed_.emplace(*song_, rate);
        feed_->skipTo(songFrame_);
        ending_.emplace(*song_, rate, std::nullopt);
        const bool begins = !std::exchange(hasBegun_, true);
        if (begins && host::changesProgram(*song_)) programBefore_ = host_.program();
    }
    if (hasCeiling_) ceiling_.emplace(rate);
    lateBlocks_ = 0;
    inbox_.clear();
    lastBlock_ = Clock::now();
    host_.resume();
}

void Player::stop() {
    host_.suspend();
    load_ = 0.0;
    wasStopped_ = true;
}

void Player::leaveSong() {
    if (programBefore_ != kNoProgram) host_.setProgram(std::exchange(programBefore_, kNoProgram));
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
    if (std::exchange(wasStopped_, false)) {
        for (const auto& message : kSilence) events_.push_back({0, message});
    }
    if (std::exchange(songIsOver_, false)) {
        events_.push_back({0, kResetControllers});
        if (programBefore_ != kNoProgram && programBefore_ < kProgramsOfMidi) {
            const auto program =
                static_cast<unsigned char>(std::exchange(programBefore_, kNoProgram));
            events_.push_back({0, {0xc0, program, 0}});
        }
    }
    if (!songHasEnded_.load(std::memory_order_relaxed)) {
        const auto& song = feed_->eventsBetween(songFrame_, songFrame_ + window.frames);
        events_.insert(events_.end(), song.begin(), song.end());
    }
    inbox_.takeInto(events_, window);
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
    if (songHasEnded_.load(std::memory_order_relaxed)) return;
    for (int i = 0; i < frames; ++i) {
        ending_->hear(songFrame_ + i, left[i]);
        ending_->hear(songFrame_ + i, right[i]);
    }
    songFrame_ += frames;
    if (songFrame_ < ending_->end()) return;
    songIsOver_ = true;
    songHasEnded_.store(true, std::memory_order_relaxed);
}

}  // namespace app
