// Whether this process has met a skin that could not be read.
#pragma once

namespace editor {

// Once set, editors of the process show the data-folder screen instead of a skin.
bool isSkinMissing();
void setSkinMissing(bool missing);

}  // namespace editor
