// quarzel-render, the offline host: renders MIDI files through an instrument into sound files.
#include <csignal>
#include <cstdlib>
#include <iostream>

#include <unistd.h>

#include "render/program.h"

namespace {

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);  // a signal handler sets it

void interrupt(int) {
    interrupted = true;
}

}  // namespace

int main(int argc, char** argv) {
    // An instrument's messages go to standard error: there may be nobody to close a window.
    unsetenv("DISPLAY");
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    std::signal(SIGHUP, interrupt);
    std::signal(SIGXFSZ, SIG_IGN);  // exceeding a file size limit is an error, not the end
    const bool watched = isatty(STDERR_FILENO) == 1;
    return render::run(argc, argv, {std::cout, std::cerr, watched, interrupted});
}
