// quarzel-render, the offline host: plays a MIDI file on an instrument into a WAV file.
#include <csignal>
#include <cstdlib>
#include <iostream>

#include <unistd.h>

#include "render/program.h"

namespace {

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);  // or a signal could not set it

void interrupt(int) {
    interrupted = true;
}

}  // namespace

int main(int argc, char** argv) {
    // What an instrument has to say goes to standard error: nobody may be there to close a window.
    unsetenv("DISPLAY");
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    std::signal(SIGHUP, interrupt);
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is an error, not the end
    const bool watched = isatty(STDERR_FILENO) == 1;
    return render::run(argc, argv, {std::cout, std::cerr, watched, interrupted});
}
