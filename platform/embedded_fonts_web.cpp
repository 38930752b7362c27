// The TrueType files, which the page puts beside the module: only upright ones, as none of its
// skins asks for more and each takes 0.2 MB of transfer.
#include "platform/embedded_fonts.h"

#include <array>
#include <string>

#include "platform/file.h"
#include "platform/folders.h"

namespace platform {
namespace {

constexpr std::size_t kLargestFont = 4 << 20;

std::string readFont(const char* style) {
    return readFile(moduleFolder().value_or("") + "fonts/LiberationSans-" + style + ".ttf",
                    kLargestFont)
        .value_or("");
}

}  // namespace

const uint8_t* embeddedFont(bool bold, bool /*italic*/) {
    static const std::array<std::string, 2> fonts = {readFont("Regular"), readFont("Bold")};
    return reinterpret_cast<const uint8_t*>(fonts[bold ? 1 : 0].data());
}

}  // namespace platform
