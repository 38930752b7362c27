// Messages to the musician, shown by the system or by a handler put in its place.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace platform {

enum class MessageIcon { kNone, kError };

using MessageHandler =
    std::function<void(const std::string& title, const std::string& text, MessageIcon icon)>;

// Shows one message with an OK button and no owner window, and waits until it is dismissed. Any
// thread but the audio thread. Linux: where no display can be opened, one line "TITLE: TEXT" on
// standard error instead, and returns at once; programs that may run unattended clear DISPLAY.
void showMessage(const std::string& title, const std::string& text, MessageIcon icon);

// Puts a handler in place of the system's for the whole process, and returns the one it replaces.
// An empty handler stands for the system's.
MessageHandler setMessageHandler(MessageHandler handler);

// Keeps a handler in place for a scope.
class ScopedMessageHandler {
  public:
    explicit ScopedMessageHandler(MessageHandler handler)
        : previous_(setMessageHandler(std::move(handler))) {}
    ~ScopedMessageHandler() { setMessageHandler(std::move(previous_)); }
    ScopedMessageHandler(const ScopedMessageHandler&) = delete;
    ScopedMessageHandler& operator=(const ScopedMessageHandler&) = delete;

  private:
    MessageHandler previous_;
};

}  // namespace platform
