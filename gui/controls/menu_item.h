// An entry of a menu.
#pragma once

#include "gui/base/reference.h"
#include "gui/base/utf8_string.h"

#include <cstdint>

namespace VSTGUI {

class CMenuItem : public CBaseObject {
  public:
    enum Flags : int32_t {
        kNoFlags = 0,
        kDisabled = 1 << 0,
        kTitle = 1 << 1,  // a heading
        kChecked = 1 << 2,
        kSeparator = 1 << 3,
    };

    explicit CMenuItem(const UTF8String& title, int32_t flags = kNoFlags)
        : title_(title), flags_(flags) {}

    virtual void setTitle(const UTF8String& title) { title_ = title; }
    const UTF8String& getTitle() const { return title_; }
    virtual void setEnabled(bool enabled = true) { setFlag(kDisabled, !enabled); }
    bool isEnabled() const { return !(flags_ & kDisabled); }
    virtual void setChecked(bool checked = true) { setFlag(kChecked, checked); }
    bool isChecked() const { return (flags_ & kChecked) != 0; }
    bool isSeparator() const { return (flags_ & kSeparator) != 0; }

    bool isUsable() const { return !(flags_ & (kDisabled | kTitle | kSeparator)); }

  private:
    void setFlag(int32_t flag, bool on) { flags_ = on ? flags_ | flag : flags_ & ~flag; }

    UTF8String title_;
    int32_t flags_;
};

}  // namespace VSTGUI
