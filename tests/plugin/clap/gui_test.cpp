// The editor in a CLAP host's window.
#include <gtest/gtest.h>

#include "tests/plugin/clap/driver.h"
#include "tests/plugin/editor_kit.h"
#include "tests/support/recorded_messages.h"

namespace {

using namespace clap_driver;

class ClapGui : public WindowTest {
  protected:
    ClapGui() : WindowTest(400, 200) {}
    void SetUp() override {
        WindowTest::SetUp();
        if (!IsSkipped()) start(TestHost::kAll);
    }
    void start(TestHost::Offer offer) {
        instance_.reset();
        host_ = std::make_unique<TestHost>(offer);
        instance_ = std::make_unique<Instance>(*host_);
        plugin_ = instance_->plugin;
        gui_ = instance_->extension<PluginGui>(kExtGui);
        timer_ = instance_->extension<PluginTimerSupport>(kExtTimerSupport);
    }
    bool create() { return gui_->create(plugin_, kWindowApi, false); }
    bool setParent() {
        Window window{kWindowApi, {}};
        window.ptr = window_.parent();
        return gui_->set_parent(plugin_, &window);
    }
    uint32_t width() {
        uint32_t width = 0;
        uint32_t height = 0;
        EXPECT_TRUE(gui_->get_size(plugin_, &width, &height));
        EXPECT_EQ(height, width / 2);
        return width;
    }
    void idle() override {
        for (const Id id : std::vector(host_->timers)) timer_->on_timer(plugin_, id);
        told_ += instance_->told();
    }
    RecordedMessages messages_;  // the bank is missing
    InstalledSkin skin_;
    std::unique_ptr<TestHost> host_;
    std::unique_ptr<Instance> instance_;
    const Plugin* plugin_ = nullptr;
    const PluginGui* gui_ = nullptr;
    const PluginTimerSupport* timer_ = nullptr;
    std::string told_;
};

TEST_F(ClapGui, ShowsTheEditorAndTellsOfItsGestures) {
    for (const auto offer : {TestHost::kAll, TestHost::kNoTimer, TestHost::kNothing}) {
        SCOPED_TRACE(offer);
        start(offer);
        ASSERT_TRUE(create());
        EXPECT_EQ(width(), 200u);
        ASSERT_TRUE(setParent() && gui_->show(plugin_));
        EXPECT_EQ(host_->timers.size(), offer == TestHost::kAll ? 1u : 0u);
        idle();
        window_.drag(20, 4, 35, 20);
        std::string news;
        EXPECT_TRUE(waitFor([&] {
            instance_->flush();
            news += instance_->news + "; ";
            return news.find("end 1") != std::string::npos;
        }));
        EXPECT_NE(news.find("begin 1; value 1 "), std::string::npos) << news;
        EXPECT_EQ(told_.find("flush") != std::string::npos, offer != TestHost::kNothing);
        gui_->destroy(plugin_);
        EXPECT_TRUE(host_->timers.empty());
        told_.clear();
    }
}

TEST_F(ClapGui, SurvivesEveryOrderOfItsLife) {
    uint32_t size = 0;
    const char* api = nullptr;
    bool isFloating = true;
    EXPECT_TRUE(gui_->get_preferred_api(plugin_, &api, &isFloating));
    EXPECT_TRUE(!isFloating && gui_->is_api_supported(plugin_, api, false));
    for (const char* other : {"wayland", "cocoa"})
        EXPECT_FALSE(gui_->create(plugin_, other, false));
    EXPECT_FALSE(gui_->create(plugin_, api, true));
    gui_->destroy(plugin_);
    EXPECT_FALSE(setParent() || gui_->show(plugin_) || gui_->hide(plugin_));
    EXPECT_FALSE(gui_->get_size(plugin_, &size, &size) || gui_->set_scale(plugin_, 1.0));
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(create());
        EXPECT_FALSE(create());
        EXPECT_FALSE(gui_->show(plugin_));  // nowhere yet
        EXPECT_EQ(i % 4 && setParent(), i % 4 != 0);
        if (i % 2) instance_->activate();
        if (i % 3 && i % 2) instance_->render(64);
        idle();
        if (i % 5) gui_->hide(plugin_);
        idle();
        EXPECT_EQ(gui_->show(plugin_), i % 4 != 0);
        EXPECT_EQ(host_->timers.size(), i % 4 ? 1u : 0u);
        instance_->load(instance_->saved());
        EXPECT_EQ(i % 4 && setParent(), i % 4 != 0);  // again
        idle();
        instance_->deactivate();
        if (i % 7) gui_->hide(plugin_);
        gui_->destroy(plugin_);
        EXPECT_TRUE(host_->timers.empty());
        timer_->on_timer(plugin_, 1000);
    }
    ASSERT_TRUE(create() && setParent());
    instance_.reset();  // open still
    EXPECT_TRUE(host_->timers.empty());
}

TEST_F(ClapGui, TakesTheSizeOfTheDisplaysScale) {
    ASSERT_TRUE(create() && gui_->set_scale(plugin_, 1.5));
    EXPECT_EQ(width(), 300u);
    ASSERT_TRUE(setParent());
    const struct {
        double scale;
        bool grants;
        uint32_t width;
    } rows[] = {
        {2.0, true, 400}, {1.0, false, 200}, {9.0, true, 600}, {0.25, true, 200}, {NAN, true, 200}};
    for (const auto& row : rows) {
        host_->grantsResize = row.grants;
        gui_->set_scale(plugin_, row.scale);
        EXPECT_EQ(host_->width, row.width) << row.scale;
        EXPECT_EQ(width(), row.width);
        idle();
    }
    uint32_t wide = 999;
    uint32_t high = 5;
    EXPECT_TRUE(gui_->adjust_size(plugin_, &wide, &high) && wide == 200 && high == 100);
    EXPECT_TRUE(gui_->set_size(plugin_, 200, 100));
    EXPECT_FALSE(gui_->set_size(plugin_, 201, 100) || gui_->can_resize(plugin_));
}

}  // namespace
