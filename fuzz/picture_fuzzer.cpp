// Skin pictures.
#include "fuzz/support/target.h"
#include "gui/graphics/picture_reader.h"

namespace {

void run(std::string_view bytes) {
    const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto picture = VSTGUI::readPicture({data, data + bytes.size()});
    if (!picture) return;
    // Blending relies on it.
    for (int y = 0; y < picture->height(); ++y) {
        for (int x = 0; x < picture->width(); ++x) {
            const std::uint32_t pixel = picture->at(x, y);
            for (const int shift : {0, 8, 16}) {
                fuzz::require((pixel >> shift & 255) <= pixel >> 24, "no colour exceeds its alpha");
            }
        }
    }
}

const fuzz::Registered registered("picture", run);

}  // namespace
