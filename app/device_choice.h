// The devices that the user has chosen in the menus, kept in the settings.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/audio_output.h"
#include "app/control_bar.h"

namespace app {

// Empty names mean that none has been chosen.
struct DeviceChoice {
    std::string audioApi;
    std::string audioDevice;
    std::string midiPort;
};

DeviceChoice readDeviceChoice();
// Returns false if it cannot be stored.
bool keepDeviceChoice(const DeviceChoice& choice);

// The menu of all outputs. pick gets the chosen one.
std::vector<MenuChoice> audioMenu(const std::vector<AudioDevices>& all, const AudioWish& current,
                                  const std::function<void(const AudioWish&)>& pick);
// The menu of all ports. pick gets the part of the name that stays the same after a restart.
std::vector<MenuChoice> midiMenu(const std::vector<std::string>& ports, const std::string& current,
                                 const std::function<void(const std::string&)>& pick);

}  // namespace app
