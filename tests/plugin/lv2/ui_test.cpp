// The editor in an LV2 host's window.
#include <gtest/gtest.h>

#include "tests/plugin/lv2/driver.h"
#include "tests/plugin/editor_kit.h"
#include "tests/support/recorded_messages.h"

extern "C" const LV2_Descriptor* lv2_descriptor(uint32_t index);
extern "C" const LV2UI_Descriptor* lv2ui_descriptor(uint32_t index);

namespace {

using namespace lv2_driver;

// A window of the editor, and what it tells its host.
class Window {
  public:
    Window(Instance& instance, void* parent) : instance_(instance) {
        const LV2_Feature access{LV2_INSTANCE_ACCESS_URI, instance.handle};
        const LV2_Feature parentFeature{LV2_UI__parent, parent};
        const LV2_Feature touch{LV2_UI__touch, &touch_};
        const LV2_Feature resize{LV2_UI__resize, &resize_};
        auto features = instance.host.features();
        features.insert(features.begin(), {&access, &parentFeature, &touch, &resize});
        const auto write = [](LV2UI_Controller self, std::uint32_t port, std::uint32_t size,
                              std::uint32_t protocol, const void* value) {
            ASSERT_EQ(size, sizeof(float));
            ASSERT_EQ(protocol, 0u);
            static_cast<Window*>(self)->writes.emplace_back(port,
                                                            *static_cast<const float*>(value));
        };
        ui_ = lv2ui_descriptor(0)->instantiate(lv2ui_descriptor(0), lv2::kPluginUri, "/", write,
                                               this, &widget, features.data());
    }
    ~Window() { close(); }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    bool isOpen() const { return ui_ != nullptr; }
    void close() {
        if (ui_) lv2ui_descriptor(0)->cleanup(std::exchange(ui_, nullptr));
    }
    void idle() {
        const void* const idle = lv2ui_descriptor(0)->extension_data(LV2_UI__idleInterface);
        EXPECT_EQ(static_cast<const LV2UI_Idle_Interface*>(idle)->idle(ui_), 0);
    }
    // As a host carries out what the editor writes, some time later.
    void carryOut() {
        for (const auto& [port, value] : std::exchange(writes, {})) {
            instance_.controls[port] = value;
        }
    }

    LV2UI_Widget widget = nullptr;
    std::vector<std::pair<std::uint32_t, float>> writes;
    std::string touches;
    int width = 0;
    int height = 0;

  private:
    Instance& instance_;
    LV2UI_Touch touch_{this, [](LV2UI_Feature_Handle self, std::uint32_t port, bool grabbed) {
                           static_cast<Window*>(self)->touches +=
                               (grabbed ? "touch " : "let go ") + std::to_string(port) + ';';
                       }};
    LV2UI_Resize resize_{this, [](LV2UI_Feature_Handle self, int width, int height) {
                             static_cast<Window*>(self)->width = width;
                             static_cast<Window*>(self)->height = height;
                             return 0;
                         }};
    LV2UI_Handle ui_ = nullptr;
};

class Lv2Ui : public WindowTest {
  protected:
    Lv2Ui() : WindowTest(400, 200) {}
    void SetUp() override {
        WindowTest::SetUp();
        instance_ = std::make_unique<Instance>(lv2_descriptor(0), host_);
    }
    void idle() override {
        if (shown_) shown_->idle();
    }
    bool waitFor(Window& window, const std::function<bool()>& condition) {
        shown_ = &window;
        const bool holds = WindowTest::waitFor(condition);
        shown_ = nullptr;
        return holds;
    }

    Window* shown_ = nullptr;
    RecordedMessages messages_;  // the bank is missing
    InstalledSkin skin_;
    Host host_;
    std::unique_ptr<Instance> instance_;
};

TEST_F(Lv2Ui, ShowsTheEditorAndWritesWhatItMoves) {
    Window window(*instance_, window_.parent());
    ASSERT_TRUE(window.isOpen());
    EXPECT_TRUE(window.widget && window.widget != window_.parent());
    EXPECT_EQ(window.width, 200);
    EXPECT_EQ(window.height, 100);
    window.idle();
    EXPECT_TRUE(window.writes.empty());
    window_.drag(20, 4, 35, 20);
    ASSERT_TRUE(
        waitFor(window, [&] { return window.touches.find("let go 1") != std::string::npos; }));
    EXPECT_EQ(window.touches.rfind("touch 1;", 0), 0u) << window.touches;
    ASSERT_FALSE(window.writes.empty());
    EXPECT_EQ(window.writes.back().first, 1u);
    const float value = instance_->value(1);
    EXPECT_EQ(window.writes.back().second, lv2::portValue(1, value));
    // The host comes late, and with older values first; the parameter stays where it was put.
    instance_->run(64);
    EXPECT_EQ(instance_->value(1), value);
    instance_->controls[1] = window.writes.front().second + 1.0f;
    instance_->run(64);
    EXPECT_EQ(instance_->value(1), value);
    window.carryOut();
    instance_->run(64);
    EXPECT_EQ(instance_->value(1), value);
    instance_->controls[1] = -50.0f;
    instance_->run(64);
    EXPECT_EQ(instance_->value(1), 0.25f);
}

TEST_F(Lv2Ui, BringsThePortsToWhereProgramsAndControllersAre) {
    instance_->run(64);
    auto saved = instance_->saved();
    instance_->restore(saved);
    std::string& bytes = saved[host_.urids(lv2::kStateKey)].bytes;
    std::fill(bytes.end() - 4 * state::kNumParams, bytes.end(), '\0');  // of the last program
    instance_->restore(saved);
    instance_->send(0, {0xC0, 127});
    instance_->run(64);
    EXPECT_FALSE(instance_->portsAgree());
    Window window(*instance_, window_.parent());
    ASSERT_TRUE(waitFor(window, [&] {
        window.carryOut();
        instance_->run(1024);
        return instance_->portsAgree();
    }));
    window.idle();
    EXPECT_TRUE(window.writes.empty());
    EXPECT_EQ(instance_->program(), 127);
}

TEST_F(Lv2Ui, SurvivesEveryOrderOfItsLife) {
    for (int i = 0; i < 20; ++i) {
        Window first(*instance_, window_.parent());
        ASSERT_TRUE(first.isOpen());
        EXPECT_FALSE(Window(*instance_, window_.parent()).isOpen());  // one editor at a time
        if (i % 2) instance_->run(64);
        if (i % 3) first.idle();
        if (i % 5) instance_->deactivate();
        instance_->restore(instance_->saved());
        first.idle();
    }
    Window last(*instance_, window_.parent());
    last.idle();
    instance_->close();  // the window keeps the rest alive
    last.idle();
    last.close();
}

TEST_F(Lv2Ui, TakesTheSizeOfTheDisplaysScale) {
    const struct {
        const char* type;
        float factor;
        int width;
    } rows[] = {{LV2_ATOM__Float, 1.5f, 300},     {LV2_ATOM__Float, 1.0f, 200},
                {LV2_ATOM__Float, INFINITY, 600}, {LV2_ATOM__Float, NAN, 200},
                {LV2_ATOM__Float, -1.0f, 200},    {LV2_ATOM__String, 2.0f, 200}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.factor);
        host_.options = {{LV2_OPTIONS_INSTANCE, 0, host_.urids(LV2_UI__scaleFactor), sizeof(float),
                          host_.urids(row.type), &row.factor},
                         {}};
        host_.optionsFeature.data = host_.options.data();
        Window window(*instance_, window_.parent());
        EXPECT_EQ(window.width, row.width);
        EXPECT_EQ(window.height, row.width / 2);
    }
}

}  // namespace
