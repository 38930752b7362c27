// The song as an LV2 host plays it: parameters by their ports, all else as MIDI.
#include "platform/shared_library.h"
#include "tests/plugin/lv2/driver.h"
#include "tests/plugin/song.h"

namespace song {

namespace {

void put(lv2_driver::Instance& instance, const Step& step, int offset) {
    if (step.status == 0) {
        instance.controls[step.data1] =
            lv2::portValue(step.data1, static_cast<float>(step.data2) * 0.01f);
        return;
    }
    std::vector<std::uint8_t> bytes = {static_cast<std::uint8_t>(step.status),
                                       static_cast<std::uint8_t>(step.data1),
                                       static_cast<std::uint8_t>(step.data2)};
    const bool isShort = step.status == 0xC0 || step.status == 0xD0;
    bytes.resize(isShort ? 2 : 3);
    instance.send(offset, bytes);
}

}  // namespace

Sound throughLv2() {
    using Descriptor = const LV2_Descriptor* (*)(std::uint32_t index);
    const platform::SharedLibrary library(QUARZEL_LV2);
    const auto* const descriptor =
        reinterpret_cast<Descriptor>(library.symbol("lv2_descriptor"))(0);
    lv2_driver::Host host;
    lv2_driver::Instance instance(descriptor, host, kRate);
    Sound sound;
    int start = 0;
    for (const int size : blocks()) {
        forEachStep(start, size,
                    [&](const Step& step, int offset) { put(instance, step, offset); });
        sound.append(instance.run(static_cast<std::uint32_t>(size)));
        start += size;
    }
    return sound;
}

}  // namespace song
