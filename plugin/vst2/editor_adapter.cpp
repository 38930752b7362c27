// Converts published keys, sizes and modes to the editor's.
#include "plugin/vst2/editor_adapter.h"

#include <exception>

namespace vst2 {

namespace {

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
    {VKEY_DELETE, VSTGUI::VirtualKey::Delete}, {VKEY_F2, VSTGUI::VirtualKey::F2},
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

// Hosts differ in the case of letters, so Shift decides.
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

bool EditorAdapter::getRect(ERect** rect) {
    const editor::EditorRect size = editor_.getRect();
    rect_ = {size.top, size.left, size.bottom, size.right};
    *rect = &rect_;
    return true;
}

bool EditorAdapter::open(void* parentWindow) {
    try {
        return editor_.open(parentWindow);
    } catch (const std::exception&) {  // out of memory for a skin's pictures
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

}  // namespace vst2
