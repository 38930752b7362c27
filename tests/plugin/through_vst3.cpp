// The song as a VST 3 host plays it.
#include "platform/shared_library.h"
#include "tests/plugin/song.h"
#include "tests/plugin/vst3/driver.h"

namespace song {

namespace {

// As a host hands the same song on: notes as events, all else as points of parameters.
void put(driver::Instance& instance, const Step& step, int offset) {
    using namespace driver;
    const double value = step.data2 / 127.0;
    switch (step.status) {
        case 0:
            return instance.changes.add(static_cast<ParamID>(step.data1), offset,
                                        step.data2 * 0.01f);
        case 0xB0:
            return instance.changes.add(kFirstControllerId + step.data1, offset, value);
        case 0xC0:
            return instance.changes.add(kProgramId, offset, step.data1 / 127.0);
        case 0xD0:
            return instance.changes.add(kFirstControllerId + kAfterTouch, offset,
                                        step.data1 / 127.0);
        case 0xE0:
            return instance.changes.add(kFirstControllerId + kPitchBend, offset,
                                        (step.data1 + step.data2 * 128) / 16383.0);
        case 0xA0: {
            Event event{};
            event.sampleOffset = offset;
            event.type = Event::kPolyPressureEvent;
            event.polyPressure = {0, static_cast<int16>(step.data1), static_cast<float>(value), -1};
            return instance.events.list.push_back(event);
        }
        default:
            return instance.events.note(step.status == 0x90, step.data1, step.data2, offset);
    }
}

}  // namespace

Sound throughVst3() {
    const platform::SharedLibrary library(QUARZEL_VST3);
    using Entry = vst3::IPluginFactory* (*)();
    const driver::Ref<vst3::IPluginFactory> factory(
        reinterpret_cast<Entry>(library.symbol("GetPluginFactory"))());
    driver::Instance instance(factory.get());
    instance.start(kRate, 4096);
    Sound sound;
    int start = 0;
    for (const int size : blocks()) {
        forEachStep(start, size,
                    [&](const Step& step, int offset) { put(instance, step, offset); });
        sound.append(instance.render(size));
        start += size;
    }
    return sound;
}

}  // namespace song
