// Compares our declaration of the VST 3 interface with the independent C declaration in the DPF
// framework.
#include "plugin/vst3/controller.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/plugin/abi_shape.h"
#include "travesty/audio_processor.h"
#include "travesty/component.h"
#include "travesty/edit_controller.h"
#include "travesty/factory.h"
#include "travesty/host.h"
#include "travesty/unit.h"
#include "travesty/view.h"

using namespace vst3;

namespace {

constexpr size_t kSlot = sizeof(void*);

#define SAME_RECORD(Ours, Theirs, ours, theirs)                                   \
    EXPECT_EQ(sizeof(Ours), sizeof(Theirs)) << #Ours;                             \
    EXPECT_EQ(tests::layoutOf<Ours>([](Ours& o) { return std::tie ours; }),       \
              tests::layoutOf<Theirs>([](Theirs& t) { return std::tie theirs; })) \
        << #Ours

TEST(Vst3Abi, RecordsHaveThePublishedLayout) {
    SAME_RECORD(PFactoryInfo, v3_factory_info, (o.vendor, o.url, o.email, o.flags),
                (t.vendor, t.url, t.email, t.flags));
    SAME_RECORD(PClassInfo, v3_class_info, (o.cid, o.cardinality, o.category, o.name),
                (t.class_id, t.cardinality, t.category, t.name));
    SAME_RECORD(PClassInfo2, v3_class_info_2,
                (o.cid, o.cardinality, o.category, o.name, o.classFlags, o.subCategories, o.vendor,
                 o.version, o.sdkVersion),
                (t.class_id, t.cardinality, t.category, t.name, t.class_flags, t.sub_categories,
                 t.vendor, t.version, t.sdk_version));
    SAME_RECORD(PClassInfoW, v3_class_info_3,
                (o.cid, o.cardinality, o.category, o.name, o.classFlags, o.subCategories, o.vendor,
                 o.version, o.sdkVersion),
                (t.class_id, t.cardinality, t.category, t.name, t.class_flags, t.sub_categories,
                 t.vendor, t.version, t.sdk_version));
    SAME_RECORD(BusInfo, v3_bus_info,
                (o.mediaType, o.direction, o.channelCount, o.name, o.busType, o.flags),
                (t.media_type, t.direction, t.channel_count, t.bus_name, t.bus_type, t.flags));
    SAME_RECORD(RoutingInfo, v3_routing_info, (o.mediaType, o.busIndex, o.channel),
                (t.media_type, t.bus_idx, t.channel));
    SAME_RECORD(NoteOnEvent, v3_event_note_on,
                (o.channel, o.pitch, o.tuning, o.velocity, o.length, o.noteId),
                (t.channel, t.pitch, t.tuning, t.velocity, t.length, t.note_id));
    SAME_RECORD(NoteOffEvent, v3_event_note_off,
                (o.channel, o.pitch, o.velocity, o.noteId, o.tuning),
                (t.channel, t.pitch, t.velocity, t.note_id, t.tuning));
    SAME_RECORD(PolyPressureEvent, v3_event_poly_pressure,
                (o.channel, o.pitch, o.pressure, o.noteId),
                (t.channel, t.pitch, t.pressure, t.note_id));
    SAME_RECORD(Event, v3_event,
                (o.busIndex, o.sampleOffset, o.ppqPosition, o.flags, o.type, o.noteOn, o.noteOff,
                 o.polyPressure),
                (t.bus_index, t.sample_offset, t.ppq_position, t.flags, t.type, t.note_on,
                 t.note_off, t.poly_pressure));
    SAME_RECORD(ProcessSetup, v3_process_setup,
                (o.processMode, o.symbolicSampleSize, o.maxSamplesPerBlock, o.sampleRate),
                (t.process_mode, t.symbolic_sample_size, t.max_block_size, t.sample_rate));
    SAME_RECORD(
        AudioBusBuffers, v3_audio_bus_buffers,
        (o.numChannels, o.silenceFlags, o.channelBuffers32, o.channelBuffers64),
        (t.num_channels, t.channel_silence_bitset, t.channel_buffers_32, t.channel_buffers_64));
    SAME_RECORD(ProcessData, v3_process_data,
                (o.processMode, o.symbolicSampleSize, o.numSamples, o.numInputs, o.numOutputs,
                 o.inputs, o.outputs, o.inputParameterChanges, o.outputParameterChanges,
                 o.inputEvents, o.outputEvents, o.processContext),
                (t.process_mode, t.symbolic_sample_size, t.nframes, t.num_input_buses,
                 t.num_output_buses, t.inputs, t.outputs, t.input_params, t.output_params,
                 t.input_events, t.output_events, t.ctx));
    SAME_RECORD(ParameterInfo, v3_param_info,
                (o.id, o.title, o.shortTitle, o.units, o.stepCount, o.defaultNormalizedValue,
                 o.unitId, o.flags),
                (t.param_id, t.title, t.short_title, t.units, t.step_count,
                 t.default_normalised_value, t.unit_id, t.flags));
    SAME_RECORD(UnitInfo, v3_unit_info, (o.id, o.parentUnitId, o.name, o.programListId),
                (t.id, t.parent_unit_id, t.name, t.program_list_id));
    SAME_RECORD(ProgramListInfo, v3_program_list_info, (o.id, o.name, o.programCount),
                (t.id, t.name, t.programCount));
    SAME_RECORD(ViewRect, v3_view_rect, (o.left, o.top, o.right, o.bottom),
                (t.left, t.top, t.right, t.bottom));
}

// `base` methods are inherited. The rest of the table is the whole C record.
#define SAME_TABLE(Ours, Theirs, base, ours, theirs)                                          \
    {                                                                                         \
        using I = Ours;                                                                       \
        const auto methods = tests::methodShapes ours;                                        \
        EXPECT_EQ(methods, tests::layoutOf<Theirs>([](Theirs& t) { return std::tie theirs; }, \
                                                   base * kSlot))                             \
            << #Ours;                                                                         \
        EXPECT_EQ(methods.size() * kSlot, sizeof(Theirs)) << #Ours;                           \
        EXPECT_TRUE(std::equal(I::kIid.begin(), I::kIid.end(), Theirs##_iid)) << #Ours;       \
    }

TEST(Vst3Abi, InterfacesHaveThePublishedMethodsAndIds) {
    SAME_TABLE(FUnknown, v3_funknown, 0, (&I::queryInterface, &I::addRef, &I::release),
               (t.query_interface, t.ref, t.unref));
    SAME_TABLE(IPluginBase, v3_plugin_base, 3, (&I::initialize, &I::terminate),
               (t.initialize, t.terminate));
    SAME_TABLE(IBStream, v3_bstream, 3, (&I::read, &I::write, &I::seek, &I::tell),
               (t.read, t.write, t.seek, t.tell));
    SAME_TABLE(IPluginFactory, v3_plugin_factory, 3,
               (&I::getFactoryInfo, &I::countClasses, &I::getClassInfo, &I::createInstance),
               (t.get_factory_info, t.num_classes, t.get_class_info, t.create_instance));
    SAME_TABLE(IPluginFactory2, v3_plugin_factory_2, 7, (&I::getClassInfo2), (t.get_class_info_2));
    SAME_TABLE(IPluginFactory3, v3_plugin_factory_3, 8,
               (&I::getClassInfoUnicode, &I::setHostContext),
               (t.get_class_info_utf16, t.set_host_context));
    SAME_TABLE(IComponent, v3_component, 5,
               (&I::getControllerClassId, &I::setIoMode, &I::getBusCount, &I::getBusInfo,
                &I::getRoutingInfo, &I::activateBus, &I::setActive, &I::setState, &I::getState),
               (t.get_controller_class_id, t.set_io_mode, t.get_bus_count, t.get_bus_info,
                t.get_routing_info, t.activate_bus, t.set_active, t.set_state, t.get_state));
    SAME_TABLE(IParamValueQueue, v3_param_value_queue, 3,
               (&I::getParameterId, &I::getPointCount, &I::getPoint, &I::addPoint),
               (t.get_param_id, t.get_point_count, t.get_point, t.add_point));
    SAME_TABLE(IParameterChanges, v3_param_changes, 3,
               (&I::getParameterCount, &I::getParameterData, &I::addParameterData),
               (t.get_param_count, t.get_param_data, t.add_param_data));
    SAME_TABLE(IEventList, v3_event_list, 3, (&I::getEventCount, &I::getEvent, &I::addEvent),
               (t.get_event_count, t.get_event, t.add_event));
    SAME_TABLE(IAudioProcessor, v3_audio_processor, 3,
               (&I::setBusArrangements, &I::getBusArrangement, &I::canProcessSampleSize,
                &I::getLatencySamples, &I::setupProcessing, &I::setProcessing, &I::process,
                &I::getTailSamples),
               (t.set_bus_arrangements, t.get_bus_arrangement, t.can_process_sample_size,
                t.get_latency_samples, t.setup_processing, t.set_processing, t.process,
                t.get_tail_samples));
    SAME_TABLE(IProcessContextRequirements, v3_process_context_requirements, 3,
               (&I::getProcessContextRequirements), (t.get_process_context_requirements));
    SAME_TABLE(IComponentHandler, v3_component_handler, 3,
               (&I::beginEdit, &I::performEdit, &I::endEdit, &I::restartComponent),
               (t.begin_edit, t.perform_edit, t.end_edit, t.restart_component));
    SAME_TABLE(IEditController, v3_edit_controller, 5,
               (&I::setComponentState, &I::setState, &I::getState, &I::getParameterCount,
                &I::getParameterInfo, &I::getParamStringByValue, &I::getParamValueByString,
                &I::normalizedParamToPlain, &I::plainParamToNormalized, &I::getParamNormalized,
                &I::setParamNormalized, &I::setComponentHandler, &I::createView),
               (t.set_component_state, t.set_state, t.get_state, t.get_parameter_count,
                t.get_parameter_info, t.get_parameter_string_for_value,
                t.get_parameter_value_for_string, t.normalised_parameter_to_plain,
                t.plain_parameter_to_normalised, t.get_parameter_normalised,
                t.set_parameter_normalised, t.set_component_handler, t.create_view));
    SAME_TABLE(IMidiMapping, v3_midi_mapping, 3, (&I::getMidiControllerAssignment),
               (t.get_midi_controller_assignment));
    SAME_TABLE(
        IUnitInfo, v3_unit_information, 3,
        (&I::getUnitCount, &I::getUnitInfo, &I::getProgramListCount, &I::getProgramListInfo,
         &I::getProgramName, &I::getProgramInfo, &I::hasProgramPitchNames, &I::getProgramPitchName,
         &I::getSelectedUnit, &I::selectUnit, &I::getUnitByBus, &I::setUnitProgramData),
        (t.get_unit_count, t.get_unit_info, t.get_program_list_count, t.get_program_list_info,
         t.get_program_name, t.get_program_info, t.has_program_pitch_names,
         t.get_program_pitch_name, t.get_selected_unit, t.select_unit, t.get_unit_by_bus,
         t.set_unit_program_data));
    SAME_TABLE(IPlugView, v3_plugin_view, 3,
               (&I::isPlatformTypeSupported, &I::attached, &I::removed, &I::onWheel, &I::onKeyDown,
                &I::onKeyUp, &I::getSize, &I::onSize, &I::onFocus, &I::setFrame, &I::canResize,
                &I::checkSizeConstraint),
               (t.is_platform_type_supported, t.attached, t.removed, t.on_wheel, t.on_key_down,
                t.on_key_up, t.get_size, t.on_size, t.on_focus, t.set_frame, t.can_resize,
                t.check_size_constraint));
    SAME_TABLE(IPlugFrame, v3_plugin_frame, 3, (&I::resizeView), (t.resize_view));
    SAME_TABLE(IPlugViewContentScaleSupport, v3_plugin_view_content_scale, 3,
               (&I::setContentScaleFactor), (t.set_content_scale_factor));
    SAME_TABLE(IEventHandler, v3_event_handler, 3, (&I::onFDIsSet), (t.on_fd_is_set));
    SAME_TABLE(ITimerHandler, v3_timer_handler, 3, (&I::onTimer), (t.on_timer));
    SAME_TABLE(IRunLoop, v3_run_loop, 3,
               (&I::registerEventHandler, &I::unregisterEventHandler, &I::registerTimer,
                &I::unregisterTimer),
               (t.register_event_handler, t.unregister_event_handler, t.register_timer,
                t.unregister_timer));
}

#define SAME_VALUES(ours, theirs) \
    EXPECT_EQ(tests::valuesOf<uint32_t> ours, tests::valuesOf<uint32_t> theirs) << #ours

TEST(Vst3Abi, ConstantsHaveThePublishedValues) {
    SAME_VALUES(
        (kNoInterface, kResultOk, kResultTrue, kResultFalse, kInvalidArgument, kNotImplemented,
         kOutOfMemory),
        (V3_NO_INTERFACE, V3_OK, V3_TRUE, V3_FALSE, V3_INVALID_ARG, V3_NOT_IMPLEMENTED, V3_NOMEM));
    SAME_VALUES((kAudio, kEvent, kInput, kOutput, kMain, BusInfo::kDefaultActive, kSample32,
                 kSample64, kRealtime, kSpeakerL, kSpeakerR, kSpeakerM),
                (V3_AUDIO, V3_EVENT, V3_INPUT, V3_OUTPUT, V3_MAIN, V3_DEFAULT_ACTIVE, V3_SAMPLE_32,
                 V3_SAMPLE_64, V3_REALTIME, V3_SPEAKER_L, V3_SPEAKER_R, V3_SPEAKER_M));
    SAME_VALUES(
        (Event::kNoteOnEvent, Event::kNoteOffEvent, Event::kPolyPressureEvent, kParamValuesChanged),
        (V3_EVENT_NOTE_ON, V3_EVENT_NOTE_OFF, V3_EVENT_POLY_PRESSURE,
         V3_RESTART_PARAM_VALUES_CHANGED));
    SAME_VALUES((ParameterInfo::kCanAutomate, ParameterInfo::kIsList, ParameterInfo::kIsHidden,
                 ParameterInfo::kIsProgramChange, ParameterInfo::kIsBypass),
                (V3_PARAM_CAN_AUTOMATE, V3_PARAM_IS_LIST, V3_PARAM_IS_HIDDEN,
                 V3_PARAM_PROGRAM_CHANGE, V3_PARAM_IS_BYPASS));
    EXPECT_STREQ(kPlatformTypeHwnd, V3_VIEW_PLATFORM_TYPE_HWND);
    EXPECT_STREQ(kPlatformTypeX11, V3_VIEW_PLATFORM_TYPE_X11);
}

// DPF does not declare these. They were checked by hand against the published tables.
TEST(Vst3Abi, OtherInterfacesKeepTheirOrder) {
    using tests::methodShapes;
    using tests::Shapes;
    EXPECT_EQ(methodShapes(&IEditController2::setKnobMode, &IEditController2::openHelp,
                           &IEditController2::openAboutBox),
              (Shapes{"24 i4(p,i4)", "32 i4(p,i1)", "40 i4(p,i1)"}));
    EXPECT_EQ(methodShapes(&ISizeableStream::getStreamSize, &ISizeableStream::setStreamSize),
              (Shapes{"24 i4(p,p)", "32 i4(p,i8)"}));
    EXPECT_EQ(methodShapes(&IProgramListData::programDataSupported,
                           &IProgramListData::getProgramData, &IProgramListData::setProgramData),
              (Shapes{"24 i4(p,i4)", "32 i4(p,i4,i4,p)", "40 i4(p,i4,i4,p)"}));
    EXPECT_EQ(
        methodShapes(&IUnitHandler::notifyUnitSelection, &IUnitHandler::notifyProgramListChange),
        (Shapes{"24 i4(p,i4)", "32 i4(p,i4,i4)"}));
}

}  // namespace
