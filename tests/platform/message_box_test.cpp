// Messages and the handler that replaces the system's.
#include "platform/message_box.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/support/recorded_messages.h"

namespace {

using platform::MessageIcon;
using platform::showMessage;

TEST(Message, GoesToTheInnermostHandler) {
    const RecordedMessages outer;
    {
        const RecordedMessages inner;
        showMessage("one", "1", MessageIcon::kError);
        EXPECT_EQ(inner.all, (std::vector<RecordedMessage>{{"one", "1", MessageIcon::kError}}));
    }
    showMessage("two", "2", MessageIcon::kNone);
    EXPECT_EQ(outer.all, (std::vector<RecordedMessage>{{"two", "2", MessageIcon::kNone}}));
}

}  // namespace
