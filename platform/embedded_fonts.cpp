// The TrueType files built into the module. The build passes in their folder.
#include "platform/embedded_fonts.h"

#ifdef __ELF__
#define QUARZEL_READ_ONLY ".section .rodata.fonts,\"a\",@progbits\n"
#else
#define QUARZEL_READ_ONLY ".section .rdata,\"dr\"\n"
#endif

// The assembler includes the file: a C++ array of its bytes takes many times as long to compile.
#define QUARZEL_EMBED(symbol, file)                                          \
    extern "C" __attribute__((visibility("hidden"))) const uint8_t symbol[]; \
    __asm__(QUARZEL_READ_ONLY ".balign 16\n" #symbol                         \
                              ":\n"                                          \
                              ".incbin \"" QUARZEL_FONT_FOLDER "/" file      \
                              "\"\n"                                         \
                              ".text\n")

QUARZEL_EMBED(quarzelSansRegular, "LiberationSans-Regular.ttf");
QUARZEL_EMBED(quarzelSansBold, "LiberationSans-Bold.ttf");
QUARZEL_EMBED(quarzelSansItalic, "LiberationSans-Italic.ttf");
QUARZEL_EMBED(quarzelSansBoldItalic, "LiberationSans-BoldItalic.ttf");

namespace platform {

const uint8_t* embeddedFont(bool bold, bool italic) {
    if (bold) return italic ? quarzelSansBoldItalic : quarzelSansBold;
    return italic ? quarzelSansItalic : quarzelSansRegular;
}

}  // namespace platform
