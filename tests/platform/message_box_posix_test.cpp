// Messages of the system's own on Linux.
#include "platform/message_box.h"

#include <gtest/gtest.h>

namespace {

TEST(SystemMessage, IsOneLineOnStandardErrorWithoutADisplay) {
    testing::internal::CaptureStderr();
    platform::showMessage("Skin Error", "Missing tag x for object knob",
                          platform::MessageIcon::kError);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Skin Error: Missing tag x for object knob\n");
}

}  // namespace
