// Documents through the desktop's own opener.
#include "platform/system_document.h"

#include <cerrno>

#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace platform {

bool openSystemDocument(const std::string& path) {
    // The shell goes at once and leaves the opener to the system: no dead child stays behind in a
    // host that does not expect any.
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
    // A host may have collected the shell before us.
    return ended < 0 || status == 0;
}

}  // namespace platform
