// Limits the messages of one skin build. A message box blocks the host until it is dismissed, and a
// broken skin may have a fault in every line.
#pragma once

#include <string>

#include "platform/message_box.h"

namespace editor {

class SkinMessages {
  public:
    static constexpr int kMostShown = 10;

    explicit SkinMessages(int mostShown = kMostShown) : mostShown_(mostShown) {}

    void show(const std::string& title, const std::string& text, platform::MessageIcon icon);
    // Call after the last message. Says how many were not shown, if any.
    void showRest();

  private:
    int mostShown_;
    int said_ = 0;
};

}  // namespace editor
