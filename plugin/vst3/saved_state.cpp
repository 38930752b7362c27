// The state in a host's stream, which may move fewer bytes than it is asked to.
#include "state/saved_state.h"

#include "plugin/vst3/shell.h"

namespace vst3 {

namespace {

// All that the stream has; nothing when that is longer than any state.
std::optional<std::string> readAll(IBStream& stream) {
    std::string bytes;
    char piece[4096];
    while (bytes.size() <= static_cast<size_t>(state::kLongestState)) {
        int32 count = 0;
        const tresult result = stream.read(piece, sizeof piece, &count);
        if (count <= 0 || count > static_cast<int32>(sizeof piece)) return bytes;
        bytes.append(piece, static_cast<size_t>(count));
        if (result != kResultOk) return bytes;
    }
    return std::nullopt;
}

bool writeAll(IBStream& stream, std::string& bytes) {
    for (size_t written = 0; written < bytes.size();) {
        const auto left = static_cast<int32>(bytes.size() - written);
        int32 count = 0;
        const tresult result = stream.write(bytes.data() + written, left, &count);
        if (result != kResultOk || count <= 0 || count > left) return false;
        written += static_cast<size_t>(count);
    }
    return true;
}

}  // namespace

tresult Shell::setState(IBStream* stream) {
    if (!stream) return kInvalidArgument;
    const auto bytes = readAll(*stream);
    const auto saved = bytes ? state::readSavedState(*bytes) : std::nullopt;
    if (!saved) return kResultFalse;
    bypassed_ = saved->bypassed;
    toldProgram_ = saved->program;
    instrument_.loadSavedState(*saved);
    return kResultOk;
}

tresult Shell::getState(IBStream* stream) {
    if (!stream) return kInvalidArgument;
    state::SavedState saved = instrument_.savedState();
    saved.bypassed = bypassed_;
    std::string bytes = state::bytesOf(saved);
    return writeAll(*stream, bytes) ? kResultOk : kResultFalse;
}

}  // namespace vst3
