// The bar's height, and the names in its menus.
#include "app/control_bar.h"

#include <gtest/gtest.h>

#include "app/device_choice.h"

namespace {

TEST(ControlBar, IsLowerWhereTheScreenIsLow) {
    EXPECT_EQ(app::ControlBar::heightFor(1104, 720 - 20 - 686), 14);
    EXPECT_EQ(app::ControlBar::heightFor(1104, -2), 14);
    EXPECT_EQ(app::ControlBar::heightFor(1104, 100), 28);
    EXPECT_EQ(app::ControlBar::heightFor(3312, 50), 50);
}

TEST(ControlBar, NamesADeviceInTheMenuAsOnTheButton) {
    const auto menu = app::audioMenu({{"alsa", {{"Card", true}}}}, {"jack", "gone", {}}, nullptr);
    ASSERT_EQ(menu.size(), 3u);
    EXPECT_EQ(menu[1].title, "ALSA: Card");
    EXPECT_EQ(menu[2].title, "Jack: gone");
}

}  // namespace
