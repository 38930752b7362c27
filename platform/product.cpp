// The version, which the build hands in.
#include "platform/product.h"

namespace platform {

const char* productVersion() {
    return QUARZEL_VERSION;
}

}  // namespace platform
