// An open menu. It is a modal view in the frame, and scrolls if the frame is too small for it.
#pragma once

#include "gui/controls/option_menu.h"
#include "gui/views/view.h"

#include <functional>

namespace VSTGUI {

// Works on the entries of its menu, which must stay alive until `closed` has run.
class MenuView : public CView {
  public:
    // Receives the chosen index, or -1.
    using Closed = std::function<void(int32_t)>;

    // `around` is the area of the control that opens the menu, or a point, in frame pixels.
    MenuView(COptionMenu& menu, const CPoint& frameSize, const CRect& around, const Closed& closed);

    void setSession(ModalViewSessionID session) { session_ = session; }
    // Drops the callback: closing then notifies nobody.
    void abandon() { closed_ = nullptr; }

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    void onMouseWheelEvent(MouseWheelEvent& event) override;
    void onKeyboardEvent(KeyboardEvent& event) override;
    void onIdle() override;
    bool attached(CView* parent) override;
    bool removed(CView* parent) override;

  private:
    void drawRow(CDrawContext* context, int32_t index, const CRect& row) const;
    void drawScrollBar(CDrawContext* context) const;
    bool isUsable(int32_t index) const;
    bool scrolls() const { return visibleRows_ < menu_.getNbEntries(); }
    CCoord topOf(int32_t index) const;  // below the first visible row; from that to the last + 1
    int32_t entryAt(const CPoint& where) const;  // -1 if there is none
    void scrollTo(int32_t firstRow);
    void highlight(int32_t index);
    void step(int32_t from, int32_t by);
    void jumpTo(char32_t letter);
    void finish(int32_t chosen);

    COptionMenu& menu_;
    Closed closed_;
    ModalViewSessionID session_ = 0;
    CCoord rowHeight_;
    int32_t visibleRows_ = 0;
    int32_t firstRow_ = 0;
    int32_t highlighted_ = -1;
    CPoint pointer_;
    CPoint pointerAtOpening_;
    bool releaseChooses_ = false;  // false for the release of the press that opened the menu
};

}  // namespace VSTGUI
