// The CLAP interface, part two: the extensions. A plug-in answers get_extension() with a
// Plugin... record; the host's get_extension() answers with a Host... record of the same id.
#pragma once

#include "plugin/clap/clap.h"

namespace clap {

// --- ports -----------------------------------------------------------------------------------

inline constexpr char kExtAudioPorts[] = "clap.audio-ports";
inline constexpr char kPortStereo[] = "stereo";

enum AudioPortFlags : uint32_t { kAudioPortIsMain = 1 << 0 };

struct AudioPortInfo {
    Id id;
    char name[kNameSize];
    uint32_t flags;
    uint32_t channel_count;
    const char* port_type;
    Id in_place_pair;  // kInvalidId: buffers are never shared
};

struct PluginAudioPorts {  // [main]
    uint32_t(CLAP_CALL* count)(const Plugin* plugin, bool is_input);
    bool(CLAP_CALL* get)(const Plugin* plugin, uint32_t index, bool is_input, AudioPortInfo* info);
};

inline constexpr char kExtNotePorts[] = "clap.note-ports";

enum NoteDialects : uint32_t { kNoteDialectClap = 1 << 0, kNoteDialectMidi = 1 << 1 };

struct NotePortInfo {
    Id id;
    uint32_t supported_dialects;
    uint32_t preferred_dialect;
    char name[kNameSize];
};

struct PluginNotePorts {  // [main]
    uint32_t(CLAP_CALL* count)(const Plugin* plugin, bool is_input);
    bool(CLAP_CALL* get)(const Plugin* plugin, uint32_t index, bool is_input, NotePortInfo* info);
};

inline constexpr char kExtNoteName[] = "clap.note-name";

struct NoteName {  // -1 stands for every port, key or channel
    char name[kNameSize];
    int16_t port;
    int16_t key;
    int16_t channel;
};

struct PluginNoteName {  // [main]
    uint32_t(CLAP_CALL* count)(const Plugin* plugin);
    bool(CLAP_CALL* get)(const Plugin* plugin, uint32_t index, NoteName* note_name);
};

struct HostNoteName {
    void(CLAP_CALL* changed)(const Host* host);  // [main]
};

// --- parameters -----------------------------------------------------------------------------

inline constexpr char kExtParams[] = "clap.params";

enum ParamInfoFlags : uint32_t {
    kParamIsStepped = 1 << 0,
    kParamIsAutomatable = 1 << 5,
    kParamIsEnum = 1 << 16  // stepped, and every value has a text
};

struct ParamInfo {
    Id id;
    uint32_t flags;
    void* cookie;
    char name[kNameSize];
    char module[kPathSize];  // group, with / between levels
    double min_value;
    double max_value;
    double default_value;
};

struct PluginParams {
    uint32_t(CLAP_CALL* count)(const Plugin* plugin);                                  // [main]
    bool(CLAP_CALL* get_info)(const Plugin* plugin, uint32_t index, ParamInfo* info);  // [main]
    bool(CLAP_CALL* get_value)(const Plugin* plugin, Id param_id, double* value);      // [main]
    bool(CLAP_CALL* value_to_text)(const Plugin* plugin, Id param_id, double value, char* text,
                                   uint32_t capacity);  // [main]
    bool(CLAP_CALL* text_to_value)(const Plugin* plugin, Id param_id, const char* text,
                                   double* value);  // [main]
    // [audio] while active, [main] otherwise; never together with process().
    void(CLAP_CALL* flush)(const Plugin* plugin, const InputEvents* in, const OutputEvents* out);
};

enum ParamRescanFlags : uint32_t { kParamRescanValues = 1 << 0, kParamRescanText = 1 << 1 };

struct HostParams {
    void(CLAP_CALL* rescan)(const Host* host, uint32_t flags);              // [main]
    void(CLAP_CALL* clear)(const Host* host, Id param_id, uint32_t flags);  // [main]
    void(CLAP_CALL* request_flush)(const Host* host);                       // [any] but [audio]
};

inline constexpr char kExtRemoteControls[] = "clap.remote-controls/2";
inline constexpr char kExtRemoteControlsCompat[] = "clap.remote-controls.draft/2";
inline constexpr size_t kRemoteControlsCount = 8;

struct RemoteControlsPage {
    char section_name[kNameSize];
    Id page_id;
    char page_name[kNameSize];
    Id param_ids[kRemoteControlsCount];  // kInvalidId: an empty place
    bool is_for_preset;
};

struct PluginRemoteControls {  // [main]
    uint32_t(CLAP_CALL* count)(const Plugin* plugin);
    bool(CLAP_CALL* get)(const Plugin* plugin, uint32_t page_index, RemoteControlsPage* page);
};

// --- state and presets -----------------------------------------------------------------------

inline constexpr char kExtState[] = "clap.state";

struct PluginState {  // [main]
    bool(CLAP_CALL* save)(const Plugin* plugin, const OutputStream* stream);
    bool(CLAP_CALL* load)(const Plugin* plugin, const InputStream* stream);
};

struct HostState {
    void(CLAP_CALL* mark_dirty)(const Host* host);  // [main]
};

inline constexpr char kExtStateContext[] = "clap.state-context/2";

enum StateContexts : uint32_t {
    kStateContextForPreset = 1,
    kStateContextForDuplicate = 2,
    kStateContextForProject = 3
};

struct PluginStateContext {  // [main]
    bool(CLAP_CALL* save)(const Plugin* plugin, const OutputStream* stream, uint32_t context_type);
    bool(CLAP_CALL* load)(const Plugin* plugin, const InputStream* stream, uint32_t context_type);
};

inline constexpr char kExtPresetLoad[] = "clap.preset-load/2";
inline constexpr char kExtPresetLoadCompat[] = "clap.preset-load.draft/2";

struct PluginPresetLoad {
    bool(CLAP_CALL* from_location)(const Plugin* plugin, uint32_t location_kind,
                                   const char* location, const char* load_key);  // [main]
};

struct HostPresetLoad {  // [main]
    void(CLAP_CALL* on_error)(const Host* host, uint32_t location_kind, const char* location,
                              const char* load_key, int32_t os_error, const char* message);
    void(CLAP_CALL* loaded)(const Host* host, uint32_t location_kind, const char* location,
                            const char* load_key);
};

// --- editor -----------------------------------------------------------------------------------

inline constexpr char kExtGui[] = "clap.gui";
inline constexpr char kWindowApiWin32[] = "win32";
inline constexpr char kWindowApiX11[] = "x11";
#ifdef _WIN32
inline constexpr const char* kWindowApi = kWindowApiWin32;  // of this system
#else
inline constexpr const char* kWindowApi = kWindowApiX11;
#endif

struct Window {
    const char* api;
    union {
        unsigned long x11;
        void* win32;
        void* ptr;
    };
};

struct GuiResizeHints {
    bool can_resize_horizontally;
    bool can_resize_vertically;
    bool preserve_aspect_ratio;
    uint32_t aspect_ratio_width;
    uint32_t aspect_ratio_height;
};

// Sizes are pixels on both systems. All [main].
struct PluginGui {
    bool(CLAP_CALL* is_api_supported)(const Plugin* plugin, const char* api, bool is_floating);
    bool(CLAP_CALL* get_preferred_api)(const Plugin* plugin, const char** api, bool* is_floating);
    bool(CLAP_CALL* create)(const Plugin* plugin, const char* api, bool is_floating);
    void(CLAP_CALL* destroy)(const Plugin* plugin);
    bool(CLAP_CALL* set_scale)(const Plugin* plugin, double scale);
    bool(CLAP_CALL* get_size)(const Plugin* plugin, uint32_t* width, uint32_t* height);
    bool(CLAP_CALL* can_resize)(const Plugin* plugin);
    bool(CLAP_CALL* get_resize_hints)(const Plugin* plugin, GuiResizeHints* hints);
    bool(CLAP_CALL* adjust_size)(const Plugin* plugin, uint32_t* width, uint32_t* height);
    bool(CLAP_CALL* set_size)(const Plugin* plugin, uint32_t width, uint32_t height);
    bool(CLAP_CALL* set_parent)(const Plugin* plugin, const Window* window);
    bool(CLAP_CALL* set_transient)(const Plugin* plugin, const Window* window);
    void(CLAP_CALL* suggest_title)(const Plugin* plugin, const char* title);
    bool(CLAP_CALL* show)(const Plugin* plugin);
    bool(CLAP_CALL* hide)(const Plugin* plugin);
};

struct HostGui {  // [any]
    void(CLAP_CALL* resize_hints_changed)(const Host* host);
    bool(CLAP_CALL* request_resize)(const Host* host, uint32_t width, uint32_t height);
    bool(CLAP_CALL* request_show)(const Host* host);
    bool(CLAP_CALL* request_hide)(const Host* host);
    void(CLAP_CALL* closed)(const Host* host, bool was_destroyed);
};

inline constexpr char kExtTimerSupport[] = "clap.timer-support";

struct PluginTimerSupport {
    void(CLAP_CALL* on_timer)(const Plugin* plugin, Id timer_id);  // [main]
};

struct HostTimerSupport {  // [main]
    bool(CLAP_CALL* register_timer)(const Host* host, uint32_t period_ms, Id* timer_id);
    bool(CLAP_CALL* unregister_timer)(const Host* host, Id timer_id);
};

// --- sound -------------------------------------------------------------------------------------

inline constexpr char kExtLatency[] = "clap.latency";

struct PluginLatency {
    uint32_t(CLAP_CALL* get)(const Plugin* plugin);  // frames; [main]
};

inline constexpr char kExtTail[] = "clap.tail";

struct PluginTail {
    uint32_t(CLAP_CALL* get)(const Plugin* plugin);  // frames, INT32_MAX and above: endless; [any]
};

inline constexpr char kExtVoiceInfo[] = "clap.voice-info";

enum VoiceInfoFlags : uint64_t { kVoiceInfoSupportsOverlappingNotes = 1 << 0 };

struct VoiceInfo {
    uint32_t voice_count;  // 1..voice_capacity
    uint32_t voice_capacity;
    uint64_t flags;
};

struct PluginVoiceInfo {
    bool(CLAP_CALL* get)(const Plugin* plugin, VoiceInfo* info);  // [main]
};

inline constexpr char kExtRender[] = "clap.render";

enum RenderModes : int32_t { kRenderRealtime = 0, kRenderOffline = 1 };

struct PluginRender {  // [main]
    bool(CLAP_CALL* has_hard_realtime_requirement)(const Plugin* plugin);
    bool(CLAP_CALL* set)(const Plugin* plugin, int32_t mode);
};

static_assert(sizeof(AudioPortInfo) == 288 && offsetof(AudioPortInfo, port_type) == 272);
static_assert(sizeof(NotePortInfo) == 268 && offsetof(NotePortInfo, name) == 12);
static_assert(sizeof(NoteName) == 262 && offsetof(NoteName, key) == 258);
static_assert(sizeof(ParamInfo) == 1320 && offsetof(ParamInfo, module) == 272 &&
              offsetof(ParamInfo, min_value) == 1296);
static_assert(sizeof(RemoteControlsPage) == 552 && offsetof(RemoteControlsPage, param_ids) == 516 &&
              offsetof(RemoteControlsPage, is_for_preset) == 548);
static_assert(sizeof(Window) == 16 && sizeof(GuiResizeHints) == 12 && sizeof(VoiceInfo) == 16);

}  // namespace clap
