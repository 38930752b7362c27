// A clickable area that shows a view over everything until that view closes.
#pragma once

#include "gui/controls/control.h"
#include "gui/views/frame_input.h"

#include <optional>

namespace VSTGUI {

// The splash screen is the listener of the view that it shows. The view closes it by calling
// valueChanged().
class CSplashScreen : public CControl, public IControlListener {
  public:
    // Takes over the caller's reference to the view.
    CSplashScreen(const CRect& size, IControlListener* listener, int32_t tag, CView* view);
    // Shows a picture, from its point `offset`, at `toDisplay`. A press closes it.
    CSplashScreen(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* picture,
                  const CRect& toDisplay, const CPoint& offset = CPoint());
    ~CSplashScreen() noexcept override;

    // Returns false if the view is already shown or no frame is open.
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
    std::optional<ModalViewSessionID> session_;  // set while the view is shown
};

}  // namespace VSTGUI
