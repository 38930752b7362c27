// Life of the view, and the host's keys in the editor's terms.
#include "plugin/vst3/view.h"

#include <cstring>
#include <exception>

namespace vst3 {

namespace {

constexpr int kIdleMilliseconds = 20;
constexpr FIDString kPlatformType = kOnWindows ? kPlatformTypeHwnd : kPlatformTypeX11;

// Published numbers.
constexpr struct {
    int16 code;
    VSTGUI::VirtualKey key;
} kVirtualKeys[] = {
    {1, VSTGUI::VirtualKey::Back},      {2, VSTGUI::VirtualKey::Tab},
    {4, VSTGUI::VirtualKey::Return},    {6, VSTGUI::VirtualKey::Escape},
    {7, VSTGUI::VirtualKey::Space},     {9, VSTGUI::VirtualKey::End},
    {10, VSTGUI::VirtualKey::Home},     {11, VSTGUI::VirtualKey::Left},
    {12, VSTGUI::VirtualKey::Up},       {13, VSTGUI::VirtualKey::Right},
    {14, VSTGUI::VirtualKey::Down},     {15, VSTGUI::VirtualKey::PageUp},
    {16, VSTGUI::VirtualKey::PageDown}, {19, VSTGUI::VirtualKey::Enter},
    {21, VSTGUI::VirtualKey::Insert},   {22, VSTGUI::VirtualKey::Delete},
    {41, VSTGUI::VirtualKey::F2},
};
constexpr struct {
    int16 bit;
    VSTGUI::ModifierKey key;
} kModifiers[] = {
    {1, VSTGUI::ModifierKey::Shift},
    {2, VSTGUI::ModifierKey::Alt},
    {4, VSTGUI::ModifierKey::Control},
    {8, VSTGUI::ModifierKey::Super},
};

VSTGUI::KeyboardEvent keyboardEvent(char16_t character, int16 code, int16 modifiers,
                                    VSTGUI::EventType type) {
    VSTGUI::KeyboardEvent event(type);
    for (const auto& row : kModifiers) {
        if (modifiers & row.bit) event.modifiers.add(row.key);
    }
    for (const auto& row : kVirtualKeys) {
        if (row.code == code) event.virt = row.key;
    }
    if (event.virt == VSTGUI::VirtualKey::None) event.character = character;
    return event;
}

ViewRect asViewRect(const editor::EditorRect& size) {
    return {size.left, size.top, size.right, size.bottom};
}

}  // namespace

View::View(Shell& shell) : shell_(shared(&shell)), editor_(shell.instrument()) {
    editor_.setKnobMode(shell.knobMode());
}

View::~View() {
    removed();
}

tresult View::queryInterface(const TUID iid, void** object) {
    if (!object) return kInvalidArgument;
    *object = nullptr;
    IPlugView* const view = this;
    const bool known = answers<FUnknown>(view, iid, object) ||
                       answers<IPlugView>(view, iid, object) ||
                       answers<IPlugViewContentScaleSupport>(this, iid, object);
    return known ? kResultOk : kNoInterface;
}

uint32 View::release() {
    const uint32 left = references_.remove();
    if (left == 0) delete this;
    return left;
}

tresult View::isPlatformTypeSupported(FIDString type) {
    return type && std::strcmp(type, kPlatformType) == 0 ? kResultTrue : kResultFalse;
}

tresult View::attached(void* parent, FIDString type) {
    if (!parent || isPlatformTypeSupported(type) != kResultTrue) return kInvalidArgument;
    // What has changed is told to one editor.
    if (editor_.isOpen() || !shell_->show(this)) return kResultFalse;
    timer_ = std::make_unique<IdleTimer>(frame_, kIdleMilliseconds, [this] { idle(); });
    if (timer_->runs() && open(parent)) return kResultOk;
    removed();
    return kResultFalse;
}

bool View::open(void* parent) {
    try {
        return editor_.open(parent);
    } catch (const std::exception&) {  // no memory for a skin's pictures
        return false;
    }
}

tresult View::removed() {
    if (!timer_) return kResultOk;
    timer_.reset();
    editor_.close();
    shell_->show(nullptr);
    return kResultOk;
}

void View::idle() {
    const auto self = shared(this);  // the host may let go of it meanwhile
    editor_.idle();
    shell_->tellHost();
}

tresult View::onWheel(float distance) {
    return editor_.onWheel(distance) ? kResultTrue : kResultFalse;
}

tresult View::onKeyDown(char16_t key, int16 keyCode, int16 modifiers) {
    auto event = keyboardEvent(key, keyCode, modifiers, VSTGUI::EventType::KeyDown);
    return editor_.onKey(event) ? kResultTrue : kResultFalse;
}

tresult View::onKeyUp(char16_t key, int16 keyCode, int16 modifiers) {
    auto event = keyboardEvent(key, keyCode, modifiers, VSTGUI::EventType::KeyUp);
    return editor_.onKey(event) ? kResultTrue : kResultFalse;
}

tresult View::getSize(ViewRect* size) {
    if (!size) return kInvalidArgument;
    try {
        *size = asViewRect(editor_.getRect());
        return kResultTrue;
    } catch (const std::exception&) {
        return kResultFalse;
    }
}

// The editor's own window has its size by the zoom.
tresult View::onSize(ViewRect* newSize) {
    return newSize ? kResultTrue : kInvalidArgument;
}

tresult View::setFrame(IPlugFrame* frame) {
    frame_ = frame;
    return kResultOk;
}

tresult View::checkSizeConstraint(ViewRect* rect) {
    ViewRect size{};
    if (!rect || getSize(&size) != kResultTrue) return kInvalidArgument;
    rect->right = rect->left + size.right;
    rect->bottom = rect->top + size.bottom;
    return kResultTrue;
}

tresult View::setContentScaleFactor(float factor) {
    editor_.setContentScale(factor);
    return kResultOk;
}

// A host that refuses shows a part.
bool View::requestSize(int width, int height) {
    ViewRect size{0, 0, width, height};
    return frame_ && frame_->resizeView(this, &size) == kResultOk;
}

}  // namespace vst3
