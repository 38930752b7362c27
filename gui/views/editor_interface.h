// The calls that a frame makes to the editor that opened it.
#pragma once

#include <cstdint>

namespace VSTGUI {

class CFrame;

class VSTGUIEditorInterface {
  public:
    virtual ~VSTGUIEditorInterface() noexcept = default;

    virtual int32_t getKnobMode() const { return -1; }  // -1 means the frame's default
    // These enclose every gesture on a control.
    virtual void beginEdit(int32_t) {}
    virtual void endEdit(int32_t) {}
    virtual CFrame* getFrame() const { return frame; }

  protected:
    VSTGUIEditorInterface() = default;
    CFrame* frame = nullptr;
};

}  // namespace VSTGUI
