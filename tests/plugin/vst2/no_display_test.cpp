// The built library without a display for its editor.
#include <cstdlib>

#include <gtest/gtest.h>

#include "tests/plugin/vst2/plugin_under_test.h"

namespace {

TEST(NoDisplay, TheHostGoesOn) {
    const TestHost host;
    const PluginLibrary library;
    for (const char* const display : {"", ":4711"}) {
        setenv("DISPLAY", display, 1);
        PluginInstance plugin(library.entry());
        ERect* rect = nullptr;
        EXPECT_EQ(plugin.dispatch(effEditGetRect, 0, 0, &rect), 1);
        EXPECT_EQ(plugin.dispatch(effEditOpen, 0, 0, reinterpret_cast<void*>(1)), 0);
        plugin.dispatch(effEditIdle);
        plugin->setParameter(plugin.record(), 1, 0.25f);
        EXPECT_EQ(plugin->getParameter(plugin.record(), 1), 0.25f);
        plugin.dispatch(effEditIdle);
        plugin.dispatch(effEditClose);
    }
}

}  // namespace
