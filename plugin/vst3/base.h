// The VST 3 interface, part one: types, result codes, interface ids, streams and the factory.
//
// Names of interfaces, methods and fields, numbers and ids are the published ones; the order of
// the virtual methods is the interface. Only 64-bit systems are served. Interfaces have no
// destructor: an object dies with its last release().
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// A no-op on 64-bit Windows, stated because the interface states it.
#ifdef _WIN32
#define VST3_CALL __stdcall
#else
#define VST3_CALL
#endif

namespace vst3 {

using int8 = int8_t;
using int16 = int16_t;
using int32 = int32_t;
using int64 = int64_t;
using uint8 = uint8_t;
using uint16 = uint16_t;
using uint32 = uint32_t;
using uint64 = uint64_t;

using tresult = int32;
using TBool = uint8;
using TUID = uint8[16];  // Callers may pass any 16 bytes.
using FIDString = const char*;
using TChar = char16_t;
using String128 = TChar[128];

// Ids of interfaces and classes are four words. Windows stores them as COM does: the first word
// and the halves of the second in little-endian order, the rest as written.
#ifdef _WIN32
inline constexpr bool kOnWindows = true;
#else
inline constexpr bool kOnWindows = false;
#endif

using Uid = std::array<uint8, 16>;

constexpr Uid uid(uint32 a, uint32 b, uint32 c, uint32 d) {
    constexpr int kPlain[16] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    constexpr int kCom[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    const uint32 words[4] = {a, b, c, d};
    Uid id{};
    for (int i = 0; i < 16; ++i) {
        const int from = kOnWindows ? kCom[i] : kPlain[i];
        id[i] = static_cast<uint8>(words[from / 4] >> (24 - 8 * (from % 4)));
    }
    return id;
}

// COM's codes on Windows, small integers elsewhere.
#ifdef _WIN32
enum Result : tresult {
    kNoInterface = static_cast<tresult>(0x80004002u),
    kResultOk = 0,
    kResultTrue = 0,
    kResultFalse = 1,
    kInvalidArgument = static_cast<tresult>(0x80070057u),
    kNotImplemented = static_cast<tresult>(0x80004001u),
    kOutOfMemory = static_cast<tresult>(0x8007000Eu)
};
#else
enum Result : tresult {
    kNoInterface = -1,
    kResultOk = 0,
    kResultTrue = 0,
    kResultFalse = 1,
    kInvalidArgument = 2,
    kNotImplemented = 3,
    kOutOfMemory = 6
};
#endif

struct FUnknown {
    static constexpr Uid kIid = uid(0x00000000, 0x00000000, 0xC0000000, 0x00000046);

    // Writes a new reference to the interface, or null and kNoInterface.
    virtual tresult VST3_CALL queryInterface(const TUID iid, void** object) = 0;
    virtual uint32 VST3_CALL addRef() = 0;
    virtual uint32 VST3_CALL release() = 0;
};

struct IPluginBase : FUnknown {
    static constexpr Uid kIid = uid(0x22888DDB, 0x156E45AE, 0x8358B348, 0x08190625);

    virtual tresult VST3_CALL initialize(FUnknown* context) = 0;
    virtual tresult VST3_CALL terminate() = 0;
};

struct IBStream : FUnknown {
    static constexpr Uid kIid = uid(0xC3BF6EA2, 0x30994752, 0x9B6BF990, 0x1EE33E9B);

    // A stream may move fewer bytes than asked for; the count may be null.
    virtual tresult VST3_CALL read(void* buffer, int32 numBytes, int32* numBytesRead) = 0;
    virtual tresult VST3_CALL write(void* buffer, int32 numBytes, int32* numBytesWritten) = 0;
    virtual tresult VST3_CALL seek(int64 pos, int32 mode, int64* result) = 0;
    virtual tresult VST3_CALL tell(int64* pos) = 0;
};

struct ISizeableStream : FUnknown {
    static constexpr Uid kIid = uid(0x04F9549E, 0xE02F4E6E, 0x87E86A87, 0x47F4E17F);

    virtual tresult VST3_CALL getStreamSize(int64& size) = 0;
    virtual tresult VST3_CALL setStreamSize(int64 size) = 0;
};

struct PFactoryInfo {
    enum Flags : int32 {
        kNoFlags = 0,
        kClassesDiscardable = 1 << 0,
        kLicenseCheck = 1 << 1,
        kComponentNonDiscardable = 1 << 3,
        kUnicode = 1 << 4
    };

    char vendor[64];
    char url[256];
    char email[128];
    int32 flags;
};

inline constexpr int32 kManyInstances = 0x7FFFFFFF;

struct PClassInfo {
    TUID cid;
    int32 cardinality;  // kManyInstances
    char category[32];  // kAudioEffectClass, for one
    char name[64];
};

inline constexpr char kAudioEffectClass[] = "Audio Module Class";
inline constexpr char kComponentControllerClass[] = "Component Controller Class";
inline constexpr char kPlugTypeInstrumentSynth[] = "Instrument|Synth";
inline constexpr char kSdkVersion[] = "VST 3.7.14";  // the interface that this header states

struct PClassInfo2 {
    TUID cid;
    int32 cardinality;
    char category[32];
    char name[64];
    uint32 classFlags;        // none: a single component cannot be distributed
    char subCategories[128];  // separated by |
    char vendor[64];          // empty: the factory's
    char version[64];
    char sdkVersion[64];
};

struct PClassInfoW {
    TUID cid;
    int32 cardinality;
    char category[32];
    TChar name[64];
    uint32 classFlags;
    char subCategories[128];
    TChar vendor[64];
    TChar version[64];
    TChar sdkVersion[64];
};

struct IPluginFactory : FUnknown {
    static constexpr Uid kIid = uid(0x7A4D811C, 0x52114A1F, 0xAED9D2EE, 0x0B43BF9F);

    virtual tresult VST3_CALL getFactoryInfo(PFactoryInfo* info) = 0;
    virtual int32 VST3_CALL countClasses() = 0;
    virtual tresult VST3_CALL getClassInfo(int32 index, PClassInfo* info) = 0;
    // Both ids are 16 bytes, not texts.
    virtual tresult VST3_CALL createInstance(FIDString cid, FIDString iid, void** object) = 0;
};

struct IPluginFactory2 : IPluginFactory {
    static constexpr Uid kIid = uid(0x0007B650, 0xF24B4C0B, 0xA464EDB9, 0xF00B2ABB);

    virtual tresult VST3_CALL getClassInfo2(int32 index, PClassInfo2* info) = 0;
};

struct IPluginFactory3 : IPluginFactory2 {
    static constexpr Uid kIid = uid(0x4555A2AB, 0xC1234E57, 0x9B122910, 0x36878931);

    virtual tresult VST3_CALL getClassInfoUnicode(int32 index, PClassInfoW* info) = 0;
    virtual tresult VST3_CALL setHostContext(FUnknown* context) = 0;
};

static_assert(sizeof(void*) == 8 && sizeof(Uid) == 16);
static_assert(sizeof(PFactoryInfo) == 452 && offsetof(PFactoryInfo, flags) == 448);
static_assert(sizeof(PClassInfo) == 116 && offsetof(PClassInfo, name) == 52);
static_assert(sizeof(PClassInfo2) == 440 && offsetof(PClassInfo2, classFlags) == 116 &&
              offsetof(PClassInfo2, sdkVersion) == 376);
static_assert(sizeof(PClassInfoW) == 696 && offsetof(PClassInfoW, classFlags) == 180 &&
              offsetof(PClassInfoW, vendor) == 312);

}  // namespace vst3
