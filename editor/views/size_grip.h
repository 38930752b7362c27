// The corner by which a player drags the editor to another size.
#pragma once

#include <functional>
#include <utility>

#include "vstgui/vstgui.h"

namespace editor {

class CSizeGrip : public VSTGUI::CView {
  public:
    // Gets where the lower right corner of the frame is dragged to, in the frame's coordinates.
    using Dragged = std::function<void(const VSTGUI::CPoint& corner)>;

    CSizeGrip(const VSTGUI::CRect& size, Dragged dragged)
        : CView(size), dragged_(std::move(dragged)) {}

    void setFontColor(const VSTGUI::CColor& color) { color_ = color; }

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where,
                                        const VSTGUI::CButtonState& buttons) override;

  private:
    Dragged dragged_;
    VSTGUI::CColor color_ = VSTGUI::kGreyCColor;
    VSTGUI::CPoint toCorner_;  // from the pointer, when it was pressed
};

}  // namespace editor
