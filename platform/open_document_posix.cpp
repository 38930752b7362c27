// Documents through the desktop's opener.
#include "platform/system_document.h"

#include <cerrno>

#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace platform {

bool openSystemDocument(const std::string& path) {
    // The shell exits at once and init adopts the opener, so the host gets no zombie process that
    // it does not expect.
    const char* const arguments[] = {
        "sh",
        "-c",
        "command -v xdg-open >/dev/null && { xdg-open \"$1\" >/dev/null 2>&1 & }",
        "sh",
        path.c_str(),
        nullptr};
    pid_t shell = 0;
    if (posix_spawn(&shell, "/bin/sh", nullptr, nullptr, const_cast<char* const*>(arguments),
                    environ) != 0) {
        return false;
    }
    int status = 0;
    pid_t ended = 0;
    do {
        ended = waitpid(shell, &status, 0);
    } while (ended < 0 && errno == EINTR);
    // The host may have waited for the shell before us.
    return ended < 0 || status == 0;
}

}  // namespace platform
