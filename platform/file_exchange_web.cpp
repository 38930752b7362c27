// Downloads and the browser's picker.
#include "platform/file_exchange.h"
#include "platform/web_page.h"

namespace platform {

std::optional<std::string> exchangeFolder() {
    return "/downloads/";
}

void askForFile() {
    quarzelAskForFile();
}

}  // namespace platform
