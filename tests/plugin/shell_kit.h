// What tests of the formats' shells share: the delivered bank, and no message.
#pragma once

#include <gtest/gtest.h>

#include "platform/folders.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

class ShellTest : public testing::Test {
  protected:
    ~ShellTest() override { EXPECT_TRUE(messages_.all.empty()) << messages_.all.front(); }

    TemporaryFolder applicationData_;
    platform::ScopedFolders folders_{QUARZEL_DELIVERED, applicationData_.path()};
    RecordedMessages messages_;
};
