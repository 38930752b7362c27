// quarzel, the standalone application: the instrument with its own window, audio and MIDI.
#include <csignal>
#include <iostream>

#include "app/program.h"

namespace {

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);  // a signal handler sets it

// A second signal ends the program at once.
void interrupt(int number) {
    interrupted = true;
    std::signal(number, SIG_DFL);
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    std::signal(SIGHUP, interrupt);
    std::signal(SIGPIPE, SIG_IGN);  // treat a dead server as a lost device
    std::ostream err(std::cerr.rdbuf());
    return app::run(argc, argv, {std::cout, err, interrupted});
}
