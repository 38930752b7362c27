// The VST 3 interface, part two: the component, its buses, and what one call of process() carries.
#pragma once

#include "plugin/vst3/base.h"

namespace vst3 {

using MediaType = int32;
using BusDirection = int32;
using BusType = int32;
using IoMode = int32;
using UnitID = int32;
using ParamID = uint32;
using ParamValue = double;  // 0..1
using SpeakerArrangement = uint64;

// Ids above kMaxParamId belong to the host.
inline constexpr ParamID kMaxParamId = 0x7FFFFFFF;
inline constexpr ParamID kNoParamId = 0xFFFFFFFF;

enum MediaTypes : MediaType { kAudio = 0, kEvent = 1 };
enum BusDirections : BusDirection { kInput = 0, kOutput = 1 };
enum BusTypes : BusType { kMain = 0 };
enum SymbolicSampleSizes : int32 { kSample32 = 0, kSample64 = 1 };
enum ProcessModes : int32 { kRealtime = 0 };

inline constexpr uint32 kNoTail = 0;
inline constexpr uint32 kInfiniteTail = 0xFFFFFFFF;

// One bit a speaker; channels stand in the order of the bits.
inline constexpr SpeakerArrangement kSpeakerL = 1 << 0;
inline constexpr SpeakerArrangement kSpeakerR = 1 << 1;
inline constexpr SpeakerArrangement kSpeakerM = 1 << 19;
inline constexpr SpeakerArrangement kArrangementEmpty = 0;
inline constexpr SpeakerArrangement kArrangementMono = kSpeakerM;
inline constexpr SpeakerArrangement kArrangementStereo = kSpeakerL | kSpeakerR;

struct BusInfo {
    enum Flags : uint32 { kDefaultActive = 1 << 0 };

    MediaType mediaType;
    BusDirection direction;
    int32 channelCount;
    String128 name;
    BusType busType;
    uint32 flags;
};

struct RoutingInfo {
    MediaType mediaType;
    int32 busIndex;
    int32 channel;  // -1: all
};

struct IComponent : IPluginBase {
    static constexpr Uid kIid = uid(0xE831FF31, 0xF2D54301, 0x928EBBEE, 0x25697802);

    // A component that is its own controller answers kNotImplemented.
    virtual tresult VST3_CALL getControllerClassId(TUID classId) = 0;
    virtual tresult VST3_CALL setIoMode(IoMode mode) = 0;
    virtual int32 VST3_CALL getBusCount(MediaType type, BusDirection direction) = 0;
    virtual tresult VST3_CALL getBusInfo(MediaType type, BusDirection direction, int32 index,
                                         BusInfo& bus) = 0;
    virtual tresult VST3_CALL getRoutingInfo(RoutingInfo& input, RoutingInfo& output) = 0;
    virtual tresult VST3_CALL activateBus(MediaType type, BusDirection direction, int32 index,
                                          TBool state) = 0;
    virtual tresult VST3_CALL setActive(TBool state) = 0;
    virtual tresult VST3_CALL setState(IBStream* state) = 0;
    virtual tresult VST3_CALL getState(IBStream* state) = 0;
};

// The points of one parameter in a block, in the order of their offsets.
struct IParamValueQueue : FUnknown {
    static constexpr Uid kIid = uid(0x01263A18, 0xED074F6F, 0x98C9D356, 0x4686F9BA);

    virtual ParamID VST3_CALL getParameterId() = 0;
    virtual int32 VST3_CALL getPointCount() = 0;
    virtual tresult VST3_CALL getPoint(int32 index, int32& sampleOffset, ParamValue& value) = 0;
    virtual tresult VST3_CALL addPoint(int32 sampleOffset, ParamValue value, int32& index) = 0;
};

struct IParameterChanges : FUnknown {
    static constexpr Uid kIid = uid(0xA4779663, 0x0BB64A56, 0xB44384A8, 0x466FEB9D);

    virtual int32 VST3_CALL getParameterCount() = 0;
    virtual IParamValueQueue* VST3_CALL getParameterData(int32 index) = 0;
    virtual IParamValueQueue* VST3_CALL addParameterData(const ParamID& id, int32& index) = 0;
};

struct NoteOnEvent {
    int16 channel;
    int16 pitch;   // MIDI note number
    float tuning;  // cents
    float velocity;
    int32 length;  // samples; 0: unknown
    int32 noteId;  // -1: none
};

struct NoteOffEvent {
    int16 channel;
    int16 pitch;
    float velocity;
    int32 noteId;
    float tuning;
};

struct PolyPressureEvent {
    int16 channel;
    int16 pitch;
    float pressure;
    int32 noteId;
};

struct Event {
    enum Types : uint16 { kNoteOnEvent = 0, kNoteOffEvent = 1, kPolyPressureEvent = 3 };

    int32 busIndex;
    int32 sampleOffset;
    double ppqPosition;
    uint16 flags;
    uint16 type;
    union {
        NoteOnEvent noteOn;
        NoteOffEvent noteOff;
        PolyPressureEvent polyPressure;
        double others[3];  // room for the largest kind
    };
};

struct IEventList : FUnknown {
    static constexpr Uid kIid = uid(0x3A2C4214, 0x346349FE, 0xB2C4F397, 0xB9695A44);

    virtual int32 VST3_CALL getEventCount() = 0;
    virtual tresult VST3_CALL getEvent(int32 index, Event& event) = 0;
    virtual tresult VST3_CALL addEvent(Event& event) = 0;
};

struct ProcessSetup {
    int32 processMode;
    int32 symbolicSampleSize;
    int32 maxSamplesPerBlock;
    double sampleRate;
};

struct AudioBusBuffers {
    int32 numChannels;
    uint64 silenceFlags;  // one bit a channel: all its samples are zero
    union {
        float** channelBuffers32;
        double** channelBuffers64;
    };
};

struct ProcessContext;  // unread here

// No samples and no buses: parameters are flushed. Every pointer may then be null.
struct ProcessData {
    int32 processMode;
    int32 symbolicSampleSize;
    int32 numSamples;
    int32 numInputs;
    int32 numOutputs;
    AudioBusBuffers* inputs;
    AudioBusBuffers* outputs;
    IParameterChanges* inputParameterChanges;
    IParameterChanges* outputParameterChanges;
    IEventList* inputEvents;
    IEventList* outputEvents;
    ProcessContext* processContext;
};

struct IAudioProcessor : FUnknown {
    static constexpr Uid kIid = uid(0x42043F99, 0xB7DA453C, 0xA569E79D, 0x9AAEC33D);

    virtual tresult VST3_CALL setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                                 SpeakerArrangement* outputs, int32 numOuts) = 0;
    virtual tresult VST3_CALL getBusArrangement(BusDirection direction, int32 index,
                                                SpeakerArrangement& arrangement) = 0;
    virtual tresult VST3_CALL canProcessSampleSize(int32 symbolicSampleSize) = 0;
    virtual uint32 VST3_CALL getLatencySamples() = 0;
    virtual tresult VST3_CALL setupProcessing(ProcessSetup& setup) = 0;
    virtual tresult VST3_CALL setProcessing(TBool state) = 0;
    virtual tresult VST3_CALL process(ProcessData& data) = 0;
    virtual uint32 VST3_CALL getTailSamples() = 0;
};

struct IProcessContextRequirements : FUnknown {
    static constexpr Uid kIid = uid(0x2A654303, 0xEF764E3D, 0x95B5FE83, 0x730EF6D0);

    virtual uint32 VST3_CALL getProcessContextRequirements() = 0;
};

static_assert(sizeof(BusInfo) == 276 && offsetof(BusInfo, busType) == 268);
static_assert(sizeof(RoutingInfo) == 12);
static_assert(sizeof(Event) == 48 && offsetof(Event, type) == 18 && offsetof(Event, noteOn) == 24);
static_assert(sizeof(ProcessSetup) == 24 && offsetof(ProcessSetup, sampleRate) == 16);
static_assert(sizeof(AudioBusBuffers) == 24 && offsetof(AudioBusBuffers, silenceFlags) == 8);
static_assert(sizeof(ProcessData) == 80 && offsetof(ProcessData, inputs) == 24);

}  // namespace vst3
