// The bar above the editor: the song's transport, the devices, panic and the load.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "gui/graphics/pixel_buffer.h"

namespace VSTGUI {
class CFrame;
class CTextLabel;
class CView;
}  // namespace VSTGUI

namespace app {

class BarButton;
class PositionLine;

struct MenuChoice {
    std::string title;
    bool isCurrent;
    std::function<void()> choose;
};
using MenuChoices = std::function<std::vector<MenuChoice>()>;

// What the bar does. The keys of the window do the same.
struct BarActions {
    std::function<void()> playOrPause;
    std::function<void()> restart;
    std::function<void()> back;  // a little, by keys only
    std::function<void()> forward;
    std::function<void()> panic;
    std::function<void(double seconds)> moveTo;
    MenuChoices audioChoices;  // may take a while
    MenuChoices midiChoices;
};

struct BarState {
    double position = 0.0;  // seconds
    double length = 0.0;    // 0 without a song
    std::string audio;
    std::string midi;
    std::string status;
    bool isPlaying = false;
};

// User-interface thread. Its menus need more room than the bar has, so it covers the whole window
// while one is open.
class ControlBar {
  public:
    static constexpr int kLeastWidth = 600;  // pixels
    // Returns the pixels of the whole window, or nothing.
    using Picture = std::function<VSTGUI::PixelBuffer()>;

    // The height of a bar of this width where `room` is left for it, as far as it can be so low.
    // All are in pixels.
    static int heightFor(int width, int room);

    // parent is the window's id in the system. The actions must outlive the bar.
    ControlBar(std::uintptr_t parent, const BarActions& actions, Picture picture);
    ~ControlBar();
    ControlBar(const ControlBar&) = delete;
    ControlBar& operator=(const ControlBar&) = delete;

    void setSize(int width, int height);  // pixels
    void show(const BarState& state);
    // Handles events. Actions are called here. Does nothing if nothing has happened.
    void idle();
    bool wantsKeys() const { return cover_ != nullptr; }

  private:
    BarButton* addButton(const char* text, const std::function<void()>& click);
    void layOut();
    void openMenu();
    void closeMenu();

    const BarActions& actions_;
    Picture picture_;
    VSTGUI::CFrame* frame_;
    int width_ = 0;
    int height_ = 0;
    double length_ = 0.0;  // of the song, seconds
    BarButton* restart_;
    BarButton* play_;
    PositionLine* line_;
    VSTGUI::CTextLabel* time_;
    BarButton* audio_;
    BarButton* midi_;
    BarButton* panic_;
    VSTGUI::CTextLabel* status_;
    VSTGUI::CView* cover_ = nullptr;              // while a menu is open
    int turnsLeft_ = 0;                           // for which idle is needed, whatever comes
    BarButton* asked_ = nullptr;                  // its menu is to be opened
    std::vector<std::function<void()>> pending_;  // for the end of idle
};

}  // namespace app
