// Keeps the sound libraries from writing to standard error; we report their errors ourselves.
#pragma once

#include <streambuf>

namespace app {

// Lives for the whole run: RtAudio writes to std::cerr from its own threads, ALSA and JACK to
// stderr. Use another stream for output meanwhile.
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
