// A view that holds other views, draws them in order and passes mouse events to them.
#pragma once

#include "gui/graphics/pixel_buffer.h"
#include "gui/views/view.h"

#include <functional>
#include <vector>

namespace VSTGUI {

// Options of a search for the view at a point. Setters return the options for chaining.
class GetViewOptions {
  public:
    GetViewOptions& deep(bool on = true) { return set(deep_, on); }
    GetViewOptions& mouseEnabled(bool on = true) { return set(mouseEnabled_, on); }
    GetViewOptions& includeViewContainer(bool on = true) { return set(containers_, on); }
    GetViewOptions& includeInvisible(bool on = true) { return set(invisible_, on); }

    bool getDeep() const { return deep_; }
    bool getMouseEnabled() const { return mouseEnabled_; }
    bool getIncludeViewContainer() const { return containers_; }
    bool getIncludeInvisible() const { return invisible_; }

  private:
    GetViewOptions& set(bool& option, bool on) {
        option = on;
        return *this;
    }
    bool deep_ = false;
    bool mouseEnabled_ = false;
    bool containers_ = false;
    bool invisible_ = false;
};

// Positions of children are relative to the container's top-left corner.
class CViewContainer : public CView {
  public:
    explicit CViewContainer(const CRect& size) : CView(size) {}
    ~CViewContainer() noexcept override = default;

    // Takes over the caller's reference. The new view lies just below `before`, or on top if that
    // is null.
    virtual bool addView(CView* view, CView* before = nullptr);
    virtual bool removeView(CView* view, bool withForget = true);
    virtual bool removeAll(bool withForget = true);

    uint32_t getNbViews() const { return static_cast<uint32_t>(children_.size()); }
    CView* getView(uint32_t index) const;  // null if out of range
    void forEachChild(const std::function<void(CView*)>& visit) const;
    bool isChild(CView* view) const { return isChild(view, false); }
    bool isChild(CView* view, bool deep) const;
    // The topmost view at a point in the parent's coordinates. Includes containers only if the
    // options say so.
    CView* getViewAt(const CPoint& where, const GetViewOptions& options = {}) const;

    virtual void setBackgroundColor(const CColor& color);
    CColor getBackgroundColor() const { return backgroundColor_; }

    void draw(CDrawContext* context) override;
    void drawRect(CDrawContext* context, const CRect& updateRect) override;
    void invalidRect(const CRect& rect) override;
    bool attached(CView* parent) override;
    bool removed(CView* parent) override;
    CPoint& localToFrame(CPoint& point) const override;
    CPoint& frameToLocal(CPoint& point) const override;

    void onMouseDownEvent(MouseDownEvent& event) override;
    void onMouseMoveEvent(MouseMoveEvent& event) override;
    void onMouseUpEvent(MouseUpEvent& event) override;
    void onMouseCancelEvent(MouseCancelEvent& event) override;
    void onMouseWheelEvent(MouseWheelEvent& event) override;

  protected:
    virtual void drawBackground(CDrawContext& context, CBitmap& picture);
    void invalidateIfDirty() override;
    void childMoved() override { places_.clear(); }
    void collectMouseViewsAt(const CPoint& where, std::vector<CView*>& found) override;

  private:
    bool takesMouse(CView* child, const MousePositionEvent& event) const;
    bool offerToChildren(MousePositionEvent& event, CView** taker = nullptr);
    CPoint toChildren(const CPoint& where) const { return where - getViewSize().getTopLeft(); }

    void notePlaces();

    std::vector<SharedPointer<CView>> children_;
    // Whole pixels around each child. Drawing a small area reads this instead of every child.
    // Noted anew if there are none.
    std::vector<IntRect> places_;
    SharedPointer<CView> pressed_;  // the only child to receive moves and the release
    CColor backgroundColor_ = kBlackCColor;
};

}  // namespace VSTGUI
