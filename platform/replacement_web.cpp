// Replaces a file in the page's memory, where there is no other writer, and tells the page.
#include "platform/system_replacement.h"
#include "platform/web_page.h"

#include <fcntl.h>
#include <unistd.h>

namespace platform {

bool replaceSystemFile(const std::string& path, Links, const ContentsMaker& contents) {
    const auto bytes = contents();
    if (!bytes) return false;
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (descriptor < 0) return false;
    const ssize_t written = write(descriptor, bytes->data(), bytes->size());
    close(descriptor);
    if (written != static_cast<ssize_t>(bytes->size())) return false;
    quarzelFileWritten(path.c_str());
    return true;
}

}  // namespace platform
