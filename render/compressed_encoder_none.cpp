// A build without a library for compressed files.
#include "platform/temporary_file.h"
#include "render/sound_encoder.h"

namespace render {

bool canCompress() {
    return false;
}

std::unique_ptr<SoundEncoder> encodeCompressed(const EncodedFile& file, const SoundSettings&) {
    platform::failToWrite(file.finalPath, "this build writes WAV files alone");
}

}  // namespace render
