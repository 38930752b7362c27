// What the controls of a skin do beyond the toolkit's own gestures.
#pragma once

#include <functional>
#include <vector>

#include "editor/editor_host.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// A double click sets a knob or slider to its default. The wheel steps through the positions of
// switches, menus and stepped knobs. Return and F2 ask for a typed value.
class ControlGestures : private VSTGUI::IViewEventListener {
  public:
    using TypeValue = std::function<void(VSTGUI::CControl&)>;
    using OtherKey = std::function<void(VSTGUI::KeyboardEvent&)>;

    ControlGestures(const EditorHost& host, TypeValue typeValue, OtherKey otherKey)
        : host_(host), typeValue_(std::move(typeValue)), otherKey_(std::move(otherKey)) {}
    ~ControlGestures() noexcept override { clear(); }
    ControlGestures(const ControlGestures&) = delete;
    ControlGestures& operator=(const ControlGestures&) = delete;

    // Of a view that is no control, only the keys are watched.
    void add(VSTGUI::CView* view);
    // Call before the views leave their frame.
    void clear();
    // True if the value of the control can be typed.
    bool takesTyping(const VSTGUI::CControl& control) const;

  private:
    void viewOnEvent(VSTGUI::CView* view, VSTGUI::Event& event) override;
    void onPress(VSTGUI::CControl& control, VSTGUI::MouseDownEvent& event);
    void onWheel(VSTGUI::CControl& control, VSTGUI::MouseWheelEvent& event);
    void onKey(VSTGUI::CControl& control, VSTGUI::KeyboardEvent& event);
    int wholeNotches(const VSTGUI::CControl& control, double notches);

    const EditorHost& host_;
    TypeValue typeValue_;
    OtherKey otherKey_;
    std::vector<VSTGUI::SharedPointer<VSTGUI::CView>> views_;
    const VSTGUI::CControl* wheeled_ = nullptr;  // only compared
    double wheelRest_ = 0;                       // the part of a notch that has not been used yet
};

}  // namespace editor
