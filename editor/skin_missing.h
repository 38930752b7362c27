// Whether this process has met a skin that could not be read, and which one.
#pragma once

#include <string>

namespace editor {

// Once set, editors of the process show the data-folder screen instead of a skin.
bool isSkinMissing();
void setSkinMissing(bool missing);

// What the data-folder screen says about a chosen skin that could not be opened; mostly empty.
std::string screenReason();
void setScreenReason(const std::string& reason);

}  // namespace editor
