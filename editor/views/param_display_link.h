// Shows the value of one parameter while its tag names another.
#pragma once

#include "editor/editor_host.h"
#include "editor/views/text_display.h"

namespace editor {

// The text shows the linked parameter, but changes only when something marks the view dirty.
class CParamDisplayLink : public CTextDisplay {
  public:
    CParamDisplayLink(const VSTGUI::CRect& size, VSTGUI::CBitmap* background, int style,
                      const EditorHost& host, int linkedParameter)
        : CTextDisplay(size, background, style), host_(host), linked_(linkedParameter) {}

    int linkedParameter() const { return linked_; }

  protected:
    // The index one past the last parameter is allowed. It has no text.
    std::string shownText() const override {
        return host_.isParameter(linked_) ? host_.parameterDisplay(linked_) : std::string();
    }

  private:
    const EditorHost& host_;
    int linked_;
};

}  // namespace editor
