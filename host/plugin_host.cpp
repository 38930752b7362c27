// Drives a VST 2.4 instrument: loading, names and values, blocks of events and sound.
#include "host/plugin_host.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>

#include "host/error.h"
#include "platform/path_text.h"
#include "platform/product.h"

namespace host {
namespace {

// Longer than the interface allows, for instruments that write too much.
constexpr int kTextBytes = 1024;

// The host of the instrument being loaded, which has no AEffect yet to identify it.
thread_local PluginHost* loadingHost = nullptr;
thread_local bool isProcessing = false;

constexpr std::size_t kEventListHead = offsetof(VstEvents, events) / sizeof(VstIntPtr);

platform::SharedLibrary loadLibrary(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(platform::systemPath(path), error);
    if (!exists(status)) throw Error("There is no file " + path + ".");
    // The loader would wait for the other end of a pipe.
    if (!is_regular_file(status)) throw Error(path + " is not a file that can be read.");
    try {
        return platform::SharedLibrary(path);
    } catch (const std::runtime_error& reason) {
        throw Error(path + " cannot be loaded: " + reason.what() + ".");
    }
}

void copyText(void* destination, const char* text) {
    std::memcpy(destination, text, std::strlen(text) + 1);
}

std::vector<float*> pointersInto(std::vector<std::vector<float>>& channels) {
    std::vector<float*> pointers;
    for (auto& channel : channels) pointers.push_back(channel.data());
    return pointers;
}

}  // namespace

PluginHost::PluginHost(const std::string& path, int sampleRate, int blockSize,
                       const HostIdentity& identity)
    : identity_(identity),
      sampleRate_(sampleRate),
      blockSize_(blockSize),
      library_(loadLibrary(path)) {
    time_.sampleRate = sampleRate;  // instruments ask during start-up
    start(path);
    dispatch(effOpen);
    setFormat(sampleRate, blockSize);
}

void PluginHost::setFormat(int sampleRate, int blockSize) {
    sampleRate_ = sampleRate;
    blockSize_ = blockSize;
    time_.sampleRate = sampleRate;
    dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(sampleRate));
    dispatch(effSetBlockSize, 0, blockSize);

    const auto frames = static_cast<std::size_t>(blockSize);
    inputs_.assign(std::max(effect_->numInputs, 0), std::vector<float>(frames));
    outputs_.assign(effect_->numOutputs, std::vector<float>(frames));
    inputPointers_ = pointersInto(inputs_);
    outputPointers_ = pointersInto(outputs_);
}

PluginHost::~PluginHost() {
    if (running_) suspend();
}

void PluginHost::Closer::operator()(AEffect* effect) const {
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}

// Creates the instrument and checks that it is playable.
void PluginHost::start(const std::string& path) {
    using EntryPoint = AEffect* (*)(audioMasterCallback);
    void* symbol = library_.symbol("VSTPluginMain");
    if (!symbol) symbol = library_.symbol("main");  // older instruments export this
    const auto entry = reinterpret_cast<EntryPoint>(symbol);
    if (!entry) throw Error(path + " is not a VST 2.4 plug-in: it has no VSTPluginMain.");

    loadingHost = this;
    AEffect* const effect = entry(&PluginHost::answer);
    loadingHost = nullptr;
    if (!effect || effect->magic != kEffectMagic || !effect->dispatcher) {
        throw Error(path + " did not start.");
    }
    effect->resvd1 = reinterpret_cast<VstIntPtr>(this);
    effect_.reset(effect);

    const bool canReplace = (effect->flags & effFlagsCanReplacing) && effect->processReplacing;
    if (!(effect->flags & effFlagsIsSynth) || !canReplace || effect->numOutputs < 1) {
        throw Error(path + " is not an instrument.");
    }
}

std::string PluginHost::name() const {
    return text(effGetEffectName);
}

int PluginHost::program() const {
    return static_cast<int>(dispatch(effGetProgram));
}

void PluginHost::setProgram(int index) {
    dispatch(effBeginSetProgram);
    dispatch(effSetProgram, 0, index);
    dispatch(effEndSetProgram);
}

std::string PluginHost::programName(int index) {
    char buffer[kTextBytes] = {};
    const bool isNamed = dispatch(effGetProgramNameIndexed, index, -1, buffer) != 0;
    buffer[kTextBytes - 1] = '\0';
    if (isNamed) return buffer;
    // Some instruments only name their current program, so go to each.
    const int current = program();
    if (index != current) setProgram(index);
    const std::string name = text(effGetProgramName);
    if (index != current) setProgram(current);
    return name;
}

void PluginHost::setProgramName(const std::string& name) {
    char buffer[kTextBytes] = {};
    name.copy(buffer, kVstMaxProgNameLen - 1);
    dispatch(effSetProgramName, 0, 0, buffer);
}

float PluginHost::parameter(int index) const {
    return effect_->getParameter(effect_.get(), index);
}

void PluginHost::setParameter(int index, float value) {
    effect_->setParameter(effect_.get(), index, value);
}

std::string PluginHost::parameterName(int index) const {
    return text(effGetParamName, index);
}

std::string PluginHost::parameterDisplay(int index) const {
    const std::string unit = text(effGetParamLabel, index);
    return text(effGetParamDisplay, index) + (unit.empty() ? "" : " " + unit);
}

std::string PluginHost::chunk(Extent extent) const {
    void* data = nullptr;
    const VstIntPtr size = dispatch(effGetChunk, static_cast<VstInt32>(extent), 0, &data);
    if (!data || size <= 0) return {};
    return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

void PluginHost::setChunk(Extent extent, std::string chunk) {
    const auto size = static_cast<VstIntPtr>(chunk.size());
    dispatch(effSetChunk, static_cast<VstInt32>(extent), size, chunk.data());
}

bool PluginHost::acceptsLoading(Extent extent, VstInt32 id, int version, int count) const {
    VstPatchChunkInfo info = {};
    info.version = 1;
    info.pluginUniqueID = id;
    info.pluginVersion = version;
    info.numElements = count;
    const auto opcode = extent == Extent::kBank ? effBeginLoadBank : effBeginLoadProgram;
    return static_cast<VstInt32>(dispatch(opcode, 0, 0, &info)) != -1;
}

VstIntPtr PluginHost::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt) const {
    return effect_->dispatcher(effect_.get(), opcode, index, value, ptr, opt);
}

void PluginHost::resume() {
    time_.samplePos = 0.0;
    time_.flags = kVstTransportPlaying | kVstTransportChanged;
    running_ = true;
    dispatch(effMainsChanged, 0, 1);
}

void PluginHost::suspend() {
    dispatch(effMainsChanged, 0, 0);
    running_ = false;
    time_.flags = kVstTransportChanged;
}

void PluginHost::process(const std::vector<BlockEvent>& events, int frames) {
    isProcessing = true;
    if (!events.empty()) sendEvents(events);
    effect_->processReplacing(effect_.get(), inputPointers_.data(), outputPointers_.data(), frames);
    isProcessing = false;
    time_.samplePos += frames;
    time_.flags = kVstTransportPlaying;
}

void PluginHost::reserveEvents(std::size_t count) {
    midiEvents_.reserve(count);
    eventList_.reserve(kEventListHead + count);
}

void PluginHost::sendEvents(const std::vector<BlockEvent>& events) {
    midiEvents_.clear();
    midiEvents_.reserve(events.size());
    // The instrument may read the list until the block is rendered.
    eventList_.assign(kEventListHead + events.size(), 0);
    auto* const list = reinterpret_cast<VstEvents*>(eventList_.data());
    list->numEvents = static_cast<VstInt32>(events.size());
    auto** const entries = reinterpret_cast<VstEvent**>(eventList_.data()) + kEventListHead;
    for (std::size_t i = 0; i < events.size(); ++i) {
        VstMidiEvent midi = {};
        midi.type = kVstMidiType;
        midi.byteSize = sizeof midi;
        midi.deltaFrames = events[i].frame;
        std::memcpy(midi.midiData, events[i].message.data(), events[i].message.size());
        midiEvents_.push_back(midi);
        entries[i] = reinterpret_cast<VstEvent*>(&midiEvents_.back());
    }
    dispatch(effProcessEvents, 0, 0, list);
}

std::string PluginHost::text(VstInt32 opcode, VstInt32 index) const {
    char buffer[kTextBytes] = {};
    dispatch(opcode, index, 0, buffer);
    buffer[kTextBytes - 1] = '\0';
    return buffer;
}

VstIntPtr PluginHost::answer(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                             void* ptr, float) {
    PluginHost* host = loadingHost;
    if (effect && effect->resvd1 != 0) host = reinterpret_cast<PluginHost*>(effect->resvd1);
    if (host) return host->answer(opcode, index, value, ptr);
    return opcode == audioMasterVersion ? kVstVersion : 0;
}

VstIntPtr PluginHost::processLevel() const {
    if (!identity_.isRealtime) return kVstProcessLevelOffline;
    return isProcessing ? kVstProcessLevelRealtime : kVstProcessLevelUser;
}

VstIntPtr PluginHost::answer(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr) {
    switch (opcode) {
        case audioMasterVersion:
            return kVstVersion;
        case audioMasterGetTime:
            return reinterpret_cast<VstIntPtr>(&time_);
        case audioMasterGetSampleRate:
            return sampleRate_;
        case audioMasterGetBlockSize:
            return blockSize_;
        case audioMasterGetCurrentProcessLevel:
            return processLevel();
        case audioMasterSizeWindow:
            return sizeWindow_ && sizeWindow_(index, static_cast<int>(value));
        case audioMasterGetVendorString:
            copyText(ptr, platform::kCompanyName);
            return 1;
        case audioMasterGetProductString:
            copyText(ptr, identity_.product);
            return 1;
        case audioMasterCanDo:
            return std::strcmp(static_cast<const char*>(ptr), "sendVstEvents") == 0 ||
                   std::strcmp(static_cast<const char*>(ptr), "sendVstMidiEvent") == 0 ||
                   std::strcmp(static_cast<const char*>(ptr), "sendVstTimeInfo") == 0 ||
                   (sizeWindow_ && std::strcmp(static_cast<const char*>(ptr), "sizeWindow") == 0);
        case audioMasterGetLanguage:
            return 1;  // English
    }
    return 0;
}

}  // namespace host
