// The input of one frame. It sends presses, moves, the wheel and keys to the right views.
#pragma once

#include "gui/views/view.h"
#include "gui/windows/native_window.h"

#include <functional>
#include <optional>
#include <vector>

namespace VSTGUI {

using ModalViewSessionID = uint32_t;

// Learns which views the pointer enters and leaves, and sees every mouse event before the views do.
class IMouseObserver {
  public:
    virtual ~IMouseObserver() noexcept = default;
    virtual void onMouseEntered(CView* view, CFrame* frame) = 0;
    virtual void onMouseExited(CView* view, CFrame* frame) = 0;
    virtual void onMouseEvent(MouseEvent& event, CFrame* frame) = 0;
};

class FrameInput final : public WindowClient {
  public:
    explicit FrameInput(CFrame& frame) : frame_(frame) {}

    CView* focusView() const { return focus_; }
    void setFocusView(CView* view);
    CView* modalView() const { return modal_.empty() ? nullptr : modal_.back().view; }
    std::optional<ModalViewSessionID> beginModal(CView* view);
    bool endModal(ModalViewSessionID id);
    void addObserver(IMouseObserver* observer) { observers_.push_back(observer); }
    void removeObserver(IMouseObserver* observer);
    bool afterEvent(std::function<void()> function);
    CPoint position() const { return position_; }
    CButtonState buttons() const { return buttons_; }
    // The frame has another scale, and the pointer, which stays where it is, another position.
    void scalePosition(double factor);

    // Sends a key to the view that receives typed keys, and any other event to the views at its
    // position.
    void deliver(Event& event);

    // Drops all pointers to a view that leaves the frame.
    void forgetView(CView* view);
    // Commits a text entry and ends every modal session.
    void finish();

    void pointerPressed(CPoint where, CButtonState state) override;
    void pointerReleased(CPoint where, CButtonState state) override;
    void pointerMoved(CPoint where, CButtonState state) override;
    void pointerLeft() override;
    void pointerLost() override;
    void wheelTurned(CPoint where, double right, double up, CButtonState modifiers) override;
    bool keyChanged(KeyboardEvent& event) override;
    void keyboardLost() override;
    void drawPending() override;
    void exposed(const IntRect& area) override;
    void ticked() override;
    IReference& owner() override;

  private:
    struct ModalSession {
        ModalViewSessionID id;
        CView* view;
    };
    struct Click {
        int32_t button = 0;
        CPoint where;
        uint64_t time = 0;
        uint32_t count = 0;
    };

    template <typename Work>
    void duringEvent(Work work);
    void noticePointer(CPoint where, CButtonState state);
    void updateHover();
    void enterOrLeave(CView* view, bool enter);
    void cancelDrag();
    void endTextEntry(const CView* keptFor = nullptr);
    uint32_t countClick(CPoint where, int32_t button);
    void tellObservers(MouseEvent& event);
    CView* mouseTarget() const;

    CFrame& frame_;
    CPoint position_;       // of the pointer, unzoomed
    CButtonState buttons_;  // buttons and modifiers held down
    bool pointerInside_ = false;
    SharedPointer<CView> dragged_;  // took the press and waits for the release
    int32_t dragButton_ = 0;
    Click lastClick_;
    CView* focus_ = nullptr;
    std::vector<CView*> hovered_;  // under the pointer, outermost first
    std::vector<ModalSession> modal_;
    ModalViewSessionID lastModalId_ = 0;
    std::vector<IMouseObserver*> observers_;
    int depth_ = 0;  // of nested events
    std::vector<std::function<void()>> afterwards_;
};

}  // namespace VSTGUI
