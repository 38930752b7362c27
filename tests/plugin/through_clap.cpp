// The song as a CLAP host plays it.
#include "platform/shared_library.h"
#include "state/parameter_text.h"
#include "tests/plugin/clap/driver.h"
#include "tests/plugin/song.h"

namespace song {

namespace {

// Notes in the host's own dialect, all else in that of MIDI.
void put(clap_driver::Events& events, const Step& step, int offset) {
    const auto time = static_cast<uint32_t>(offset);
    if (step.status == 0) {
        const float value = step.data2 * 0.01f;
        events.value(static_cast<clap::Id>(step.data1), clap::plainOf(step.data1, value), time);
    } else if (step.status == 0x90 || step.status == 0x80) {
        const auto type = step.status == 0x90 ? clap::kEventNoteOn : clap::kEventNoteOff;
        events.note(type, {-1, 0, 0, static_cast<int16_t>(step.data1)}, step.data2 / 127.0, time);
    } else {
        events.midi(step.status, step.data1, step.data2, time);
    }
}

}  // namespace

Sound throughClap() {
    const platform::SharedLibrary library(QUARZEL_CLAP);
    const void* const symbol = reinterpret_cast<const void*>(library.symbol("clap_entry"));
    const auto& entry = *static_cast<const clap::Entry*>(symbol);
    EXPECT_TRUE(entry.init(QUARZEL_CLAP));
    Sound sound;
    {
        clap_driver::TestHost host;
        clap_driver::Instance instance(host, entry.get_factory);
        instance.activate(kRate, 4096);
        int start = 0;
        for (const int size : blocks()) {
            forEachStep(start, size,
                        [&](const Step& step, int offset) { put(instance.events, step, offset); });
            sound.append(instance.render(size));
            start += size;
        }
    }
    entry.deinit();
    return sound;
}

}  // namespace song
