// The state in a host's stream.
#include "plugin/state_stream.h"
#include "plugin/vst3/shell.h"

namespace vst3 {

tresult Shell::setState(IBStream* stream) {
    if (!stream) return kInvalidArgument;
    bool ended = false;
    const auto saved = plugin::readState([&](char* buffer, int size) {
        int32 count = 0;
        if (!ended) ended = stream->read(buffer, size, &count) != kResultOk;
        return count;
    });
    if (!saved) return kResultFalse;
    bypassed_ = saved->bypassed;
    told_.setProgram(saved->program);
    instrument_.loadSavedState(*saved);
    return kResultOk;
}

tresult Shell::getState(IBStream* stream) {
    if (!stream) return kInvalidArgument;
    state::SavedState saved = instrument_.savedState();
    saved.bypassed = bypassed_;
    const bool written = plugin::writeState(saved, [stream](char* bytes, int size) {
        int32 count = 0;
        return stream->write(bytes, size, &count) == kResultOk ? count : 0;
    });
    return written ? kResultOk : kResultFalse;
}

}  // namespace vst3
