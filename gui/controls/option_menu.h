// A pop-up menu: either a control that shows its current entry, or a menu opened at a point.
#pragma once

#include "gui/controls/menu_item.h"
#include "gui/controls/param_display.h"
#include "gui/views/frame_input.h"

#include <functional>
#include <optional>
#include <vector>

namespace VSTGUI {

// The value is the index of the current entry. Separators count as entries.
class COptionMenu : public CParamDisplay {
  public:
    enum Style : int32_t {
        kPopupStyle = 1 << 8,
        kCheckStyle = 1 << 9,
        kMultipleCheckStyle = 1 << 10,
    };
    using PopupCallback = std::function<void(COptionMenu*)>;

    COptionMenu(const CRect& size, IControlListener* listener, int32_t tag,
                CBitmap* background = nullptr, CBitmap* backgroundWhenOpen = nullptr,
                int32_t style = 0);
    COptionMenu();  // without a control; open it with popup()

    // The title "-" makes a separator. The index -1, or one beyond the end, appends. The menu owns
    // the returned item.
    virtual CMenuItem* addEntry(const UTF8String& title, int32_t index = -1,
                                int32_t flags = CMenuItem::kNoFlags);
    virtual CMenuItem* addEntry(CMenuItem* item, int32_t index = -1);  // takes the reference
    virtual CMenuItem* addSeparator(int32_t index = -1);
    virtual bool removeAllEntry();
    int32_t getNbEntries() const { return static_cast<int32_t>(entries_.size()); }
    CMenuItem* getEntry(int32_t index) const;  // null if out of range
    CMenuItem* getCurrent() const { return getEntry(current_); }
    virtual int32_t getCurrentIndex() const { return current_; }  // -1 at first
    virtual bool setCurrent(int32_t index);
    virtual bool checkEntry(int32_t index, bool checked);
    virtual bool checkEntryAlone(int32_t index);
    int32_t getLastResult() const { return lastResult_; }  // -1 if nothing was chosen

    // Rounds to an index. Ignores one that is out of range.
    void setValue(float value) override;
    void setMin(float) override {}
    float getMin() const override { return 0; }
    void setMax(float) override {}
    float getMax() const override;

    // Opens the menu in the frame, at the view or below `where`, and returns at once. It is at
    // least as wide as the view. The callback runs when the menu closes.
    virtual bool popup(const PopupCallback& callback = {});
    virtual bool popup(CFrame* frame, const CPoint& where, const PopupCallback& callback = {});

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    void onKeyboardEvent(KeyboardEvent& event) override;
    bool removed(CView* parent) override;

  private:
    bool show(CFrame& frame, const CRect& around, const PopupCallback& callback);
    void closed(int32_t chosen, const PopupCallback& callback);
    void choose(int32_t index);

    std::vector<SharedPointer<CMenuItem>> entries_;
    SharedPointer<CBitmap> backgroundWhenOpen_;
    int32_t current_ = -1;
    int32_t lastResult_ = -1;
    CFrame* openIn_ = nullptr;
    ModalViewSessionID session_ = 0;  // while the menu is open
};

}  // namespace VSTGUI
