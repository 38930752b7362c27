// Chooses between the process's handler and the system's message box.
#include "platform/message_box.h"

#include <mutex>

#include "platform/system_message.h"

namespace platform {
namespace {

std::mutex handlerMutex;
MessageHandler currentHandler;

}  // namespace

void showMessage(const std::string& title, const std::string& text, MessageIcon icon) {
    // Called outside the lock: a modal message may stay open for minutes.
    MessageHandler handler;
    {
        const std::lock_guard<std::mutex> lock(handlerMutex);
        handler = currentHandler;
    }
    if (!handler) return showSystemMessage(title, text, icon);
    handler(title, text, icon);
}

MessageHandler setMessageHandler(MessageHandler handler) {
    const std::lock_guard<std::mutex> lock(handlerMutex);
    std::swap(currentHandler, handler);
    return handler;
}

}  // namespace platform
