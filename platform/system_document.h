// Opens a document through the system. One definition per system; only openDocument calls it.
#pragma once

#include <string>

namespace platform {

bool openSystemDocument(const std::string& path);

}  // namespace platform
