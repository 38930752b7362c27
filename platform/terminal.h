// Whether somebody watches the messages of this program.
#pragma once

namespace platform {

// Whether standard error is shown on a terminal.
bool errorStreamIsTerminal();

}  // namespace platform
