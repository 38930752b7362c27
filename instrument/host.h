// What an instrument needs from the program it runs in; each plug-in format implements it.
#pragma once

namespace instrument {

enum class DisplayChange {
    kProgram,      // the current program, or all its values
    kProgramName,  // of the current program
};

// The default implementations do nothing and serve an instrument without a host.
class Host {
  public:
    virtual ~Host() = default;

    // User-interface thread. An editor control moved a parameter, which already has the value.
    // gestureBegins and gestureEnds surround the edits of one gesture.
    virtual void gestureBegins(int /*parameter*/) {}
    virtual void edited(int /*parameter*/, float /*value*/) {}
    virtual void gestureEnds(int /*parameter*/) {}
    // Any thread, including the audio thread. The host should refresh its display.
    virtual void displayChanged(DisplayChange) {}
    // User-interface thread. The editor has played a key, which waits for the next block.
    virtual void keyPlayed() {}
    // User-interface thread. The editor asks for a window of this size, in pixels.
    virtual void resizeEditor(int /*width*/, int /*height*/) {}
};

}  // namespace instrument
