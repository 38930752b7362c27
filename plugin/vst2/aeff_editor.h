// The editor of an effect as its host drives it.
#pragma once

#include "plugin/vst2/vst2.h"

namespace vst2 {

class AudioEffect;

// Base class of an editor. It belongs to its effect once AudioEffect::setEditor was called with it.
// All operations run on the host's user-interface thread. The defaults show nothing and take no
// keys.
class AEffEditor {
  public:
    explicit AEffEditor(AudioEffect* effect) : effect_(effect) {}
    virtual ~AEffEditor() = default;
    AEffEditor(const AEffEditor&) = delete;
    AEffEditor& operator=(const AEffEditor&) = delete;

    AudioEffect* getEffect() const { return effect_; }

    // Points *rect at the size in pixels, which stays valid until the next call; false when
    // unknown.
    virtual bool getRect(ERect** rect) {
        *rect = nullptr;
        return false;
    }
    // Opens inside the host's window (an HWND, or an X11 window number cast to a pointer).
    virtual bool open(void* parentWindow) {
        systemWindow_ = parentWindow;
        return false;
    }
    // May come when nothing is open.
    virtual void close() { systemWindow_ = nullptr; }
    virtual bool isOpen() const { return systemWindow_ != nullptr; }
    virtual void idle() {}

    // Whether keys are being typed into a text field or a menu.
    virtual bool wantsKeys() const { return false; }
    // True when the key was used.
    virtual bool onKeyDown(const VstKeyCode&) { return false; }
    virtual bool onKeyUp(const VstKeyCode&) { return false; }
    // Distance in wheel clicks, upwards positive; true when used.
    virtual bool onWheel(float) { return false; }
    // 0 circular, 1 relative circular, 2 linear; true when it is followed.
    virtual bool setKnobMode(VstInt32) { return false; }

    // The effect's parameter has a new value. May come from any thread that sets parameters.
    virtual void setParameter(VstInt32, float) {}

  protected:
    AudioEffect* effect_;
    void* systemWindow_ = nullptr;
};

}  // namespace vst2
