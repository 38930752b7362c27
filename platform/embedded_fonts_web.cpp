// The TrueType files, which the page puts beside the module.
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

const uint8_t* embeddedFont(bool bold, bool italic) {
    static const std::array<std::string, 4> fonts = {readFont("Regular"), readFont("Bold"),
                                                     readFont("Italic"), readFont("BoldItalic")};
    return reinterpret_cast<const uint8_t*>(fonts[(bold ? 1 : 0) + (italic ? 2 : 0)].data());
}

}  // namespace platform
