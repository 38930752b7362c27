// The system's own way to open a document: one definition per system, called by openDocument alone.
#pragma once

#include <string>

namespace platform {

bool openSystemDocument(const std::string& path);

}  // namespace platform
