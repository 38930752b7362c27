// The outermost view. It owns the picture, the window, the timers and the input of one editor.
#pragma once

#include "gui/base/timer.h"
#include "gui/views/editor_interface.h"
#include "gui/views/frame_input.h"
#include "gui/views/frame_surface.h"
#include "gui/views/kept_background.h"
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

// Use on the user-interface thread only. Create a frame with `new`; close() releases it.
class CFrame final : public CViewContainer {
  public:
    CFrame(const CRect& size, VSTGUIEditorInterface* editor);

    // Creates a child window at (0, 0) of the system window `parent` and attaches all views.
    // Returns false without a parent, if already open, or if the window cannot be created.
    bool open(void* parent, PlatformType type = PlatformType::kDefaultNative,
              IPlatformFrameConfig* config = nullptr);
    // Removes all views, destroys the window and releases the frame. Do not use the pointer again.
    void close();
    bool isOpen() const { return open_; }
    // Serves the window and the timers, then redraws dirty areas.
    void idle();

    bool getSize(CRect& size) const;  // the window's size, with zoom; false while closed
    bool setSize(CCoord width, CCoord height);
    // Scales all drawing and pointer positions. The range is 1..3.
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

    // Gives the view every mouse and key event until the session ends. The view must not be
    // attached yet. Takes over the caller's reference, or returns nothing and takes nothing if it
    // fails.
    std::optional<ModalViewSessionID> beginModalViewSession(CView* view);
    bool endModalViewSession(ModalViewSessionID session) { return input_.endModal(session); }
    CView* getModalView() const { return input_.modalView(); }

    // Delivers an event that did not come through the window. Positions are unzoomed.
    void dispatchEvent(Event& event) { input_.deliver(event); }

    // Runs the function after the current event. Returns false if there is none.
    bool doAfterEventProcessing(std::function<void()>&& function);

    void setBackground(CBitmap* background) override;
    void invalid() override;
    void invalidRect(const CRect& rect) override;
    CPoint& localToFrame(CPoint& point) const override { return point; }
    CPoint& frameToLocal(CPoint& point) const override { return point; }

    // The rest is specific to this layer.
    FrameInput& input() { return input_; }
    const FrameSurface& surface() const { return surface_; }
    PixelBuffer takePicture() { return surface_.takePicture(); }
    void redraw();
    // Whether idle() may find an event of the window.
    bool hasEvents() const { return !window_ || window_->hasReports(); }
    void expectDirtyViews() { mayHaveDirtyViews_ = true; }
    void showAgain(const IntRect& area);  // for a window that was covered
    void takeKeyboard();
    // Hides the pointer until the drag in progress ends. It comes back where it is now.
    void hidePointer();
    void showPointer();
    void serveTimersOfThisFrame() { timers_.makeCurrent(); }
    void addIdleView(CView* view) { idleViews_.push_back(view); }
    void removeIdleView(CView* view);
    void forgetView(CView* view);

  private:
    ~CFrame() noexcept override = default;
    void callIdleViews();
    void fitWindow();
    bool isCoveredByBackground() const;
    void preparePictures() const;
    void drawBackground(CDrawContext& context, CBitmap& picture) override;

    VSTGUIEditorInterface* editor_;
    FrameSurface surface_;
    KeptBackground keptBackground_;
    FrameInput input_;
    TimerQueue timers_;
    SharedPointer<CVSTGUITimer> idleTimer_;
    std::vector<CView*> idleViews_;
    CView* calledView_ = nullptr;           // the one that is idle now
    std::unique_ptr<NativeWindow> window_;  // null if headless
    bool open_ = false;
    bool closing_ = false;
    bool serving_ = false;
    bool drawing_ = false;
    bool isCovered_ = false;  // by the background, while drawing
    bool mayHaveDirtyViews_ = true;
    bool isPrepared_ = false;  // the pictures have been unpacked for this zoom
};

}  // namespace VSTGUI
