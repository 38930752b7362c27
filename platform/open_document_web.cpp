// Documents of the site, by the names of their files.
#include "platform/system_document.h"
#include "platform/web_page.h"

namespace platform {

bool openSystemDocument(const std::string& path) {
    return quarzelOpenDocument(path.substr(path.rfind('/') + 1).c_str()) != 0;
}

}  // namespace platform
