// The sound browser over the whole editor.
#pragma once

#include <functional>

#include "editor/browser/browser_layout.h"
#include "editor/browser/sound_browser.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

struct BrowserColors {
    VSTGUI::CColor back = VSTGUI::kBlackCColor;
    VSTGUI::CColor text = VSTGUI::kWhiteCColor;
    VSTGUI::CColor accent = VSTGUI::kWhiteCColor;
};

// Sets the small font in the largest size in which the text fits. Returns false if not even the
// least size does.
bool setFontToFit(VSTGUI::CDrawContext& context, const std::string& text, VSTGUI::CCoord width);

// Show it as the modal view of the frame. `done` asks to close it; `otherKey` gets the keys that it
// does not use.
class CBrowserView : public VSTGUI::CView {
  public:
    using OnKey = std::function<void(VSTGUI::KeyboardEvent&)>;

    CBrowserView(const VSTGUI::CPoint& frame, SoundBrowser& browser, const BrowserColors& colors,
                 std::function<void()> done, OnKey otherKey);

    const SoundBrowser& browser() const { return browser_; }
    BrowserLayout layout() const { return {getViewSize().getSize(), browser_}; }

    void draw(VSTGUI::CDrawContext* context) override;
    void onIdle() override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseExited(VSTGUI::CPoint& where,
                                            const VSTGUI::CButtonState& buttons) override;
    void onMouseWheelEvent(VSTGUI::MouseWheelEvent& event) override;
    void onKeyboardEvent(VSTGUI::KeyboardEvent& event) override;

  private:
    // What lies under a point.
    struct Place {
        enum Kind { kOutside, kNothing, kTab, kButton, kItem, kHeart, kSearch, kClose };
        Kind kind = kNothing;
        int index = 0;
        bool operator==(const Place& other) const {
            return kind == other.kind && index == other.index;
        }
    };

    Place placeAt(const VSTGUI::CPoint& where) const;
    void press(const Place& place, bool twice);
    bool useKey(const VSTGUI::KeyboardEvent& event);
    bool useCommand(char32_t letter, bool shift);
    void walk(Walk step);
    void finish();
    void showSelected();
    void changed();

    void drawHeader(VSTGUI::CDrawContext& context, const BrowserLayout& layout) const;
    void drawSearch(VSTGUI::CDrawContext& context, const BrowserLayout& layout) const;
    void drawGrid(VSTGUI::CDrawContext& context, const BrowserLayout& layout) const;
    void drawColumn(VSTGUI::CDrawContext& context, const BrowserLayout& layout, int number) const;
    void drawItem(VSTGUI::CDrawContext& context, const VSTGUI::CRect& row, int index) const;
    void drawFooter(VSTGUI::CDrawContext& context, const BrowserLayout& layout) const;
    void drawButtons(VSTGUI::CDrawContext& context, const BrowserLayout& layout) const;
    VSTGUI::CColor mixed(double text) const;  // 0 is the ground, 1 the colour of texts

    SoundBrowser& browser_;
    const BrowserColors colors_;
    const std::function<void()> done_;
    const OnKey otherKey_;
    VSTGUI::CPoint pointer_;
    Place hovered_;  // by the pointer
    VSTGUI::CCoord scrolled_ = 0;
};

}  // namespace editor
