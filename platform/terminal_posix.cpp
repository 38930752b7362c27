// Terminals through POSIX calls.
#include "platform/terminal.h"

#include <unistd.h>

namespace platform {

bool errorStreamIsTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace platform
