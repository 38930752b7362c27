// A hot area that shows a view over everything until that view is done.
#pragma once

#include "gui/controls/control.h"
#include "gui/views/frame_input.h"

#include <optional>

namespace VSTGUI {

// The shown view closes the splash screen by calling valueChanged() with it as its listener.
class CSplashScreen : public CControl, public IControlListener {
  public:
    // Takes over the reference of the view to show.
    CSplashScreen(const CRect& size, IControlListener* listener, int32_t tag, CView* view);
    // Shows a picture at `toDisplay`, from `offset` of it; a press closes it.
    CSplashScreen(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* picture,
                  const CRect& toDisplay, const CPoint& offset = CPoint());
    ~CSplashScreen() noexcept override;

    // False when it shows already or is in no open frame.
    bool splash();
    void unSplash();

    using CControl::valueChanged;
    void valueChanged(CControl* control) override;

    void draw(CDrawContext* context) override;
    bool hitTest(const CPoint& where, const Event& event = noEvent()) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    bool removed(CView* parent) override;

  private:
    SharedPointer<CView> view_;
    std::optional<ModalViewSessionID> session_;  // while the view shows
};

}  // namespace VSTGUI
