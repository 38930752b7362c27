// A keyboard that shows the held keys and the split, and plays.
#include "editor/views/keyboard_view.h"

#include <algorithm>
#include <utility>

#include "state/parameter_text.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr int kMiddleC = 60;
constexpr int kOctave = 12;
constexpr int kTypedVelocity = 100;
constexpr CCoord kFelt = 4;   // height of the strip above the keys
constexpr CCoord kEdge = 2;   // of the black keys' upper faces
constexpr CCoord kFront = 5;  // their slope towards the player
constexpr CCoord kLip = 3;    // the shaded end of a white key
constexpr CCoord kLabelHeight = 12;
constexpr CCoord kOverhang = 12;  // of labels and shadows beyond the key

CColor faded(CColor color, int alpha) {
    color.alpha = static_cast<uint8_t>(alpha);
    return color;
}

void fill(CDrawContext& context, const CRect& area, const CColor& color) {
    context.setFillColor(color);
    context.drawRect(area, kDrawFilled);
}

CRect keyArea(CRect size) {
    size.top += kFelt;
    return size;
}

}  // namespace

CKeyboardView::CKeyboardView(const CRect& size, EditorHost& host, int first, int last)
    : CView(size),
      host_(host),
      layout_(keyArea(size), first, last),
      chosen_(std::clamp(kMiddleC, layout_.first(), layout_.last())),
      shown_{host.heldKeys(), split(), basses()} {
    setWantsIdle(true);
    setWantsFocus(true);
}

int CKeyboardView::split() const {
    const float value = host_.parameter(state::kKSplit);
    return state::splitKeyAt(static_cast<int>(state::plainValue(state::kKSplit, value)));
}

bool CKeyboardView::basses() const {
    return host_.parameter(state::kContrabass2) > 0.5f || host_.parameter(state::kCello2) > 0.5f;
}

void CKeyboardView::redraw(int key) {
    if (key == KeyLayout::kNoKey) return;
    CRect area = layout_.area(key);
    invalidRect(area.inset(-1, 0));
}

void CKeyboardView::onIdle() {
    auto held = host_.heldKeys();
    if (played_ != KeyLayout::kNoKey) held[played_] = true;
    const auto changed = std::exchange(shown_.held, held) ^ held;
    for (int key = layout_.first(); key <= layout_.last() && changed.any(); ++key) {
        if (changed[key]) redraw(key);
    }
    const bool sameSplit = std::exchange(shown_.split, split()) == shown_.split;
    const bool sameBasses = std::exchange(shown_.basses, basses()) == shown_.basses;
    if (!sameSplit || !sameBasses) invalid();
}

// The end of a key comes before the next one, so a glide sounds like one finger.
void CKeyboardView::play(int key, int velocity) {
    if (key == played_) return;
    if (played_ != KeyLayout::kNoKey) host_.playKey(played_, 0);
    played_ = key;
    if (key != KeyLayout::kNoKey) host_.playKey(key, velocity);
    onIdle();
}

void CKeyboardView::follow(const CPoint& where) {
    const int key = layout_.keyAt(where);
    play(key, key == KeyLayout::kNoKey ? 0 : layout_.velocityAt(key, where));
}

void CKeyboardView::hover(int key) {
    const int before = std::exchange(shown_.hovered, key);
    if (before == key) return;
    redraw(before);
    redraw(key);
}

void CKeyboardView::choose(int key) {
    const int before = std::exchange(shown_.chosen, key);
    if (before == key) return;
    redraw(before);
    redraw(key);
}

bool CKeyboardView::removed(CView* parent) {
    play(KeyLayout::kNoKey, 0);
    return CView::removed(parent);
}

void CKeyboardView::takeFocus() {
    if (played_ == KeyLayout::kNoKey) choose(chosen_);
}

void CKeyboardView::looseFocus() {
    play(KeyLayout::kNoKey, 0);
    choose(KeyLayout::kNoKey);
}

CMouseEventResult CKeyboardView::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if (!buttons.isLeftButton() || layout_.keyAt(where) == KeyLayout::kNoKey) {
        return kMouseEventNotHandled;
    }
    choose(KeyLayout::kNoKey);
    follow(where);
    chosen_ = played_;
    hover(KeyLayout::kNoKey);
    return kMouseEventHandled;
}

CMouseEventResult CKeyboardView::onMouseMoved(CPoint& where, const CButtonState& buttons) {
    if (buttons.isLeftButton()) {
        follow(where);
    } else {
        hover(layout_.keyAt(where));
    }
    return kMouseEventHandled;
}

CMouseEventResult CKeyboardView::onMouseUp(CPoint& where, const CButtonState&) {
    play(KeyLayout::kNoKey, 0);
    hover(layout_.keyAt(where));
    return kMouseEventHandled;
}

CMouseEventResult CKeyboardView::onMouseCancel() {
    play(KeyLayout::kNoKey, 0);
    return kMouseEventHandled;
}

CMouseEventResult CKeyboardView::onMouseExited(CPoint&, const CButtonState&) {
    hover(KeyLayout::kNoKey);
    return kMouseEventHandled;
}

void CKeyboardView::onKeyboardEvent(KeyboardEvent& event) {
    const bool plays = event.virt == VirtualKey::Return || event.virt == VirtualKey::Enter;
    const bool down = event.type == EventType::KeyDown;
    if (plays && event.modifiers.empty()) {
        choose(chosen_);
        play(down ? chosen_ : KeyLayout::kNoKey, kTypedVelocity);
        event.consumed = true;
        return;
    }
    constexpr std::pair<VirtualKey, int> kSteps[] = {{VirtualKey::Left, -1},
                                                     {VirtualKey::Right, 1},
                                                     {VirtualKey::Down, -kOctave},
                                                     {VirtualKey::Up, kOctave}};
    for (const auto& [key, step] : kSteps) {
        if (event.virt != key || !event.modifiers.empty()) continue;
        event.consumed = true;
        const int wanted = chosen_ + step;
        if (!down || wanted < layout_.first() || wanted > layout_.last()) return;
        chosen_ = wanted;
        choose(chosen_);
        if (played_ != KeyLayout::kNoKey) play(chosen_, kTypedVelocity);
        return;
    }
}

void CKeyboardView::draw(CDrawContext* context) {
    drawRect(context, getViewSize());
}

void CKeyboardView::drawRect(CDrawContext* context, const CRect& updateRect) {
    context->setDrawMode(kAliasing);
    for (const bool sharps : {false, true}) {
        for (int key = layout_.first(); key <= layout_.last(); ++key) {
            if (KeyLayout::isSharp(key) != sharps) continue;
            CRect drawn = layout_.area(key);
            drawn.extend(kOverhang, 0);
            if (drawn.rectOverlap(updateRect)) drawKey(*context, key);
        }
    }
    drawFelt(*context);
    setDirty(false);
}

void CKeyboardView::drawKey(CDrawContext& context, int key) const {
    const CRect area = layout_.area(key);
    const bool held = shown_.held[key];
    const bool hovered = key == shown_.hovered;
    CRect face = area;
    if (KeyLayout::isSharp(key)) {
        CRect shadow = area;
        fill(context, shadow.offset(2, 2), faded(kBlackCColor, 70));
        fill(context, area, sharpColor_);
        face.inset(kEdge, 0);
        face.bottom -= held ? kEdge : kFront;
        fill(context, face, held ? heldColor_ : faded(kWhiteCColor, hovered ? 62 : 26));
        face.top = face.bottom - 1;
        fill(context, face, faded(kWhiteCColor, 70));
    } else {
        fill(context, area, gapColor_);
        face.right -= 1;
        fill(context, face, keyColor_);
        CRect shade = face;
        for (const int alpha : {70, 40, 18}) {  // below the felt
            shade.bottom = shade.top + kLip;
            fill(context, shade, faded(kBlackCColor, alpha));
            shade.top = shade.bottom;
        }
        if (held) fill(context, face, faded(heldColor_, 205));
        if (hovered && !held) fill(context, face, faded(heldColor_, 50));
        shade = face;
        shade.top = shade.bottom - (held ? 1 : kLip);
        fill(context, shade, faded(kBlackCColor, 60));
        CRect highlight = face;
        highlight.right = highlight.left + 1;
        fill(context, highlight, faded(kWhiteCColor, 90));
        if (key % kOctave == 0) {
            CRect label = face;
            label.bottom -= kLip;
            label.top = label.bottom - kLabelHeight;
            context.setFont(kNormalFontVerySmall);
            context.setFontColor(faded(sharpColor_, held ? 255 : 170));
            context.drawString(state::keyText(key).c_str(), label);
        }
    }
    if (key == shown_.chosen) {
        context.setFrameColor(heldColor_);
        context.setLineWidth(2);
        CRect frame = area;
        frame.top += kLip;
        context.drawRect(frame.inset(1, 1), kDrawStroked);
    }
}

// Coloured above the keys that the basses play, as far as one of them is on.
void CKeyboardView::drawFelt(CDrawContext& context) const {
    CRect felt = getViewSize();
    felt.bottom = felt.top + kFelt;
    fill(context, felt, gapColor_);
    fill(context, felt, faded(kBlackCColor, 90));
    if (shown_.split <= layout_.first()) return;
    if (shown_.split <= layout_.last()) felt.right = layout_.area(shown_.split).left;
    fill(context, felt, faded(bassColor_, shown_.basses ? 255 : 110));
    if (shown_.split > layout_.last()) return;
    CRect mark = felt;
    mark.left = mark.right - 2;
    mark.bottom += kLip;
    fill(context, mark, bassColor_);
}

}  // namespace editor
