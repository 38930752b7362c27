// One run of quarzel: the instrument with its window, audio and MIDI.
#pragma once

#include <optional>
#include <string>

#include "app/audio_output.h"
#include "app/command_line.h"
#include "app/computer_keyboard.h"
#include "app/control_bar.h"
#include "app/device_choice.h"
#include "app/editor_window.h"
#include "app/every.h"
#include "app/midi_inbox.h"
#include "app/midi_inputs.h"
#include "app/player.h"
#include "app/program.h"
#include "app/saved_state.h"
#include "host/midi_song.h"
#include "host/plugin_host.h"

namespace app {

// User-interface thread. Missing devices are reported and retried.
class Session {
  public:
    // Throws host::Error if the instrument, song, bank or program cannot be used.
    Session(const CommandLine& line, const Surroundings& surroundings);
    ~Session();

    // Returns when the window is closed, the run is interrupted, or, without a window, the song has
    // ended.
    void run();

  private:
    void loadState();
    void openWindow();
    BarActions makeActions();
    void showBar();
    void silence();
    void playThrough(const AudioWish& wish);
    void listenTo(const std::string& port);
    void keepDevices();
    void watchAudio();
    void openAudio();
    AudioFormat openDevice();
    void closeAudio();
    void saveState();
    void say(const std::string& sentence);
    std::string title() const;
    std::string loadText() const;

    const CommandLine& line_;
    const Surroundings& surroundings_;
    DeviceChoice devices_;
    AudioWish wish_;
    std::optional<host::MidiSong> song_;
    host::PluginHost host_;
    SavedState state_;
    MidiInbox inbox_;
    Player player_;
    AudioOutput output_;
    MidiInputs midi_;
    ComputerKeyboard keyboard_;
    BarActions actions_;
    Every show_;  // the bar
    std::optional<EditorWindow> window_;
    AudioFormat format_ = {};
    std::string audioTrouble_;   // why there is no sound; empty if there is
    std::string deviceTrouble_;  // why the chosen device is not in use
    std::string stateTrouble_;
    Clock::time_point nextAttempt_;
};

}  // namespace app
