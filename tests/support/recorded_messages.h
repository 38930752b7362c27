// Records the messages of a test instead of showing them.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "platform/message_box.h"

struct RecordedMessage {
    std::string title;
    std::string text;
    platform::MessageIcon icon = platform::MessageIcon::kNone;

    bool operator==(const RecordedMessage& other) const {
        return title == other.title && text == other.text && icon == other.icon;
    }
};

inline std::ostream& operator<<(std::ostream& out, const RecordedMessage& message) {
    const bool isError = message.icon == platform::MessageIcon::kError;
    return out << '[' << message.title << "] " << message.text << (isError ? " (error)" : "");
}

struct RecordedMessages {
    std::vector<RecordedMessage> all;
    platform::ScopedMessageHandler handler{
        [this](const std::string& title, const std::string& text, platform::MessageIcon icon) {
            all.push_back({title, text, icon});
        }};
};
