// What an instrument needs from the program it runs in; each plug-in format implements it.
#pragma once

namespace instrument {

enum class DisplayChange {
    kProgram,      // another program, or all values of the current one
    kProgramName,  // of the current program
};

// The defaults do nothing, for an instrument without a host.
class Host {
  public:
    virtual ~Host() = default;

    // User-interface thread. A control of the editor moved a parameter, which has the value
    // already; one gesture's edits stand between its begin and its end.
    virtual void gestureBegins(int /*parameter*/) {}
    virtual void edited(int /*parameter*/, float /*value*/) {}
    virtual void gestureEnds(int /*parameter*/) {}
    // Any thread, the audio thread included: what the host displays is out of date.
    virtual void displayChanged(DisplayChange) {}
    // User-interface thread. The editor wants its window to have this size, in pixels.
    virtual void resizeEditor(int /*width*/, int /*height*/) {}
};

}  // namespace instrument
