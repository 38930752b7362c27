// Turns key codes of the X server into characters and virtual keys.
#include "gui/windows/x11_keyboard.h"

#include "platform/xcb_owners.h"

namespace VSTGUI {
namespace {

constexpr struct {
    xcb_keysym_t symbol;
    VirtualKey key;
} kVirtualKeys[] = {
    {0xFF08, VirtualKey::Back},   {0xFF09, VirtualKey::Tab},      {0xFE20, VirtualKey::Tab},
    {0xFF0D, VirtualKey::Return}, {0xFF1B, VirtualKey::Escape},   {0xFF50, VirtualKey::Home},
    {0xFF51, VirtualKey::Left},   {0xFF52, VirtualKey::Up},       {0xFF53, VirtualKey::Right},
    {0xFF54, VirtualKey::Down},   {0xFF55, VirtualKey::PageUp},   {0xFF56, VirtualKey::PageDown},
    {0xFF57, VirtualKey::End},    {0xFF63, VirtualKey::Insert},   {0xFFFF, VirtualKey::Delete},
    {0xFF8D, VirtualKey::Enter},  {0xFF95, VirtualKey::Home},     {0xFF96, VirtualKey::Left},
    {0xFF97, VirtualKey::Up},     {0xFF98, VirtualKey::Right},    {0xFF99, VirtualKey::Down},
    {0xFF9A, VirtualKey::PageUp}, {0xFF9B, VirtualKey::PageDown}, {0xFF9C, VirtualKey::End},
    {0xFF9E, VirtualKey::Insert}, {0xFF9F, VirtualKey::Delete},   {0xFFBF, VirtualKey::F2},
};

VirtualKey virtualKeyFor(xcb_keysym_t symbol) {
    for (const auto& row : kVirtualKeys)
        if (row.symbol == symbol) return row.key;
    return VirtualKey::None;
}

bool isKeypad(xcb_keysym_t symbol) {
    return symbol >= 0xFF80 && symbol <= 0xFFBD;
}

// A symbol is Latin-1, marked Unicode, or a character of the keypad. Older encodings of other
// scripts follow no rule, and are not supported.
char32_t characterFor(xcb_keysym_t symbol) {
    constexpr xcb_keysym_t kUnicodeMark = 0x01000000;
    if ((symbol >= 0x20 && symbol <= 0x7E) || (symbol >= 0xA0 && symbol <= 0xFF)) return symbol;
    if ((symbol & 0xFF000000) == kUnicodeMark) return symbol & 0x00FFFFFF;
    if (symbol == 0x20AC) return symbol;                                     // the euro sign
    if (symbol >= 0xFFAA && symbol <= 0xFFB9) return symbol - 0xFFAA + '*';  // * + , - . / 0-9
    return symbol == 0xFFBD ? '=' : symbol == 0xFF80 ? ' ' : 0;
}

char32_t upperCase(char32_t letter) {
    const bool ascii = letter >= 'a' && letter <= 'z';
    const bool latin1 = letter >= 0xE0 && letter <= 0xFE && letter != 0xF7;
    return ascii || latin1 ? letter - 0x20 : letter;
}

}  // namespace

void X11Keyboard::reload() {
    const xcb_setup_t* const setup = xcb_get_setup(connection_);
    firstCode_ = setup->min_keycode;
    const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const platform::XcbOwned<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        connection_, xcb_get_keyboard_mapping(connection_, firstCode_, count), nullptr));
    if (!reply) return;
    perCode_ = reply->keysyms_per_keycode;
    const xcb_keysym_t* const first = xcb_get_keyboard_mapping_keysyms(reply.get());
    symbols_.assign(first, first + xcb_get_keyboard_mapping_keysyms_length(reply.get()));
}

xcb_keysym_t X11Keyboard::symbolAt(size_t row, size_t column) const {
    const size_t index = row * perCode_ + column;
    return column < perCode_ && index < symbols_.size() ? symbols_[index] : 0;
}

// The columns of a row are plain and Shift: first for group one, then for group two, then for the
// third level. A missing symbol falls back to the first group, then to the plain symbol.
xcb_keysym_t X11Keyboard::symbolFor(xcb_keycode_t code, uint16_t state) const {
    if (code < firstCode_) return 0;
    const size_t row = code - firstCode_;
    const bool secondGroup = (state >> 13 & 3) == 1;
    const bool thirdLevel = (state & XCB_MOD_MASK_5) != 0;
    const size_t base = thirdLevel ? 4 : secondGroup ? 2 : 0;
    const size_t first = symbolAt(row, base) ? base : 0;

    const xcb_keysym_t shifted = symbolAt(row, first + 1);
    const bool shift = (state & XCB_MOD_MASK_SHIFT) != 0;
    const bool numLock = (state & XCB_MOD_MASK_2) != 0;
    const bool wantsShifted = isKeypad(shifted) && numLock ? !shift : shift;
    return wantsShifted && shifted ? shifted : symbolAt(row, first);
}

void X11Keyboard::translate(xcb_keycode_t code, uint16_t state, KeyboardEvent& event) const {
    const xcb_keysym_t symbol = symbolFor(code, state);
    event.virt = virtualKeyFor(symbol);
    if (event.virt != VirtualKey::None) return;
    const char32_t character = characterFor(symbol);
    event.character = state & XCB_MOD_MASK_LOCK ? upperCase(character) : character;
}

}  // namespace VSTGUI
