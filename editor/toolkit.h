// Sets the view library up for as long as anybody of this module uses it.
#pragma once

namespace VSTGUI {
class IPlatformFrameConfig;
}

namespace editor {

// Lives before the first picture, font or view and until after the last. User-interface thread.
class Toolkit {
  public:
    Toolkit();
    ~Toolkit();
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;

    // False where opening a frame is sure to fail, and may end the process.
    static bool hasDisplay();
    // What a frame is opened with; null where the system drives the windows by itself.
    static VSTGUI::IPlatformFrameConfig* frameConfig();
    // Serves the windows of all editors of the module where the system does not.
    static void pump();

  private:
    static void setUp();
    static void tearDown();
};

}  // namespace editor
