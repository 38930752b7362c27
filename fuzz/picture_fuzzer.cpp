// Feeds arbitrary bytes to the picture reader.
#include "gui/graphics/picture_reader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    const auto picture = VSTGUI::readPicture(bytes, size);
    if (!picture) return 0;
    // No colour may exceed its alpha: blending relies on it.
    for (int y = 0; y < picture->height(); ++y)
        for (int x = 0; x < picture->width(); ++x) {
            const uint32_t pixel = picture->at(x, y);
            const uint32_t alpha = pixel >> 24;
            if ((pixel >> 16 & 255) > alpha || (pixel >> 8 & 255) > alpha || (pixel & 255) > alpha)
                std::abort();
        }
    return 0;
}
