// Documents through the desktop's opener.
#include "platform/system_document.h"

#include <cerrno>

#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace platform {

bool openSystemDocument(const std::string& path) {
    // The shell exits before an opener that goes on, and init adopts it, so the host gets no zombie
    // process that it does not expect. The opener has two seconds to report that nothing on this
    // system opens the document.
    constexpr const char* kScript = R"(command -v xdg-open >/dev/null || exit
xdg-open "$1" >/dev/null 2>&1 &
for tenth in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20; do
    sleep 0.1
    kill -0 $! 2>/dev/null || { wait $!; exit; }
done)";
    const char* const arguments[] = {"sh", "-c", kScript, "sh", path.c_str(), nullptr};
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
