// What temporary files have in common on all systems.
#include "platform/temporary_file.h"

namespace platform {

std::string TemporaryFile::temporaryPath(const std::string& path, int number) {
    return path + ".quarzel-part" + std::to_string(number);
}

void failToWrite(const std::string& path, const std::string& reason) {
    throw InputError(path + " cannot be written: " + reason + ".");
}

}  // namespace platform
