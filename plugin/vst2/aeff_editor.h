// The base class of an effect's editor.
#pragma once

#include "plugin/vst2/vst2.h"

namespace vst2 {

class AudioEffect;

// The effect owns the editor after AudioEffect::setEditor. All operations run on the host's
// user-interface thread. The defaults show nothing and use no keys.
class AEffEditor {
  public:
    explicit AEffEditor(AudioEffect* effect) : effect_(effect) {}
    virtual ~AEffEditor() = default;
    AEffEditor(const AEffEditor&) = delete;
    AEffEditor& operator=(const AEffEditor&) = delete;

    AudioEffect* getEffect() const { return effect_; }

    // Points *rect at the size in pixels, which is valid until the next call. Returns false if
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
    // Hosts may call it while nothing is open.
    virtual void close() { systemWindow_ = nullptr; }
    virtual bool isOpen() const { return systemWindow_ != nullptr; }
    virtual void idle() {}

    // Whether a text field or a menu takes the keys.
    virtual bool wantsKeys() const { return false; }
    // Returns true if the key was used.
    virtual bool onKeyDown(const VstKeyCode&) { return false; }
    virtual bool onKeyUp(const VstKeyCode&) { return false; }
    // Distance in wheel clicks, positive upwards. Returns true if used.
    virtual bool onWheel(float) { return false; }
    // 0 circular, 1 relative circular, 2 linear. Returns true if the editor complies.
    virtual bool setKnobMode(VstInt32) { return false; }

    // A parameter of the effect has a new value. Any thread that sets parameters.
    virtual void setParameter(VstInt32, float) {}

  protected:
    AudioEffect* effect_;
    void* systemWindow_ = nullptr;
};

}  // namespace vst2
