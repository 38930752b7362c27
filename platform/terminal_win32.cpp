// Terminals through the C library of Windows.
#include "platform/terminal.h"

#include <io.h>
#include <stdio.h>

namespace platform {

bool errorStreamIsTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

}  // namespace platform
