// Receives the keys that no control wants.
#pragma once

#include <functional>
#include <utility>

#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// Has no size. Give it the focus while nothing else has it.
class CKeyView : public VSTGUI::CView {
  public:
    using OnKey = std::function<void(VSTGUI::KeyboardEvent&)>;

    explicit CKeyView(OnKey onKey) : CView(VSTGUI::CRect()), onKey_(std::move(onKey)) {
        setMouseEnabled(false);
        setWantsFocus(true);
    }

    void draw(VSTGUI::CDrawContext*) override { setDirty(false); }
    void onKeyboardEvent(VSTGUI::KeyboardEvent& event) override { onKey_(event); }

  private:
    OnKey onKey_;
};

}  // namespace editor
