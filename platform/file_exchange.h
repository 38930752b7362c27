// How files come and go where users see no folders, as in a browser.
#pragma once

#include <optional>
#include <string>

namespace platform {

// Every file written into this folder is handed to the user, and is gone afterwards. Ends in a
// separator. Nothing where users see the system's folders.
std::optional<std::string> exchangeFolder();

// Asks the user for a bank or a preset, which the page then loads. Returns at once.
void askForFile();

}  // namespace platform
