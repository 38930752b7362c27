// The editor in a host's window.
#pragma once

#include <memory>

#include "editor/my_editor.h"
#include "plugin/vst3/idle_timer.h"
#include "plugin/vst3/shell.h"

namespace vst3 {

// Keeps the shell alive. User-interface thread.
class View final : public IPlugView, public IPlugViewContentScaleSupport {
  public:
    explicit View(Shell& shell);

    tresult VST3_CALL queryInterface(const TUID iid, void** object) override;
    uint32 VST3_CALL addRef() override { return references_.add(); }
    uint32 VST3_CALL release() override;

    tresult VST3_CALL isPlatformTypeSupported(FIDString type) override;
    tresult VST3_CALL attached(void* parent, FIDString type) override;
    tresult VST3_CALL removed() override;
    tresult VST3_CALL onWheel(float distance) override;
    tresult VST3_CALL onKeyDown(char16_t key, int16 keyCode, int16 modifiers) override;
    tresult VST3_CALL onKeyUp(char16_t key, int16 keyCode, int16 modifiers) override;
    tresult VST3_CALL getSize(ViewRect* size) override;
    tresult VST3_CALL onSize(ViewRect* newSize) override;
    tresult VST3_CALL onFocus(TBool) override { return kResultOk; }
    tresult VST3_CALL setFrame(IPlugFrame* frame) override;
    tresult VST3_CALL canResize() override { return kResultFalse; }
    tresult VST3_CALL checkSizeConstraint(ViewRect* rect) override;
    tresult VST3_CALL setContentScaleFactor(float factor) override;

    void setKnobMode(int mode) { editor_.setKnobMode(mode); }
    // The editor wants its window to have this size, in pixels.
    bool requestSize(int width, int height);

  private:
    ~View();  // by release

    bool open(void* parent);
    void idle();

    ReferenceCount references_;
    const Ref<Shell> shell_;
    editor::myEditor editor_;
    IPlugFrame* frame_ = nullptr;  // the host's, until it says otherwise
    std::unique_ptr<IdleTimer> timer_;
};

}  // namespace vst3
