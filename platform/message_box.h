// Messages to the musician, shown by the system or by a handler that replaces it.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace platform {

enum class MessageIcon { kNone, kError };

using MessageHandler =
    std::function<void(const std::string& title, const std::string& text, MessageIcon icon)>;

// Shows one message with an OK button and no owner window, and waits until it is dismissed. Any
// thread but the audio thread. If no display can be opened on Linux, or after printMessages
// (platform/console.h), it prints the line "TITLE: TEXT" to standard error and returns at once.
void showMessage(const std::string& title, const std::string& text, MessageIcon icon);

// Replaces the system's message box for the whole process and returns the previous handler. An
// empty handler stands for the system's.
MessageHandler setMessageHandler(MessageHandler handler);

// Sets a handler within a scope.
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
