// The editor as the plug-in drives it: owns a frame of the view library.
#pragma once

#include <cstdint>
#include <optional>

#include "editor/editor_host.h"
#include "editor/toolkit.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// What is reported to the host, in pixels of the window.
struct EditorRect {
    std::int16_t top = 0;
    std::int16_t left = 0;
    std::int16_t bottom = 0;
    std::int16_t right = 0;
};

// User-interface thread, unless said otherwise.
class AEffGUIEditor : public VSTGUI::VSTGUIEditorInterface {
  public:
    explicit AEffGUIEditor(EditorHost& host) : host_(host) {}
    ~AEffGUIEditor() noexcept override;
    AEffGUIEditor(const AEffGUIEditor&) = delete;
    AEffGUIEditor& operator=(const AEffGUIEditor&) = delete;

    // The size it has, or will have when it is opened.
    virtual EditorRect getRect() { return rect_; }
    // False when nothing can be shown in the parent window; the editor is then closed.
    virtual bool open(void* parentWindow) = 0;
    virtual void close();
    bool isOpen() const { return frame != nullptr; }
    virtual void idle();
    // Whether keys are being typed into a text field or a menu.
    bool wantsKeys() const;

    // A key that the host passes on; true when something in the editor used it.
    bool onKey(VSTGUI::KeyboardEvent& event);

    void setKnobMode(int mode) { knobMode_ = mode; }
    std::int32_t getKnobMode() const override { return knobMode_; }
    void beginEdit(std::int32_t tag) override;
    void endEdit(std::int32_t tag) override;

  protected:
    // Makes the frame, of that size at 100 percent, and opens it.
    bool openFrame(int width, int height, double zoom, void* parentWindow);
    void setRect(double width, double height);

    EditorHost& host_;

  private:
    EditorRect rect_;
    std::int32_t knobMode_ = VSTGUI::kCircularMode;
    std::optional<Toolkit> toolkit_;  // while there is a frame
};

}  // namespace editor
