// The CLAP interface, part one: entry, factory, plug-in, host, events and one call of process().
//
// Members, numbers and identifiers are the published ones of version 1.2. Strings are UTF-8.
// Threads: [main] the main thread, [audio] one audio thread at a time, [any] all of them.
#pragma once

#include <cstddef>
#include <cstdint>

// A no-op on 64-bit Windows, stated because the interface states it.
#ifdef _WIN32
#define CLAP_CALL __cdecl
#else
#define CLAP_CALL
#endif

namespace clap {

using Id = uint32_t;
inline constexpr Id kInvalidId = UINT32_MAX;

inline constexpr size_t kNameSize = 256;  // bytes, the terminating zero included
inline constexpr size_t kPathSize = 1024;

struct Version {
    uint32_t major;
    uint32_t minor;
    uint32_t revision;
};

inline constexpr Version kVersion{1, 2, 0};

constexpr bool isCompatible(const Version& version) {
    return version.major >= 1;
}

// The symbol clap_entry of the library. [main]
struct Entry {
    Version clap_version;
    bool(CLAP_CALL* init)(const char* plugin_path);
    void(CLAP_CALL* deinit)();
    const void*(CLAP_CALL* get_factory)(const char* factory_id);
};

// --- events: ordered by time within a block -------------------------------------------------

struct EventHeader {
    uint32_t size;  // bytes, this header included
    uint32_t time;  // frames from the start of the block
    uint16_t space_id;
    uint16_t type;  // EventTypes, in the core space
    uint32_t flags;
};

inline constexpr uint16_t kCoreEventSpaceId = 0;

enum EventFlags : uint32_t { kEventDontRecord = 1 << 1 };

enum EventTypes : uint16_t {
    kEventNoteOn = 0,
    kEventNoteOff = 1,
    kEventNoteChoke = 2,
    kEventNoteEnd = 3,
    kEventNoteExpression = 4,
    kEventParamValue = 5,
    kEventParamMod = 6,
    kEventParamGestureBegin = 7,
    kEventParamGestureEnd = 8,
    kEventMidi = 10
};

// note_id, port_index, channel and key: -1 stands for any, here and in the next three.
struct EventNote {
    EventHeader header;
    int32_t note_id;
    int16_t port_index;
    int16_t channel;  // 0..15
    int16_t key;      // 0..127
    double velocity;  // 0..1
};

enum NoteExpressions : int32_t {
    kNoteExpressionVolume = 0  // 0..4, linear
};

struct EventNoteExpression {
    EventHeader header;
    int32_t expression_id;
    int32_t note_id;
    int16_t port_index;
    int16_t channel;
    int16_t key;
    double value;
};

struct EventParamValue {
    EventHeader header;
    Id param_id;
    void* cookie;
    int32_t note_id;
    int16_t port_index;
    int16_t channel;
    int16_t key;
    double value;  // plain
};

struct EventParamMod {
    EventHeader header;
    Id param_id;
    void* cookie;
    int32_t note_id;
    int16_t port_index;
    int16_t channel;
    int16_t key;
    double amount;
};

struct EventParamGesture {
    EventHeader header;
    Id param_id;
};

struct EventMidi {
    EventHeader header;
    uint16_t port_index;
    uint8_t data[3];
};

struct InputEvents {
    void* ctx;
    uint32_t(CLAP_CALL* size)(const InputEvents* list);
    const EventHeader*(CLAP_CALL* get)(const InputEvents* list, uint32_t index);
};

struct OutputEvents {
    void* ctx;
    bool(CLAP_CALL* try_push)(const OutputEvents* list, const EventHeader* event);
};

// --- process ----------------------------------------------------------------------------------

struct AudioBuffer {
    float** data32;  // one of the two is null
    double** data64;
    uint32_t channel_count;
    uint32_t latency;
    uint64_t constant_mask;  // one bit a channel: all its samples are equal
};

using ProcessStatus = int32_t;
enum ProcessStatuses : ProcessStatus {
    kProcessError = 0,
    kProcessContinue = 1,
    kProcessSleep = 4  // until the next event or changed input
};

struct EventTransport;  // unread here

struct Process {
    int64_t steady_time;  // frames; -1: not available
    uint32_t frames_count;
    const EventTransport* transport;  // may be null
    const AudioBuffer* audio_inputs;
    AudioBuffer* audio_outputs;
    uint32_t audio_inputs_count;
    uint32_t audio_outputs_count;
    const InputEvents* in_events;
    const OutputEvents* out_events;
};

// --- plug-in and host ---------------------------------------------------------------------------

struct PluginDescriptor {
    Version clap_version;
    const char* id;
    const char* name;
    const char* vendor;
    const char* url;
    const char* manual_url;
    const char* support_url;
    const char* version;
    const char* description;
    const char* const* features;  // ends with null
};

inline constexpr char kFeatureInstrument[] = "instrument";
inline constexpr char kFeatureSynthesizer[] = "synthesizer";
inline constexpr char kFeatureStereo[] = "stereo";

struct Plugin {
    const PluginDescriptor* desc;
    void* plugin_data;

    bool(CLAP_CALL* init)(const Plugin* plugin);     // [main]
    void(CLAP_CALL* destroy)(const Plugin* plugin);  // [main], inactive
    bool(CLAP_CALL* activate)(const Plugin* plugin, double sample_rate, uint32_t min_frames_count,
                              uint32_t max_frames_count);     // [main], inactive
    void(CLAP_CALL* deactivate)(const Plugin* plugin);        // [main], active
    bool(CLAP_CALL* start_processing)(const Plugin* plugin);  // [audio], active
    void(CLAP_CALL* stop_processing)(const Plugin* plugin);   // [audio], processing
    void(CLAP_CALL* reset)(const Plugin* plugin);             // [audio], active
    ProcessStatus(CLAP_CALL* process)(const Plugin* plugin, const Process* process);  // [audio]
    const void*(CLAP_CALL* get_extension)(const Plugin* plugin, const char* id);      // [any]
    void(CLAP_CALL* on_main_thread)(const Plugin* plugin);                            // [main]
};

struct Host {
    Version clap_version;
    void* host_data;
    const char* name;
    const char* vendor;
    const char* url;
    const char* version;

    const void*(CLAP_CALL* get_extension)(const Host* host, const char* extension_id);  // [any]
    void(CLAP_CALL* request_restart)(const Host* host);                                 // [any]
    void(CLAP_CALL* request_process)(const Host* host);                                 // [any]
    void(CLAP_CALL* request_callback)(const Host* host);                                // [any]
};

inline constexpr char kPluginFactoryId[] = "clap.plugin-factory";

struct PluginFactory {  // [any]
    uint32_t(CLAP_CALL* get_plugin_count)(const PluginFactory* factory);
    const PluginDescriptor*(CLAP_CALL* get_plugin_descriptor)(const PluginFactory* factory,
                                                              uint32_t index);
    const Plugin*(CLAP_CALL* create_plugin)(const PluginFactory* factory, const Host* host,
                                            const char* plugin_id);
};

// Bytes moved, 0 at the end of reading, -1 on an error. Fewer than asked for is no error.
struct InputStream {
    void* ctx;
    int64_t(CLAP_CALL* read)(const InputStream* stream, void* buffer, uint64_t size);
};

struct OutputStream {
    void* ctx;
    int64_t(CLAP_CALL* write)(const OutputStream* stream, const void* buffer, uint64_t size);
};

static_assert(sizeof(void*) == 8 && sizeof(bool) == 1);
static_assert(sizeof(Entry) == 40 && offsetof(Entry, init) == 16);
static_assert(sizeof(EventHeader) == 16 && offsetof(EventHeader, flags) == 12);
static_assert(sizeof(EventNote) == 40 && offsetof(EventNote, velocity) == 32);
static_assert(sizeof(EventNoteExpression) == 40 && offsetof(EventNoteExpression, value) == 32);
static_assert(sizeof(EventParamValue) == 56 && offsetof(EventParamValue, value) == 48);
static_assert(sizeof(EventParamMod) == 56 && sizeof(EventParamGesture) == 20);
static_assert(sizeof(EventMidi) == 24);
static_assert(sizeof(AudioBuffer) == 32 && offsetof(AudioBuffer, constant_mask) == 24);
static_assert(sizeof(Process) == 64 && offsetof(Process, in_events) == 48);
static_assert(sizeof(PluginDescriptor) == 88 && sizeof(Plugin) == 96 && sizeof(Host) == 88);

}  // namespace clap
