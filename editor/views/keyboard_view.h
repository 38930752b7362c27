// A keyboard that shows the held keys and the split, and plays.
#pragma once

#include <bitset>

#include "editor/editor_host.h"
#include "editor/views/key_layout.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// A press plays the key under the pointer, and a drag glides over the keys. With the keyboard
// focus, the arrows choose a key and Return plays it. At most one key is played at a time; it ends
// when the pointer leaves, the focus goes or the editor closes.
class CKeyboardView : public VSTGUI::CView {
  public:
    CKeyboardView(const VSTGUI::CRect& size, EditorHost& host, int first, int last);

    void setKeyColor(const VSTGUI::CColor& color) { keyColor_ = color; }
    void setSharpColor(const VSTGUI::CColor& color) { sharpColor_ = color; }
    void setFontColor(const VSTGUI::CColor& color) { heldColor_ = color; }
    void setBackColor(const VSTGUI::CColor& color) { bassColor_ = color; }
    void setFrameColor(const VSTGUI::CColor& color) { gapColor_ = color; }

    void draw(VSTGUI::CDrawContext* context) override;
    void drawRect(VSTGUI::CDrawContext* context, const VSTGUI::CRect& updateRect) override;
    void onIdle() override;
    bool removed(VSTGUI::CView* parent) override;
    void takeFocus() override;
    void looseFocus() override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where,
                                        const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseCancel() override;
    VSTGUI::CMouseEventResult onMouseExited(VSTGUI::CPoint& where,
                                            const VSTGUI::CButtonState& buttons) override;
    void onKeyboardEvent(VSTGUI::KeyboardEvent& event) override;

  private:
    // What is drawn. It never changes while drawing: one draw() may cover only a part.
    struct Shown {
        std::bitset<128> held;
        int split = 0;
        bool basses = false;
        int hovered = KeyLayout::kNoKey;
        int chosen = KeyLayout::kNoKey;  // by the keyboard
    };

    void play(int key, int velocity);  // kNoKey only ends the one that sounds
    void follow(const VSTGUI::CPoint& where);
    void hover(int key);
    void choose(int key);
    void redraw(int key);
    int split() const;
    bool basses() const;
    void drawKey(VSTGUI::CDrawContext& context, int key) const;
    void drawFelt(VSTGUI::CDrawContext& context) const;

    EditorHost& host_;
    KeyLayout layout_;
    VSTGUI::CColor keyColor_{243, 237, 222};
    VSTGUI::CColor sharpColor_{30, 26, 24};
    VSTGUI::CColor heldColor_{240, 150, 50};
    VSTGUI::CColor bassColor_{150, 60, 40};
    VSTGUI::CColor gapColor_{60, 50, 44};
    int played_ = KeyLayout::kNoKey;
    int chosen_;  // where the arrows begin
    Shown shown_;
};

}  // namespace editor
