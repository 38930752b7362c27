// Shows the value of one parameter while its tag names another.
#pragma once

#include "editor/editor_host.h"
#include "editor/parameter_line.h"
#include "editor/views/text_display.h"

namespace editor {

// The text shows the linked parameter, but changes only when something marks the view dirty.
class CParamDisplayLink : public CTextDisplay {
  public:
    CParamDisplayLink(const VSTGUI::CRect& size, VSTGUI::CBitmap* background, int style,
                      const EditorHost& host, int linkedParameter)
        : CTextDisplay(size, background, style), host_(host), linked_(linkedParameter) {}

    void setShowsUnits(bool units) { showsUnits_ = units; }
    int linkedParameter() const { return linked_; }

  protected:
    // The index one past the last parameter is allowed. It has no text.
    std::string shownText() const override {
        if (!host_.isParameter(linked_)) return {};
        return showsUnits_ ? shortValueWithUnit(host_, linked_) : host_.parameterDisplay(linked_);
    }

  private:
    const EditorHost& host_;
    int linked_;
    bool showsUnits_ = false;
};

}  // namespace editor
