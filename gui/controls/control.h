// A view with a value. It reports gestures to a listener.
#pragma once

#include "gui/views/view.h"

namespace VSTGUI {

class CControl;

class IControlListener {
  public:
    virtual ~IControlListener() noexcept = default;
    virtual void valueChanged(CControl* control) = 0;
    // Called for a press with a modifier key, before the control sees it. A result other than 0
    // swallows the press.
    virtual int32_t controlModifierClicked(CControl*, CButtonState) { return 0; }
    virtual void controlBeginEdit(CControl*) {}
    virtual void controlEndEdit(CControl*) {}
    virtual void controlTagWillChange(CControl*) {}
    virtual void controlTagDidChange(CControl*) {}
};

// Value, limits and default use the control's own units; the range is 0..1 at first. A left press
// with only Control held resets the value to the default.
class CControl : public CView {
  public:
    explicit CControl(const CRect& size, IControlListener* listener = nullptr, int32_t tag = 0,
                      CBitmap* background = nullptr);

    void draw(CDrawContext* context) override = 0;

    // Clamps the value. Does not notify the listener or redraw.
    virtual void setValue(float value);
    virtual float getValue() const { return value_; }
    // 0..1. An empty range gives 0.
    virtual void setValueNormalized(float normalized);
    virtual float getValueNormalized() const;
    virtual void setMin(float min);
    virtual float getMin() const { return min_; }
    virtual void setMax(float max);
    virtual float getMax() const { return max_; }
    float getRange() const { return getMax() - getMin(); }
    virtual void setDefaultValue(float value) { default_ = value; }
    virtual float getDefaultValue() const { return default_; }
    virtual void setOldValue(float value) {
        old_ = value;
        mayBeDirty();
    }
    virtual float getOldValue() const { return old_; }
    virtual void bounceValue();

    virtual void setWheelInc(float increment) { wheelInc_ = increment; }  // normalised
    virtual float getWheelInc() const { return wheelInc_; }
    virtual void setTag(int32_t tag);
    virtual int32_t getTag() const { return tag_; }
    virtual void setListener(IControlListener* listener) { listener_ = listener; }
    virtual IControlListener* getListener() const { return listener_; }

    // Calls may nest. The outermost pair notifies the listener and the editor.
    virtual void beginEdit();
    virtual void endEdit();
    bool isEditing() const { return editing_ > 0; }
    virtual void valueChanged();

    // Also dirty while the value differs from the one drawn last.
    bool isDirty() const override;
    void setDirty(bool dirty = true) override;

    void onMouseDownEvent(MouseDownEvent& event) override;
    bool removed(CView* parent) override;

  protected:
    bool swallowsModifiedPress(const CButtonState& buttons) override;
    // If the control is dirty, reports the value and requests a redraw.
    void reportChange();
    // Sets a value and reports it as a complete gesture.
    void editTo(float value);

  private:
    IControlListener* listener_;
    int32_t tag_;
    int32_t editing_ = 0;
    float value_ = 0;
    float old_ = 1;
    float min_ = 0;
    float max_ = 1;
    float default_ = 0.5f;
    float wheelInc_ = 0.1f;
};

}  // namespace VSTGUI
