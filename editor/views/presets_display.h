// Shows the current program, and lists, steps through and renames the programs.
#pragma once

#include <functional>
#include <string>

#include "editor/browser/browser_view.h"
#include "editor/editor_host.h"
#include "editor/views/pop_up_field.h"
#include "editor/views/seldom.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// A click opens the sound browser. A double click renames the current one in place. The
// arrows at both ends and the wheel step to the next or previous program.
class CPresetsDisplay : public VSTGUI::CView, public VSTGUI::IControlListener {
  public:
    // Longest program name in bytes.
    static constexpr std::size_t kLongestName = 23;

    // `browse` opens the sound browser. Where it returns false, a menu opens instead.
    CPresetsDisplay(const VSTGUI::CRect& size, EditorHost& host, std::function<bool()> browse);

    void setFontColor(const VSTGUI::CColor& color);
    void setBackColor(const VSTGUI::CColor& color);
    BrowserColors browserColors() const { return {backColor_, fontColor_, fontColor_}; }
    // The field that shows while a name is typed. Add it to the same frame, above this view.
    VSTGUI::CTextEdit* nameField() const { return nameField_; }

    void draw(VSTGUI::CDrawContext* context) override;
    void onIdle() override;
    bool removed(VSTGUI::CView* parent) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    void onMouseWheelEvent(VSTGUI::MouseWheelEvent& event) override;
    void onKeyboardEvent(VSTGUI::KeyboardEvent& event) override;
    void valueChanged(VSTGUI::CControl* control) override;

  private:
    std::string line(int program) const;
    VSTGUI::CRect textArea() const;
    void showProgram();
    void step(int by);
    void openList();
    void rename();

    EditorHost& host_;
    const std::function<bool()> browse_;
    VSTGUI::CColor fontColor_ = VSTGUI::kWhiteCColor;
    VSTGUI::CColor backColor_ = VSTGUI::kBlackCColor;
    int named_ = 0;      // the program whose name is being typed
    std::string shown_;  // never changes while drawing: one draw() may cover only a part
    Seldom looks_;
    double wheelRest_ = 0;  // the part of a notch that has not been used yet
    VSTGUI::SharedPointer<CPopUpField> nameField_;
    // Runs after a click until a second click can no longer follow.
    VSTGUI::SharedPointer<VSTGUI::CVSTGUITimer> clickTimer_;
};

}  // namespace editor
