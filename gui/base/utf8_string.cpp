// Text in UTF-8.
#include "gui/base/utf8_string.h"

namespace VSTGUI {

UTF8String& UTF8String::operator+=(UTF8StringPtr other) {
    if (other) text_ += other;
    return *this;
}

}  // namespace VSTGUI
