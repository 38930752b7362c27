// The CLAP interface, part three: the factory through which hosts list presets. [main] throughout.
#pragma once

#include "plugin/clap/clap.h"

namespace clap {

inline constexpr char kPresetDiscoveryFactoryId[] = "clap.preset-discovery-factory/2";
inline constexpr char kPresetDiscoveryFactoryIdCompat[] = "clap.preset-discovery-factory/draft-2";

using Timestamp = uint64_t;  // seconds since 1970, UTC
inline constexpr Timestamp kTimestampUnknown = 0;

struct UniversalPluginId {
    const char* abi;  // "clap", "vst3", "vst2", ...
    const char* id;
};

enum PresetLocationKinds : uint32_t {
    kPresetLocationFile = 0,   // location is a path
    kPresetLocationPlugin = 1  // the presets are inside the library; location is null
};

enum PresetFlags : uint32_t {
    kPresetIsFactoryContent = 1 << 0,
    kPresetIsUserContent = 1 << 1,
    kPresetIsDemoContent = 1 << 2,
    kPresetIsFavorite = 1 << 3
};

// The host's: begin_preset() first, then what is known of that preset.
struct PresetMetadataReceiver {
    void* receiver_data;
    void(CLAP_CALL* on_error)(const PresetMetadataReceiver* receiver, int32_t os_error,
                              const char* message);
    bool(CLAP_CALL* begin_preset)(const PresetMetadataReceiver* receiver, const char* name,
                                  const char* load_key);
    void(CLAP_CALL* add_plugin_id)(const PresetMetadataReceiver* receiver,
                                   const UniversalPluginId* plugin_id);
    void(CLAP_CALL* set_soundpack_id)(const PresetMetadataReceiver* receiver,
                                      const char* soundpack_id);
    void(CLAP_CALL* set_flags)(const PresetMetadataReceiver* receiver, uint32_t flags);
    void(CLAP_CALL* add_creator)(const PresetMetadataReceiver* receiver, const char* creator);
    void(CLAP_CALL* set_description)(const PresetMetadataReceiver* receiver,
                                     const char* description);
    void(CLAP_CALL* set_timestamps)(const PresetMetadataReceiver* receiver, Timestamp created,
                                    Timestamp modified);
    void(CLAP_CALL* add_feature)(const PresetMetadataReceiver* receiver, const char* feature);
    void(CLAP_CALL* add_extra_info)(const PresetMetadataReceiver* receiver, const char* key,
                                    const char* value);
};

struct PresetFiletype {
    const char* name;
    const char* description;     // may be null
    const char* file_extension;  // without the dot; null or empty: every file
};

struct PresetLocation {
    uint32_t flags;  // PresetFlags
    const char* name;
    uint32_t kind;  // PresetLocationKinds
    const char* location;
};

struct PresetSoundpack {
    uint32_t flags;
    const char* id;
    const char* name;
    const char* description;
    const char* homepage_url;
    const char* vendor;
    const char* image_path;
    Timestamp release_timestamp;
};

struct PresetProviderDescriptor {
    Version clap_version;
    const char* id;
    const char* name;
    const char* vendor;
};

struct PresetProvider {
    const PresetProviderDescriptor* desc;
    void* provider_data;
    bool(CLAP_CALL* init)(const PresetProvider* provider);  // declares all to the indexer
    void(CLAP_CALL* destroy)(const PresetProvider* provider);
    bool(CLAP_CALL* get_metadata)(const PresetProvider* provider, uint32_t location_kind,
                                  const char* location, const PresetMetadataReceiver* receiver);
    const void*(CLAP_CALL* get_extension)(const PresetProvider* provider, const char* extension_id);
};

struct PresetIndexer {  // the host's
    Version clap_version;
    const char* name;
    const char* vendor;
    const char* url;
    const char* version;
    void* indexer_data;
    bool(CLAP_CALL* declare_filetype)(const PresetIndexer* indexer, const PresetFiletype* filetype);
    bool(CLAP_CALL* declare_location)(const PresetIndexer* indexer, const PresetLocation* location);
    bool(CLAP_CALL* declare_soundpack)(const PresetIndexer* indexer,
                                       const PresetSoundpack* soundpack);
    const void*(CLAP_CALL* get_extension)(const PresetIndexer* indexer, const char* extension_id);
};

struct PresetDiscoveryFactory {
    uint32_t(CLAP_CALL* count)(const PresetDiscoveryFactory* factory);
    const PresetProviderDescriptor*(CLAP_CALL* get_descriptor)(
        const PresetDiscoveryFactory* factory, uint32_t index);
    const PresetProvider*(CLAP_CALL* create)(const PresetDiscoveryFactory* factory,
                                             const PresetIndexer* indexer, const char* provider_id);
};

static_assert(sizeof(PresetMetadataReceiver) == 88 && sizeof(PresetFiletype) == 24);
static_assert(sizeof(PresetLocation) == 32 && sizeof(PresetSoundpack) == 64);
static_assert(sizeof(PresetProviderDescriptor) == 40 && sizeof(PresetProvider) == 48);
static_assert(sizeof(PresetIndexer) == 88 && offsetof(PresetIndexer, declare_filetype) == 56);

}  // namespace clap
