// Keeps the view library set up while this module uses it.
#pragma once

namespace VSTGUI {
class IPlatformFrameConfig;
}

namespace editor {

// Create one before the first picture, font or view, and destroy it after the last. Use it on the
// user-interface thread only.
class Toolkit {
  public:
    Toolkit();
    ~Toolkit();
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;

    // False if opening a frame would fail and might end the process.
    static bool hasDisplay();
    // The configuration for opening a frame; null where the system drives the windows itself.
    static VSTGUI::IPlatformFrameConfig* frameConfig();
    // Serves the windows of all editors of the module, where the system does not.
    static void pump();

  private:
    static void setUp();
    static void tearDown();
};

}  // namespace editor
