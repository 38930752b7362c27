// Terminals and signals.
#include "platform/console.h"

#include <csignal>
#include <cstdlib>

#include <unistd.h>

namespace platform {
namespace {

std::atomic<std::atomic<bool>*> interrupted{nullptr};
static_assert(std::atomic<bool>::is_always_lock_free);  // a signal handler sets it

void interrupt(int) {
    *interrupted.load() = true;
}

}  // namespace

void useUtf8Console() {}

bool isErrorOutputWatched() {
    return isatty(STDERR_FILENO) == 1;
}

void setWhenInterrupted(std::atomic<bool>& flag) {
    interrupted = &flag;
    constexpr int kEndings[] = {SIGINT, SIGTERM, SIGHUP};
    for (const int number : kEndings) std::signal(number, interrupt);
    std::signal(SIGXFSZ, SIG_IGN);  // exceeding a file size limit is an error, not the end
}

void printMessages() {
    unsetenv("DISPLAY");
}

}  // namespace platform
