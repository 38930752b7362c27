// Keeps the sound libraries from writing to standard error: what they have to say, we say.
#pragma once

#include <streambuf>

namespace app {

// For the whole run: RtAudio writes to std::cerr from threads of its own, ALSA and JACK to stderr.
// Who wants to be read meanwhile writes through another stream.
class QuietLibraries {
  public:
    QuietLibraries();
    ~QuietLibraries();
    QuietLibraries(const QuietLibraries&) = delete;
    QuietLibraries& operator=(const QuietLibraries&) = delete;

  private:
    std::streambuf* before_;
};

}  // namespace app
