// Translates between the editor's calls and the instance's.
#include "plugin/editor_adapter.h"

#include <exception>

#include "engine/ensemble_chorus.h"
#include "plugin/vst_synth.h"

namespace plugin {

namespace {

// The text that an operation writes for an index.
template <void (AudioEffect::*operation)(VstInt32, char*)>
std::string textOf(VstSynth& synth, int index) {
    char text[64] = {};
    (synth.*operation)(index, text);
    return text;
}

constexpr struct {
    VstInt32 published;
    VSTGUI::VirtualKey key;
} kVirtualKeys[] = {
    {VKEY_BACK, VSTGUI::VirtualKey::Back},     {VKEY_TAB, VSTGUI::VirtualKey::Tab},
    {VKEY_RETURN, VSTGUI::VirtualKey::Return}, {VKEY_ESCAPE, VSTGUI::VirtualKey::Escape},
    {VKEY_SPACE, VSTGUI::VirtualKey::Space},   {VKEY_END, VSTGUI::VirtualKey::End},
    {VKEY_HOME, VSTGUI::VirtualKey::Home},     {VKEY_LEFT, VSTGUI::VirtualKey::Left},
    {VKEY_UP, VSTGUI::VirtualKey::Up},         {VKEY_RIGHT, VSTGUI::VirtualKey::Right},
    {VKEY_DOWN, VSTGUI::VirtualKey::Down},     {VKEY_PAGEUP, VSTGUI::VirtualKey::PageUp},
    {VKEY_NEXT, VSTGUI::VirtualKey::PageDown}, {VKEY_PAGEDOWN, VSTGUI::VirtualKey::PageDown},
    {VKEY_ENTER, VSTGUI::VirtualKey::Enter},   {VKEY_INSERT, VSTGUI::VirtualKey::Insert},
    {VKEY_DELETE, VSTGUI::VirtualKey::Delete},
};

constexpr struct {
    VstInt32 published;
    VSTGUI::ModifierKey key;
} kModifiers[] = {
    {MODIFIER_SHIFT, VSTGUI::ModifierKey::Shift},
    {MODIFIER_ALTERNATE, VSTGUI::ModifierKey::Alt},
    {MODIFIER_COMMAND, VSTGUI::ModifierKey::Super},
    {MODIFIER_CONTROL, VSTGUI::ModifierKey::Control},
};

// Hosts differ in the case of letters: Shift decides.
char32_t characterOf(const VstKeyCode& key) {
    if (key.virt >= VKEY_NUMPAD0 && key.virt <= VKEY_NUMPAD9) return U'0' + key.virt - VKEY_NUMPAD0;
    if (key.character < ' ' || key.character > '~') return 0;
    const auto character = static_cast<char32_t>(key.character);
    const char32_t lower = character | 0x20;
    if (lower < 'a' || lower > 'z') return character;
    return key.modifier & MODIFIER_SHIFT ? lower - 0x20 : lower;
}

VSTGUI::KeyboardEvent keyboardEvent(const VstKeyCode& key, VSTGUI::EventType type) {
    VSTGUI::KeyboardEvent event(type);
    for (const auto& row : kModifiers) {
        if (key.modifier & row.published) event.modifiers.add(row.key);
    }
    for (const auto& row : kVirtualKeys) {
        if (row.published == key.virt) event.virt = row.key;
    }
    if (event.virt == VSTGUI::VirtualKey::None) event.character = characterOf(key);
    return event;
}

}  // namespace

int SynthForEditor::parameterCount() const {
    return synth_.getAeffect()->numParams;
}

float SynthForEditor::parameter(int index) const {
    return synth_.getParameter(index);
}

void SynthForEditor::setParameter(int index, float value) {
    synth_.setParameter(index, value);
}

void SynthForEditor::setParameterAutomated(int index, float value) {
    synth_.setParameterAutomated(index, value);
}

void SynthForEditor::beginEdit(int index) {
    synth_.beginEdit(index);
}

void SynthForEditor::endEdit(int index) {
    synth_.endEdit(index);
}

std::string SynthForEditor::parameterName(int index) const {
    return textOf<&AudioEffect::getParameterName>(synth_, index);
}

std::string SynthForEditor::parameterDisplay(int index) const {
    return textOf<&AudioEffect::getParameterDisplay>(synth_, index);
}

std::string SynthForEditor::parameterLabel(int index) const {
    return textOf<&AudioEffect::getParameterLabel>(synth_, index);
}

int SynthForEditor::programCount() const {
    return synth_.getAeffect()->numPrograms;
}

int SynthForEditor::program() const {
    return synth_.getProgram();
}

void SynthForEditor::setProgram(int program) {
    synth_.setProgram(program);
}

std::string SynthForEditor::programName(int program) const {
    char name[64] = {};
    synth_.getProgramNameIndexed(0, program, name);
    return name;
}

void SynthForEditor::renameProgram(int program, const std::string& name) {
    synth_.setProgramNameIndexed(program, name.c_str());
    synth_.updateDisplay();
}

int SynthForEditor::heldNotes() const {
    return synth_.engine().heldNotes();
}

int SynthForEditor::lastKey() const {
    return synth_.engine().lastKey();
}

float SynthForEditor::outputLevel() const {
    return synth_.engine().outputLevel();
}

int SynthForEditor::chorusTapCount() const {
    return engine::EnsembleChorus::kTaps;
}

float SynthForEditor::chorusTap(int tap) const {
    return synth_.engine().chorusTap(tap);
}

state::LearnSlot& SynthForEditor::learnSlot() {
    return synth_.learnSlot();
}

void SynthForEditor::sizeWindow(int width, int height) {
    synth_.sizeWindow(width, height);
}

EditorAdapter::EditorAdapter(VstSynth& synth) : AEffEditor(&synth), host_(synth), editor_(host_) {}

bool EditorAdapter::getRect(ERect** rect) {
    const editor::EditorRect size = editor_.getRect();
    rect_ = {size.top, size.left, size.bottom, size.right};
    *rect = &rect_;
    return true;
}

bool EditorAdapter::open(void* parentWindow) {
    try {
        return editor_.open(parentWindow);
    } catch (const std::exception&) {  // no memory for a skin's pictures
        editor_.close();
        return false;
    }
}

bool EditorAdapter::onKeyDown(const VstKeyCode& key) {
    auto event = keyboardEvent(key, VSTGUI::EventType::KeyDown);
    return editor_.onKey(event);
}

bool EditorAdapter::onKeyUp(const VstKeyCode& key) {
    auto event = keyboardEvent(key, VSTGUI::EventType::KeyUp);
    return editor_.onKey(event);
}

bool EditorAdapter::setKnobMode(VstInt32 mode) {
    if (mode < 0 || mode > 2) return false;
    editor_.setKnobMode(mode);
    return true;
}

}  // namespace plugin
