// Does not look for a display: opening a frame reports a missing one.
#include "editor/toolkit.h"

namespace editor {

bool Toolkit::hasDisplay() {
    return true;
}

}  // namespace editor
