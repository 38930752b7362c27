// Remembers whether this process has met an unreadable skin.
#pragma once

#include <string>

namespace editor {

// While set, all editors of the process show the data-folder screen instead of a skin.
bool isSkinMissing();
void setSkinMissing(bool missing);

// The data-folder screen's sentence about a chosen skin that cannot be opened. Usually empty.
std::string screenReason();
void setScreenReason(const std::string& reason);

}  // namespace editor
