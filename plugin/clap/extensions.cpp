// What the plug-in offers, by the names that hosts ask for.
#include <cstring>

#include "engine/voice_allocator.h"
#include "plugin/clap/forward.h"
#include "plugin/clap/text.h"
#include "state/panels.h"

namespace clap {

namespace {

// --- ports: no audio in, stereo out, notes in ---

bool audioPort(const Plugin*, uint32_t index, bool isInput, AudioPortInfo* info) {
    if (isInput || index != 0 || !info) return false;
    *info = {0, "", kAudioPortIsMain, 2, kPortStereo, kInvalidId};
    copyText("Stereo Out", info->name);
    return true;
}

constexpr PluginAudioPorts kAudioPorts = {
    [](const Plugin*, bool isInput) -> uint32_t { return isInput ? 0 : 1; },
    audioPort,
};

// MIDI is preferred: bend, pedal and expression come as what they are.
bool notePort(const Plugin*, uint32_t index, bool isInput, NotePortInfo* info) {
    if (!isInput || index != 0 || !info) return false;
    *info = {0, kNoteDialectClap | kNoteDialectMidi, kNoteDialectMidi, ""};
    copyText("MIDI In", info->name);
    return true;
}

constexpr PluginNotePorts kNotePorts = {
    [](const Plugin*, bool isInput) -> uint32_t { return isInput ? 1 : 0; },
    notePort,
};

constexpr PluginNoteName kNoteNames = {forward<&Shell::noteNameCount>, forward<&Shell::noteName>};

// --- parameters ---

constexpr PluginParams kParams = {
    forward<&Shell::parameterCount>, forward<&Shell::parameterInfo>,
    forward<&Shell::parameterValue>, forward<&Shell::valueToText>,
    forward<&Shell::textToValue>,    forward<&Shell::flush>,
};

// A page for each panel of the editor.
bool page(const Plugin*, uint32_t index, RemoteControlsPage* page) {
    if (index >= state::panels().size() || !page) return false;
    const state::Panel& panel = state::panels()[index];
    *page = {};
    copyText(panel.name, page->section_name);
    copyText(panel.name, page->page_name);
    page->page_id = index;
    for (size_t i = 0; i < kRemoteControlsCount; ++i) {
        page->param_ids[i] =
            i < panel.parameters.size() ? static_cast<Id>(panel.parameters[i]) : kInvalidId;
    }
    return true;
}

constexpr PluginRemoteControls kRemoteControls = {
    [](const Plugin*) { return static_cast<uint32_t>(state::panels().size()); },
    page,
};

// --- state and presets ---

constexpr PluginState kState = {forward<&Shell::save>, forward<&Shell::load>};
constexpr PluginStateContext kStateContext = {forward<&Shell::saveFor>, forward<&Shell::loadFor>};
constexpr PluginPresetLoad kPresetLoad = {forward<&Shell::loadPreset>};

// --- editor ---

constexpr PluginGui kGui = {
    forward<&Shell::isGuiSupported>,  forward<&Shell::preferredGui>,
    forward<&Shell::createGui>,       forward<&Shell::destroyGui>,
    forward<&Shell::setGuiScale>,     forward<&Shell::guiSize>,
    forward<&Shell::canResizeGui>,    forward<&Shell::guiResizeHints>,
    forward<&Shell::adjustGuiSize>,   forward<&Shell::setGuiSize>,
    forward<&Shell::setGuiParent>,    forward<&Shell::setGuiTransient>,
    forward<&Shell::suggestGuiTitle>, forward<&Shell::showGui>,
    forward<&Shell::hideGui>,
};
constexpr PluginTimerSupport kTimerSupport = {forward<&Shell::onTimer>};

// --- sound ---

constexpr PluginLatency kLatency = {[](const Plugin*) -> uint32_t { return 0; }};
constexpr PluginTail kTail = {forward<&Shell::tail>};

constexpr PluginVoiceInfo kVoiceInfo = {[](const Plugin*, VoiceInfo* info) {
    if (!info) return false;
    *info = {engine::kInitialVoices, engine::kMaxVoices, 0};
    return true;
}};

// The same in both modes.
constexpr PluginRender kRender = {
    [](const Plugin*) { return false; },
    [](const Plugin*, int32_t mode) { return mode == kRenderRealtime || mode == kRenderOffline; },
};

constexpr struct {
    const char* id;
    const void* record;
} kExtensions[] = {
    {kExtAudioPorts, &kAudioPorts},
    {kExtNotePorts, &kNotePorts},
    {kExtNoteName, &kNoteNames},
    {kExtParams, &kParams},
    {kExtRemoteControls, &kRemoteControls},
    {kExtRemoteControlsCompat, &kRemoteControls},
    {kExtState, &kState},
    {kExtStateContext, &kStateContext},
    {kExtPresetLoad, &kPresetLoad},
    {kExtPresetLoadCompat, &kPresetLoad},
    {kExtGui, &kGui},
    {kExtTimerSupport, &kTimerSupport},
    {kExtLatency, &kLatency},
    {kExtTail, &kTail},
    {kExtVoiceInfo, &kVoiceInfo},
    {kExtRender, &kRender},
};

}  // namespace

const void* Shell::extension(const char* id) {
    for (const auto& extension : kExtensions) {
        if (id && std::strcmp(id, extension.id) == 0) return extension.record;
    }
    return nullptr;
}

}  // namespace clap
