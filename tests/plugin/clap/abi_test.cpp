// Compares our declaration of the CLAP interface with the published headers in the DPF framework:
// the core and seven extensions. For the other extensions and preset discovery, sizes and offsets
// are checked beside the definitions.
#include "plugin/clap/extensions.h"

#include <gtest/gtest.h>

#include "clap/entry.h"
#include "clap/ext/audio-ports.h"
#include "clap/ext/gui.h"
#include "clap/ext/latency.h"
#include "clap/ext/note-ports.h"
#include "clap/ext/params.h"
#include "clap/ext/state.h"
#include "clap/ext/timer-support.h"
#include "clap/plugin-factory.h"
#include "clap/plugin-features.h"
#include "tests/plugin/abi_shape.h"

namespace {

// Members have the published names, so one list works for both.
#define SAME_RECORD(Ours, Theirs, fields)                                                   \
    {                                                                                       \
        const auto all = [](auto& r) { return std::tie fields; };                           \
        EXPECT_EQ(tests::layoutOf<clap::Ours>(all), tests::layoutOf<Theirs>(all)) << #Ours; \
        EXPECT_EQ(sizeof(clap::Ours), sizeof(Theirs)) << #Ours;                             \
    }

TEST(ClapAbi, RecordsHaveThePublishedLayout) {
    SAME_RECORD(Version, clap_version_t, (r.major, r.minor, r.revision));
    SAME_RECORD(Entry, clap_plugin_entry_t, (r.clap_version, r.init, r.deinit, r.get_factory));
    SAME_RECORD(EventHeader, clap_event_header_t, (r.size, r.time, r.space_id, r.type, r.flags));
    SAME_RECORD(EventNote, clap_event_note_t,
                (r.header, r.note_id, r.port_index, r.channel, r.key, r.velocity));
    SAME_RECORD(EventNoteExpression, clap_event_note_expression_t,
                (r.header, r.expression_id, r.note_id, r.port_index, r.channel, r.key, r.value));
    SAME_RECORD(
        EventParamValue, clap_event_param_value_t,
        (r.header, r.param_id, r.cookie, r.note_id, r.port_index, r.channel, r.key, r.value));
    SAME_RECORD(
        EventParamMod, clap_event_param_mod_t,
        (r.header, r.param_id, r.cookie, r.note_id, r.port_index, r.channel, r.key, r.amount));
    SAME_RECORD(EventParamGesture, clap_event_param_gesture_t, (r.header, r.param_id));
    SAME_RECORD(EventMidi, clap_event_midi_t, (r.header, r.port_index, r.data));
    SAME_RECORD(InputEvents, clap_input_events_t, (r.ctx, r.size, r.get));
    SAME_RECORD(OutputEvents, clap_output_events_t, (r.ctx, r.try_push));
    SAME_RECORD(AudioBuffer, clap_audio_buffer_t,
                (r.data32, r.data64, r.channel_count, r.latency, r.constant_mask));
    SAME_RECORD(Process, clap_process_t,
                (r.steady_time, r.frames_count, r.transport, r.audio_inputs, r.audio_outputs,
                 r.audio_inputs_count, r.audio_outputs_count, r.in_events, r.out_events));
    SAME_RECORD(PluginDescriptor, clap_plugin_descriptor_t,
                (r.clap_version, r.id, r.name, r.vendor, r.url, r.manual_url, r.support_url,
                 r.version, r.description, r.features));
    SAME_RECORD(
        Plugin, clap_plugin_t,
        (r.desc, r.plugin_data, r.init, r.destroy, r.activate, r.deactivate, r.start_processing,
         r.stop_processing, r.reset, r.process, r.get_extension, r.on_main_thread));
    SAME_RECORD(Host, clap_host_t,
                (r.clap_version, r.host_data, r.name, r.vendor, r.url, r.version, r.get_extension,
                 r.request_restart, r.request_process, r.request_callback));
    SAME_RECORD(PluginFactory, clap_plugin_factory_t,
                (r.get_plugin_count, r.get_plugin_descriptor, r.create_plugin));
    SAME_RECORD(InputStream, clap_istream_t, (r.ctx, r.read));
    SAME_RECORD(OutputStream, clap_ostream_t, (r.ctx, r.write));

    SAME_RECORD(AudioPortInfo, clap_audio_port_info_t,
                (r.id, r.name, r.flags, r.channel_count, r.port_type, r.in_place_pair));
    SAME_RECORD(PluginAudioPorts, clap_plugin_audio_ports_t, (r.count, r.get));
    SAME_RECORD(NotePortInfo, clap_note_port_info_t,
                (r.id, r.supported_dialects, r.preferred_dialect, r.name));
    SAME_RECORD(PluginNotePorts, clap_plugin_note_ports_t, (r.count, r.get));
    SAME_RECORD(
        ParamInfo, clap_param_info_t,
        (r.id, r.flags, r.cookie, r.name, r.module, r.min_value, r.max_value, r.default_value));
    SAME_RECORD(PluginParams, clap_plugin_params_t,
                (r.count, r.get_info, r.get_value, r.value_to_text, r.text_to_value, r.flush));
    SAME_RECORD(HostParams, clap_host_params_t, (r.rescan, r.clear, r.request_flush));
    SAME_RECORD(PluginState, clap_plugin_state_t, (r.save, r.load));
    SAME_RECORD(HostState, clap_host_state_t, (r.mark_dirty));
    SAME_RECORD(Window, clap_window_t, (r.api, r.x11, r.win32, r.ptr));
    SAME_RECORD(GuiResizeHints, clap_gui_resize_hints_t,
                (r.can_resize_horizontally, r.can_resize_vertically, r.preserve_aspect_ratio,
                 r.aspect_ratio_width, r.aspect_ratio_height));
    SAME_RECORD(PluginGui, clap_plugin_gui_t,
                (r.is_api_supported, r.get_preferred_api, r.create, r.destroy, r.set_scale,
                 r.get_size, r.can_resize, r.get_resize_hints, r.adjust_size, r.set_size,
                 r.set_parent, r.set_transient, r.suggest_title, r.show, r.hide));
    SAME_RECORD(
        HostGui, clap_host_gui_t,
        (r.resize_hints_changed, r.request_resize, r.request_show, r.request_hide, r.closed));
    SAME_RECORD(PluginTimerSupport, clap_plugin_timer_support_t, (r.on_timer));
    SAME_RECORD(HostTimerSupport, clap_host_timer_support_t,
                (r.register_timer, r.unregister_timer));
    SAME_RECORD(PluginLatency, clap_plugin_latency_t, (r.get));
}

#define SAME_VALUES(ours, theirs) \
    EXPECT_EQ(tests::valuesOf<int64_t> ours, tests::valuesOf<int64_t> theirs) << #ours

TEST(ClapAbi, ConstantsHaveThePublishedValues) {
    using namespace clap;
    const char* const kTexts[][2] = {
        {kPluginFactoryId, CLAP_PLUGIN_FACTORY_ID},
        {kFeatureInstrument, CLAP_PLUGIN_FEATURE_INSTRUMENT},
        {kFeatureSynthesizer, CLAP_PLUGIN_FEATURE_SYNTHESIZER},
        {kFeatureStereo, CLAP_PLUGIN_FEATURE_STEREO},
        {kExtAudioPorts, CLAP_EXT_AUDIO_PORTS},
        {kPortStereo, CLAP_PORT_STEREO},
        {kExtNotePorts, CLAP_EXT_NOTE_PORTS},
        {kExtParams, CLAP_EXT_PARAMS},
        {kExtState, CLAP_EXT_STATE},
        {kExtGui, CLAP_EXT_GUI},
        {kWindowApiWin32, CLAP_WINDOW_API_WIN32},
        {kWindowApiX11, CLAP_WINDOW_API_X11},
        {kExtTimerSupport, CLAP_EXT_TIMER_SUPPORT},
        {kExtLatency, CLAP_EXT_LATENCY},
    };
    for (const auto& text : kTexts) EXPECT_STREQ(text[0], text[1]);

    SAME_VALUES((kInvalidId, kCoreEventSpaceId), (CLAP_INVALID_ID, CLAP_CORE_EVENT_SPACE_ID));
    SAME_VALUES((kEventDontRecord, kEventNoteOn, kEventNoteOff, kEventNoteChoke, kEventNoteEnd,
                 kEventNoteExpression, kEventParamValue, kEventParamMod, kEventParamGestureBegin,
                 kEventParamGestureEnd, kEventMidi, kNoteExpressionVolume),
                (CLAP_EVENT_DONT_RECORD, CLAP_EVENT_NOTE_ON, CLAP_EVENT_NOTE_OFF,
                 CLAP_EVENT_NOTE_CHOKE, CLAP_EVENT_NOTE_END, CLAP_EVENT_NOTE_EXPRESSION,
                 CLAP_EVENT_PARAM_VALUE, CLAP_EVENT_PARAM_MOD, CLAP_EVENT_PARAM_GESTURE_BEGIN,
                 CLAP_EVENT_PARAM_GESTURE_END, CLAP_EVENT_MIDI, CLAP_NOTE_EXPRESSION_VOLUME));
    SAME_VALUES((kProcessError, kProcessContinue, kProcessSleep, kAudioPortIsMain, kNoteDialectClap,
                 kNoteDialectMidi),
                (CLAP_PROCESS_ERROR, CLAP_PROCESS_CONTINUE, CLAP_PROCESS_SLEEP,
                 CLAP_AUDIO_PORT_IS_MAIN, CLAP_NOTE_DIALECT_CLAP, CLAP_NOTE_DIALECT_MIDI));
    SAME_VALUES((kParamIsStepped, kParamIsAutomatable, kParamRescanValues, kParamRescanText),
                (CLAP_PARAM_IS_STEPPED, CLAP_PARAM_IS_AUTOMATABLE, CLAP_PARAM_RESCAN_VALUES,
                 CLAP_PARAM_RESCAN_TEXT));
}

}  // namespace
