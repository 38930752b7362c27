// The options that choose the part of a song that is played.
#pragma once

#include <optional>
#include <string>

#include "host/song_selection.h"

namespace host {

class OptionParser;

// The options as typed.
class SongOptions {
  public:
    void declare(OptionParser& parser);
    // Throws UsageError.
    SongSelection selection() const;

  private:
    std::optional<std::string> channels_;
    bool noDrums_ = false;
    bool ignorePrograms_ = false;
};

}  // namespace host
