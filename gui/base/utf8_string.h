// Text in UTF-8.
#pragma once

#include "platform/utf8.h"

#include <cstddef>
#include <string>
#include <utility>

namespace VSTGUI {

using UTF8StringPtr = const char*;

class UTF8String {
  public:
    UTF8String(UTF8StringPtr text = nullptr) : text_(text ? text : "") {}
    explicit UTF8String(const std::string& text) : text_(text) {}
    UTF8String(std::string&& text) noexcept : text_(std::move(text)) {}

    const std::string& getString() const noexcept { return text_; }
    UTF8StringPtr data() const noexcept { return text_.data(); }
    operator UTF8StringPtr() const noexcept { return data(); }
    bool empty() const noexcept { return text_.empty(); }
    size_t length() const noexcept { return text_.length(); }  // in bytes

    UTF8String& operator+=(UTF8StringPtr other);
    UTF8String& operator+=(const UTF8String& other) { return *this += other.data(); }
    bool operator==(UTF8StringPtr other) const { return text_ == (other ? other : ""); }
    bool operator!=(UTF8StringPtr other) const { return !(*this == other); }
    bool operator==(const UTF8String& other) const { return text_ == other.text_; }
    bool operator!=(const UTF8String& other) const { return text_ != other.text_; }
    bool operator==(const std::string& other) const { return text_ == other; }
    bool operator!=(const std::string& other) const { return text_ != other; }

  private:
    std::string text_;
};

namespace utf8 = platform::utf8;

}  // namespace VSTGUI
