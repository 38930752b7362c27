// The base of the editor, as a plug-in drives it. It owns the frame of the view library.
#pragma once

#include <cstdint>
#include <optional>

#include "editor/editor_host.h"
#include "editor/toolkit.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// The editor's size as reported to the host, in window pixels.
struct EditorRect {
    std::int16_t top = 0;
    std::int16_t left = 0;
    std::int16_t bottom = 0;
    std::int16_t right = 0;
};

// Call everything on the user-interface thread.
class AEffGUIEditor : public VSTGUI::VSTGUIEditorInterface {
  public:
    explicit AEffGUIEditor(EditorHost& host) : host_(host) {}
    ~AEffGUIEditor() noexcept override;
    AEffGUIEditor(const AEffGUIEditor&) = delete;
    AEffGUIEditor& operator=(const AEffGUIEditor&) = delete;

    // The current size or, while closed, the size that opening will give.
    virtual EditorRect getRect() { return rect_; }
    // Returns false and stays closed when nothing can be shown in the parent window.
    virtual bool open(void* parentWindow) = 0;
    virtual void close();
    bool isOpen() const { return frame != nullptr; }
    virtual void idle();
    // True while a text field or a menu receives the keys.
    bool wantsKeys() const;
    // True while letters are expected, as in a text field.
    virtual bool wantsText() const;

    // Handles a key that the host passes on. Returns true if the editor used it.
    bool onKey(VSTGUI::KeyboardEvent& event);

    void setKnobMode(int mode) { knobMode_ = mode; }
    std::int32_t getKnobMode() const override { return knobMode_; }
    void beginEdit(std::int32_t tag) override;
    void endEdit(std::int32_t tag) override;

  protected:
    // Creates and opens the frame. The size is that at 100 percent.
    bool openFrame(int width, int height, double zoom, void* parentWindow);
    void setRect(double width, double height);

    EditorHost& host_;

  private:
    EditorRect rect_;
    std::int32_t knobMode_ = VSTGUI::kLinearMode;  // until the host says
    std::optional<Toolkit> toolkit_;               // set while there is a frame
};

}  // namespace editor
