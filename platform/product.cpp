// The version, passed in by the build.
#include "platform/product.h"

namespace platform {

const char* productVersion() {
    return QUARZEL_VERSION;
}

}  // namespace platform
