// Runs the whole program in-process.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "render/program.h"
#include "tests/host/midi_bytes.h"
#include "tests/support/temporary_folder.h"

// One second with a note at the start and at the end.
inline const std::string kSong = midiFile(0, 500, {bytes({0, 0x90, 60, 64, 0x87, 0x68, 60, 0})});

struct Outcome {
    int exitCode;
    std::string out;
    std::string err;
};

inline Outcome run(std::vector<std::string> arguments, bool wasInterrupted = false) {
    arguments.insert(arguments.begin(), "quarzel-render");
    std::vector<const char*> argv;
    for (const auto& argument : arguments) argv.push_back(argument.c_str());
    std::ostringstream out, err;
    const std::atomic<bool> interrupted{wasInterrupted};
    const int exitCode =
        render::run(static_cast<int>(argv.size()), argv.data(), {out, err, false, interrupted});
    return {exitCode, out.str(), err.str()};
}

inline std::vector<std::string> with(std::vector<std::string> options, const std::string& song,
                                     const std::string& output) {
    options.insert(options.end(), {"--plugin", TEST_INSTRUMENT, song, output});
    return options;
}

class QuarzelRender : public testing::Test {
  protected:
    TemporaryFolder folder_;
    std::string song_ = folder_.write("song.mid", kSong);
    std::string output_ = folder_.path("out.wav");
};
