// The outermost view: owns the picture, the window, the timers and the input of one editor.
#pragma once

#include "gui/base/timer.h"
#include "gui/views/editor_interface.h"
#include "gui/views/frame_input.h"
#include "gui/views/frame_surface.h"
#include "gui/views/view_container.h"

#include <functional>
#include <memory>
#include <optional>

namespace VSTGUI {

enum KnobMode : int32_t { kCircularMode = 0, kRelativCircularMode, kLinearMode };

enum class PlatformType : int32_t { kHWND, kX11EmbedWindowID, kDefaultNative = -1 };

class IPlatformFrameConfig {
  public:
    virtual ~IPlatformFrameConfig() noexcept = default;
};

// User-interface thread. A frame lives from `new` to close().
class CFrame final : public CViewContainer {
  public:
    CFrame(const CRect& size, VSTGUIEditorInterface* editor);

    // Makes a child window at (0, 0) of the system's window `parent` and attaches all views. False
    // without a parent, when already open, or when no window can be made.
    bool open(void* parent, PlatformType type = PlatformType::kDefaultNative,
              IPlatformFrameConfig* config = nullptr);
    // Removes all views, destroys the window and releases the frame: forget the pointer.
    void close();
    bool isOpen() const { return open_; }
    // Serves the window and the timers, then redraws what is dirty.
    void idle();

    bool getSize(CRect& size) const;  // of the window, zoom included; only while open
    bool setSize(CCoord width, CCoord height);
    // Scales all drawing and the pointer's positions, from 1 to 3.
    bool setZoom(double zoom);
    double getZoom() const { return surface_.zoom(); }

    int32_t getKnobMode() const;
    static int32_t kDefaultKnobMode;
    void beginEdit(int32_t tag);
    void endEdit(int32_t tag);

    CView* getFocusView() const { return input_.focusView(); }
    bool setFocusView(CView* view);  // null takes the focus away
    bool getCurrentMouseLocation(CPoint& where) const;
    CButtonState getCurrentMouseButtons() const { return input_.buttons(); }
    void registerMouseObserver(IMouseObserver* observer) { input_.addObserver(observer); }
    void unregisterMouseObserver(IMouseObserver* observer) { input_.removeObserver(observer); }

    // The view gets every mouse and key event until the session ends; it must not be attached yet,
    // and its reference is taken over. No number: there is no session and nothing was taken.
    std::optional<ModalViewSessionID> beginModalViewSession(CView* view);
    bool endModalViewSession(ModalViewSessionID session) { return input_.endModal(session); }
    CView* getModalView() const { return input_.modalView(); }

    // Delivers an event that did not come through the window; positions are unzoomed.
    void dispatchEvent(Event& event) { input_.deliver(event); }

    // Runs the function when the event that is handled now is done; false outside one.
    bool doAfterEventProcessing(std::function<void()>&& function);

    void invalid() override;
    void invalidRect(const CRect& rect) override;
    CPoint& localToFrame(CPoint& point) const override { return point; }
    CPoint& frameToLocal(CPoint& point) const override { return point; }

    // What follows is this layer's own.
    FrameInput& input() { return input_; }
    const FrameSurface& surface() const { return surface_; }
    void redraw();
    void showAgain(const IntRect& area);  // after the window was covered
    void takeKeyboard();
    void serveTimersOfThisFrame() { timers_.makeCurrent(); }
    void addIdleView(CView* view) { idleViews_.push_back(view); }
    void removeIdleView(CView* view);
    void forgetView(CView* view);

  private:
    ~CFrame() noexcept override = default;
    void callIdleViews();
    void fitWindow();

    VSTGUIEditorInterface* editor_;
    FrameSurface surface_;
    FrameInput input_;
    TimerQueue timers_;
    SharedPointer<CVSTGUITimer> idleTimer_;
    std::vector<CView*> idleViews_;
    std::unique_ptr<NativeWindow> window_;  // null while headless
    bool open_ = false;
    bool closing_ = false;
    bool serving_ = false;
    bool drawing_ = false;
};

}  // namespace VSTGUI
