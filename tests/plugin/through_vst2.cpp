// The song as a VST 2.4 host plays it.
#include "tests/plugin/song.h"
#include "tests/plugin/vst2/plugin_under_test.h"

namespace song {

Sound throughVst2() {
    const TestHost host;
    const PluginLibrary library;
    PluginInstance plugin(library.entry());
    plugin.dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(kRate));
    plugin.dispatch(effMainsChanged, 0, 1);
    Sound sound{std::vector<float>(kFrames), std::vector<float>(kFrames)};
    int start = 0;
    for (const int size : blocks()) {
        VstMidiEvent midi[std::size(kSong)] = {};
        struct {
            VstInt32 count = 0;
            VstIntPtr reserved = 0;
            VstMidiEvent* events[std::size(kSong)];
        } list;
        forEachStep(start, size, [&](const Step& step, int offset) {
            if (step.status == 0) {
                return plugin->setParameter(plugin.record(), step.data1, step.data2 * 0.01f);
            }
            VstMidiEvent& event = midi[list.count];
            event.type = kVstMidiType;
            event.deltaFrames = offset;
            event.midiData[0] = static_cast<char>(step.status);
            event.midiData[1] = static_cast<char>(step.data1);
            event.midiData[2] = static_cast<char>(step.data2);
            list.events[list.count++] = &event;
        });
        plugin.dispatch(effProcessEvents, 0, 0, &list);
        float* outputs[] = {&sound.left[start], &sound.right[start]};
        plugin->processReplacing(plugin.record(), nullptr, outputs, size);
        start += size;
    }
    return sound;
}

}  // namespace song
