// Keeps the sound libraries from writing to standard error: what they have to say, we say.
#pragma once

#include <iostream>

namespace app {

// RtAudio and RtMidi write to std::cerr. User-interface thread, for the scope of one call.
class QuietLibraries {
  public:
    QuietLibraries() : before_(std::cerr.rdbuf(nullptr)) {}
    ~QuietLibraries() { std::cerr.rdbuf(before_); }
    QuietLibraries(const QuietLibraries&) = delete;
    QuietLibraries& operator=(const QuietLibraries&) = delete;

  private:
    std::streambuf* before_;
};

// Once: ALSA and JACK, which tell every step of a failure.
void silenceSystems();

}  // namespace app
