// Shows the note that is played.
#pragma once

#include <string>

#include "editor/editor_host.h"
#include "editor/views/seldom.h"
#include "vstgui/vstgui.h"

namespace editor {

// The text for `heldNotes` held notes: "OFF" for none, "Chord" for several, and for one the name
// and octave of `key`, such as "C 3" for 60.
std::string noteText(int heldNotes, int key);

class CNoteDisplay : public VSTGUI::CView {
  public:
    CNoteDisplay(const VSTGUI::CRect& size, const EditorHost& host);

    void setFontColor(const VSTGUI::CColor& color) { fontColor_ = color; }
    void setBackColor(const VSTGUI::CColor& color) { backColor_ = color; }

    void draw(VSTGUI::CDrawContext* context) override;
    void onIdle() override;

  private:
    const EditorHost& host_;
    VSTGUI::CColor fontColor_ = VSTGUI::kWhiteCColor;
    VSTGUI::CColor backColor_ = VSTGUI::kBlackCColor;
    std::string shown_;  // never changes while drawing: one draw() may cover only a part
    Seldom looks_;
};

}  // namespace editor
