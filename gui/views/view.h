// A view: a rectangle that draws itself and handles the mouse, the wheel and keys.
#pragma once

#include "gui/base/button_state.h"
#include "gui/base/events.h"
#include "gui/base/geometry.h"
#include "gui/base/reference.h"
#include "gui/graphics/bitmap.h"
#include "gui/graphics/draw_context.h"

#include <optional>
#include <vector>

namespace VSTGUI {

class CFrame;
class CView;

// Sees every event of a view before the view does. Unregister it before the view is destroyed.
class IViewEventListener {
  public:
    virtual ~IViewEventListener() noexcept = default;
    virtual void viewOnEvent(CView* view, Event& event) = 0;
};

// All positions are relative to the parent's top-left corner, in drawing and in mouse methods.
class CView : public CBaseObject {
  public:
    explicit CView(const CRect& size) : size_(size) {}

    // Draws the background. An override must end with setDirty(false).
    virtual void draw(CDrawContext* context);
    virtual void drawRect(CDrawContext* context, const CRect& updateRect);

    const CRect& getViewSize() const { return size_; }
    virtual void setViewSize(const CRect& size, bool invalid = true);
    CCoord getWidth() const { return size_.getWidth(); }
    CCoord getHeight() const { return size_.getHeight(); }
    CRect getMouseableArea() const { return mouseableArea_.value_or(size_); }
    virtual void setMouseableArea(const CRect& area) { mouseableArea_ = area; }
    virtual bool hitTest(const CPoint& where, const Event& event = noEvent());

    virtual void setMouseEnabled(bool enabled = true) { mouseEnabled_ = enabled; }
    bool getMouseEnabled() const { return mouseEnabled_; }
    // A transparent view passes events that it does not handle to the views below.
    virtual void setTransparency(bool transparent);
    bool getTransparency() const { return transparent_; }
    virtual void setBackground(CBitmap* background);
    CBitmap* getBackground() const { return background_; }
    CBitmap* getDrawBackground() const { return background_; }
    virtual void setVisible(bool visible);
    bool isVisible() const { return visible_ && alpha_ > 0; }
    virtual void setAlphaValue(float alpha);
    float getAlphaValue() const { return alpha_; }

    // The next idle redraws dirty views. invalid() requests a redraw at once and clears the mark.
    virtual void setDirty(bool dirty = true);
    virtual bool isDirty() const { return dirty_; }
    virtual void invalid();
    virtual void invalidRect(const CRect& rect);

    // Returns null unless the view is part of an open frame.
    CFrame* getFrame() const { return frame_; }
    CView* getParentView() const { return parent_; }
    bool isAttached() const { return frame_ != nullptr; }
    virtual bool attached(CView* parent);
    virtual bool removed(CView* parent);

    virtual void setWantsFocus(bool wanted) { wantsFocus_ = wanted; }
    virtual bool wantsFocus() const { return wantsFocus_; }
    // Called when the view gains and loses the keyboard focus.
    virtual void takeFocus() {}
    virtual void looseFocus() {}

    virtual void setWantsIdle(bool wanted);
    bool wantsIdle() const { return wantsIdle_; }
    virtual void onIdle() {}  // 30 times a second while attached

    virtual CPoint& localToFrame(CPoint& point) const;
    virtual CPoint& frameToLocal(CPoint& point) const;

    void registerViewEventListener(IViewEventListener* listener);
    void unregisterViewEventListener(IViewEventListener* listener);
    // Sends the event to the listeners, latest first, and then to the view.
    void dispatchEvent(Event& event);

    virtual CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons);
    virtual CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons);
    virtual CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons);
    virtual CMouseEventResult onMouseCancel();
    virtual CMouseEventResult onMouseEntered(CPoint& where, const CButtonState& buttons);
    virtual CMouseEventResult onMouseExited(CPoint& where, const CButtonState& buttons);

    // The defaults call the methods above.
    virtual void onMouseDownEvent(MouseDownEvent& event);
    virtual void onMouseMoveEvent(MouseMoveEvent& event);
    virtual void onMouseUpEvent(MouseUpEvent& event);
    virtual void onMouseCancelEvent(MouseCancelEvent& event);
    virtual void onMouseEnterEvent(MouseEnterEvent& event);
    virtual void onMouseExitEvent(MouseExitEvent& event);
    virtual void onMouseWheelEvent(MouseWheelEvent&) {}
    virtual void onKeyboardEvent(KeyboardEvent&) {}

  protected:
    // The rest is specific to this layer.
    friend class FrameInput;
    friend class CViewContainer;
    friend class CFrame;

    // Called first for a press with a modifier key. Return true to swallow the press.
    virtual bool swallowsModifiedPress(const CButtonState&) { return false; }
    // True for a view that edits text: it gives up the focus on a press elsewhere.
    virtual bool losesFocusOnOutsidePress() const { return false; }
    virtual void invalidateIfDirty();
    // Call this after whatever may make isDirty() true.
    void mayBeDirty();
    // A child has another place.
    virtual void childMoved() {}
    // Collects this view and those below it that take the mouse at a point of the parent, outermost
    // first.
    virtual void collectMouseViewsAt(const CPoint& where, std::vector<CView*>& found);

    CFrame* frame_ = nullptr;

  private:
    CRect size_;
    std::optional<CRect> mouseableArea_;  // the view size unless set
    CView* parent_ = nullptr;
    SharedPointer<CBitmap> background_;
    std::vector<IViewEventListener*> listeners_;
    float alpha_ = 1;
    bool visible_ = true;
    bool mouseEnabled_ = true;
    bool transparent_ = false;
    bool dirty_ = false;
    bool wantsFocus_ = false;
    bool wantsIdle_ = false;
};

}  // namespace VSTGUI
