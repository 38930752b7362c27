// Draws the bar with the editor's toolkit layer.
#include "app/control_bar.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "gui/controls/option_menu.h"
#include "gui/controls/text_label.h"
#include "gui/graphics/bitmap.h"
#include "gui/graphics/draw_context.h"
#include "gui/views/frame.h"
#include "gui/windows/library.h"

namespace app {

using namespace VSTGUI;

namespace {

constexpr CColor kBackColor(35, 34, 33);
constexpr CColor kButtonColor(58, 56, 53);
constexpr CColor kPressedColor(92, 88, 82);
constexpr CColor kTextColor(240, 236, 228);
constexpr CColor kDisabledColor(146, 141, 135);
constexpr CColor kPlayedColor(214, 178, 110);

constexpr int kTurnsOfWork = 2;
constexpr CCoord kHeight = 28;       // of the bar, unzoomed like all that follows
constexpr CCoord kLeastHeight = 14;  // a line of text
constexpr CCoord kGap = 4;
constexpr CCoord kUsualWidth = 1104;  // the editor's at 100 %
constexpr CCoord kStatusFrom = 900;   // narrower bars have no status

double zoomFor(int width) {
    return std::clamp(std::floor(width / kUsualWidth * 4) / 4, 1.0, 3.0);
}

// "1:05"
std::string clockOf(double seconds) {
    const int whole = static_cast<int>(seconds);
    char text[32];
    std::snprintf(text, sizeof text, "%d:%02d", whole / 60, whole % 60);
    return text;
}

}  // namespace

// A text that can be clicked.
class BarButton : public CView {
  public:
    BarButton(const char* text, std::function<void()> click)
        : CView(CRect()), text_(text), click_(std::move(click)) {}

    void setText(const std::string& text) {
        if (text_ != text) setDirty();
        text_ = text;
    }
    void setEnabled(bool enabled) {
        if (enabled != enabled_) setDirty();
        enabled_ = enabled;
    }

    void draw(CDrawContext* context) override {
        context->setDrawMode(kAntiAliasing);
        context->setFillColor(pressed_ ? kPressedColor : kButtonColor);
        context->drawRoundRect(getViewSize(), 3, kDrawFilled);
        context->setFont(kNormalFontSmall);
        context->setFontColor(enabled_ ? kTextColor : kDisabledColor);
        CRect inner = getViewSize();
        inner.inset(kGap, 0);
        const bool fits = context->getStringWidth(text_.c_str()) <= inner.getWidth();
        context->drawString(text_.c_str(), inner, fits ? kCenterText : kLeftText);
        setDirty(false);
    }
    CMouseEventResult onMouseDown(CPoint&, const CButtonState& buttons) override {
        if (!enabled_ || !buttons.isLeftButton()) return kMouseEventNotHandled;
        return press(true);
    }
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState&) override {
        if (pressed_ && getViewSize().pointInside(where)) click_();
        return press(false);
    }
    CMouseEventResult onMouseCancel() override { return press(false); }

  private:
    CMouseEventResult press(bool down) {
        pressed_ = down;
        setDirty();
        return kMouseEventHandled;
    }

    std::string text_;
    std::function<void()> click_;
    bool enabled_ = true;
    bool pressed_ = false;
};

// The song's time from left to right. A press or a drag asks for another place in it.
class PositionLine : public CView {
  public:
    explicit PositionLine(std::function<void(double)> move)
        : CView(CRect()), move_(std::move(move)) {}

    // A place of 0..1. Negative: there is no song.
    void setPlace(double place) {
        if (std::fabs(place - place_) * getWidth() >= 0.5 || (place < 0) != (place_ < 0)) {
            place_ = place;
            setDirty();
        }
    }

    void draw(CDrawContext* context) override {
        CRect line = getViewSize();
        context->setFillColor(kBackColor);  // the picture behind shows an earlier place
        context->drawRect(line, kDrawFilled);
        line.inset(0, std::floor(line.getHeight() / 2) - 2);
        context->setFillColor(kButtonColor);
        context->drawRect(line, kDrawFilled);
        line.right = line.left + std::round(line.getWidth() * std::max(place_, 0.0));
        context->setFillColor(kPlayedColor);
        context->drawRect(line, kDrawFilled);
        if (place_ >= 0) {
            CRect mark = getViewSize();
            mark.left = std::clamp(line.right - 1, mark.left, mark.right - 3);
            mark.right = mark.left + 3;
            context->drawRect(mark, kDrawFilled);
        }
        setDirty(false);
    }
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override {
        if (place_ < 0 || !buttons.isLeftButton()) return kMouseEventNotHandled;
        return moveTo(where);
    }
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override {
        return buttons.isLeftButton() ? moveTo(where) : kMouseEventNotHandled;
    }

  private:
    CMouseEventResult moveTo(const CPoint& where) {
        move_(std::clamp((where.x - getViewSize().left) / getWidth(), 0.0, 1.0));
        return kMouseEventHandled;
    }

    std::function<void(double)> move_;
    double place_ = -1.0;
};

int ControlBar::heightFor(int width, int room) {
    const double zoom = zoomFor(width);
    return static_cast<int>(std::lround(std::clamp(room / zoom, kLeastHeight, kHeight) * zoom));
}

ControlBar::ControlBar(std::uintptr_t parent, const BarActions& actions, Picture picture)
    : actions_(actions), picture_(std::move(picture)) {
    init(nullptr);
    frame_ = new CFrame(CRect(0, 0, kLeastWidth, kHeight), nullptr);
    frame_->setBackgroundColor(kBackColor);
    const auto later = [this](const std::function<void()>& action) {
        return [this, &action] { pending_.push_back(action); };
    };
    restart_ = addButton("Restart", later(actions.restart));
    play_ = addButton("Play", later(actions.playOrPause));
    line_ = new PositionLine([this](double place) {
        pending_.push_back([this, place] { actions_.moveTo(place * length_); });
    });
    frame_->addView(line_);
    const auto addLabel = [this](CHoriTxtAlign align) {
        auto* const label = new CTextLabel(CRect());
        label->setBackColor(kBackColor);
        label->setFrameColor(kBackColor);
        label->setFontColor(kTextColor);
        label->setFont(kNormalFontSmall);
        label->setHoriAlign(align);
        frame_->addView(label);
        return label;
    };
    time_ = addLabel(kCenterText);
    audio_ = addButton("Audio", [this] { asked_ = audio_; });
    midi_ = addButton("MIDI", [this] { asked_ = midi_; });
    panic_ = addButton("Panic", later(actions.panic));
    status_ = addLabel(kRightText);
    frame_->open(reinterpret_cast<void*>(parent));
}

ControlBar::~ControlBar() {
    frame_->close();
    exit();
}

BarButton* ControlBar::addButton(const char* text, const std::function<void()>& click) {
    auto* const button = new BarButton(text, click);
    frame_->addView(button);
    return button;
}

void ControlBar::setSize(int width, int height) {
    width_ = width;
    height_ = height;
    frame_->setZoom(zoomFor(width));
    frame_->setSize(std::ceil(width / frame_->getZoom()), height / frame_->getZoom());
    layOut();
}

void ControlBar::layOut() {
    constexpr CCoord kTimeWidth = 86;
    constexpr CCoord kStatusWidth = 136;
    constexpr CCoord kTextHeight = 12;
    const CCoord height = frame_->getHeight();
    const CCoord gap = std::clamp(std::floor((height - kTextHeight) / 2), 1.0, kGap);
    CCoord left = kGap;
    CCoord right = frame_->getWidth() - kGap;
    const auto place = [&](CView* view, CCoord from, CCoord width) {
        view->setViewSize(CRect(CPoint(from, gap), CPoint(width, height - 2 * gap)));
        view->setMouseableArea(view->getViewSize());
    };
    const auto atLeft = [&](CView* view, CCoord width) {
        place(view, left, width);
        left += width + kGap;
    };
    const auto atRight = [&](CView* view, CCoord width) {
        right -= width;
        place(view, right, width);
        right -= kGap;
    };
    status_->setVisible(frame_->getWidth() >= kStatusFrom);
    if (status_->isVisible()) atRight(status_, kStatusWidth);
    atRight(panic_, 50);
    atLeft(restart_, 56);
    atLeft(play_, 46);
    const CCoord room = right - left - kTimeWidth;
    atRight(midi_, std::floor(std::min(room * 0.3, 180.0)));
    atRight(audio_, std::floor(std::min(room * 0.35, 220.0)));
    atRight(time_, kTimeWidth);
    atLeft(line_, right - left);
    frame_->invalid();
    turnsLeft_ = kTurnsOfWork;
}

void ControlBar::show(const BarState& state) {
    turnsLeft_ = kTurnsOfWork;
    const bool hasSong = state.length > 0;
    length_ = state.length;
    play_->setText(state.isPlaying ? "Stop" : "Play");
    play_->setEnabled(hasSong);
    restart_->setEnabled(hasSong);
    line_->setPlace(hasSong ? state.position / state.length : -1.0);
    const std::string time = clockOf(state.position) + " / " + clockOf(state.length);
    time_->setText(hasSong ? time.c_str() : "no song");
    audio_->setText(state.audio);
    midi_->setText(state.midi);
    status_->setText(state.status.c_str());
}

// Drawing may receive events without handling them, so a turn with work is followed by another.
void ControlBar::idle() {
    if (cover_ || frame_->hasEvents()) turnsLeft_ = kTurnsOfWork;
    if (turnsLeft_ == 0) return;
    --turnsLeft_;
    frame_->idle();
    if (asked_) openMenu();
    for (const auto& action : std::exchange(pending_, {})) action();
}

void ControlBar::openMenu() {
    BarButton* const button = std::exchange(asked_, nullptr);
    if (cover_) return;
    const auto choices = button == audio_ ? actions_.audioChoices() : actions_.midiChoices();
    const double zoom = frame_->getZoom();
    PixelBuffer pixels = picture_();
    const CPoint size(pixels.width() / zoom, pixels.height() / zoom);
    const auto picture = makeOwned<IPlatformBitmap>(std::move(pixels));
    picture->setScaleFactor(zoom);
    cover_ = new CView(CRect(CPoint(), size));
    cover_->setBackground(makeOwned<CBitmap>(picture));
    frame_->setSize(std::max(size.x, frame_->getWidth()), std::max(size.y, frame_->getHeight()));
    frame_->addView(cover_, frame_->getView(0));

    // As wide as the button at least.
    const CRect area = button->getViewSize();
    const auto menu = makeOwned<COptionMenu>(CRect(CPoint(), area.getSize()), nullptr, -1);
    for (const auto& choice : choices) {
        CMenuItem* const item = menu->addEntry(UTF8String(choice.title));
        item->setChecked(choice.isCurrent);
    }
    const bool isOpen = menu->popup(frame_, CPoint(area.left, area.bottom), [=](COptionMenu* of) {
        pending_.push_back([this] { closeMenu(); });
        const int chosen = of->getLastResult();
        if (chosen >= 0) pending_.push_back(choices[chosen].choose);
    });
    if (!isOpen) closeMenu();
}

void ControlBar::closeMenu() {
    frame_->removeView(cover_);
    cover_ = nullptr;
    setSize(width_, height_);
}

}  // namespace app
