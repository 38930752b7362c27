// Leaves it to the opening of a frame to find out whether there is a display.
#include "editor/toolkit.h"

namespace editor {

bool Toolkit::hasDisplay() {
    return true;
}

}  // namespace editor
