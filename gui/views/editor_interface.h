// What a frame tells the object that opened it.
#pragma once

#include <cstdint>

namespace VSTGUI {

class CFrame;

class VSTGUIEditorInterface {
  public:
    virtual ~VSTGUIEditorInterface() noexcept = default;

    virtual int32_t getKnobMode() const { return -1; }  // -1: the frame's default
    // Around every gesture on a control.
    virtual void beginEdit(int32_t) {}
    virtual void endEdit(int32_t) {}
    virtual CFrame* getFrame() const { return frame; }

  protected:
    VSTGUIEditorInterface() = default;
    CFrame* frame = nullptr;
};

}  // namespace VSTGUI
