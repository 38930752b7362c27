// Shows the first messages and counts the rest.
#include "editor/skin/skin_messages.h"

namespace editor {

void SkinMessages::show(const std::string& title, const std::string& text,
                        platform::MessageIcon icon) {
    if (++said_ <= mostShown_) platform::showMessage(title, text, icon);
}

void SkinMessages::showRest() {
    const int rest = said_ - mostShown_;
    if (rest <= 0) return;
    platform::showMessage("Skin Error",
                          std::to_string(rest) + (rest == 1 ? " more message" : " more messages"),
                          platform::MessageIcon::kError);
}

}  // namespace editor
