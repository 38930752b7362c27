// A clickable area that shows a view over everything until that view closes.
#include "gui/controls/splash_screen.h"
#include "gui/views/frame.h"

#include <utility>

namespace VSTGUI {
namespace {

// A picture that closes at the first press.
class SplashPicture : public CControl {
  public:
    SplashPicture(const CRect& size, IControlListener* listener, CBitmap* picture,
                  const CPoint& offset)
        : CControl(size, listener, 0, picture), offset_(offset) {}

    void draw(CDrawContext* context) override {
        if (CBitmap* const picture = getDrawBackground())
            picture->draw(context, getViewSize(), offset_);
        setDirty(false);
    }

    CMouseEventResult onMouseDown(CPoint&, const CButtonState&) override {
        valueChanged();
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    }

  private:
    CPoint offset_;
};

}  // namespace

CSplashScreen::CSplashScreen(const CRect& size, IControlListener* listener, int32_t tag,
                             CView* view)
    : CControl(size, listener, tag), view_(owned(view)) {}

CSplashScreen::CSplashScreen(const CRect& size, IControlListener* listener, int32_t tag,
                             CBitmap* picture, const CRect& toDisplay, const CPoint& offset)
    : CSplashScreen(size, listener, tag, new SplashPicture(toDisplay, this, picture, offset)) {}

CSplashScreen::~CSplashScreen() noexcept {
    // The view may outlive this object.
    auto* const control = dynamic_cast<CControl*>(view_.get());
    if (control && control->getListener() == this) control->setListener(nullptr);
}

bool CSplashScreen::splash() {
    if (session_ || !view_ || !getFrame()) return false;
    view_->remember();
    session_ = getFrame()->beginModalViewSession(view_);
    if (!session_) view_->forget();
    return session_.has_value();
}

void CSplashScreen::unSplash() {
    const auto session = std::exchange(session_, std::nullopt);
    if (!session) return;
    setValue(getMin());
    getFrame()->endModalViewSession(*session);
}

void CSplashScreen::valueChanged(CControl* control) {
    if (control != view_.get() || !session_) return;
    unSplash();
    CControl::valueChanged();
}

void CSplashScreen::draw(CDrawContext*) {
    setDirty(false);
}

bool CSplashScreen::hitTest(const CPoint& where, const Event& event) {
    const bool otherButton = event.type == EventType::MouseDown &&
                             !static_cast<const MouseDownEvent&>(event).buttonState.isLeft();
    return !otherButton && CControl::hitTest(where, event);
}

CMouseEventResult CSplashScreen::onMouseDown(CPoint&, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    if (splash()) {
        setValue(getMax());
        CControl::valueChanged();
    }
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

bool CSplashScreen::removed(CView* parent) {
    unSplash();
    return CControl::removed(parent);
}

}  // namespace VSTGUI
