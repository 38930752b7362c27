// Builds the menus and keeps the choices beside the editor's settings.
#include "app/device_choice.h"

#include <algorithm>

#include "state/data_folder.h"

namespace app {
namespace {

constexpr const char* kApiSetting = "AudioApi";
constexpr const char* kDeviceSetting = "AudioDevice";
constexpr const char* kPortSetting = "MidiPort";

// ALSA's names end in numbers that another start may change: "Keys:Keys MIDI 1 20:0".
std::string lastingPart(const std::string& port) {
    const auto end = port.find_last_not_of("0123456789:");
    const bool hasNumbers = end != std::string::npos && end > 0 && port[end] == ' ' &&
                            port.find(':', end) != std::string::npos;
    return hasNumbers ? port.substr(0, end) : port;
}

}  // namespace

DeviceChoice readDeviceChoice() {
    const auto settings = state::settings();
    const auto read = [&](const char* name) { return settings.read(name).value_or(""); };
    return {read(kApiSetting), read(kDeviceSetting), read(kPortSetting)};
}

bool keepDeviceChoice(const DeviceChoice& choice) {
    const auto settings = state::settings();
    return settings.write(kApiSetting, choice.audioApi) &&
           settings.write(kDeviceSetting, choice.audioDevice) &&
           settings.write(kPortSetting, choice.midiPort);
}

std::vector<MenuChoice> audioMenu(const std::vector<AudioDevices>& all, const AudioWish& current,
                                  const std::function<void(const AudioWish&)>& pick) {
    std::vector<MenuChoice> menu;
    bool hasCurrent = false;
    const auto add = [&](const std::string& title, const std::string& api,
                         const std::string& device) {
        const bool isCurrent = api == current.api && device == current.device;
        hasCurrent = hasCurrent || isCurrent;
        AudioWish wish = current;
        wish.api = api;
        wish.device = device;
        menu.push_back({title, isCurrent, [pick, wish] { pick(wish); }});
    };
    add("Automatic", "", "");
    for (const auto& [api, devices] : all) {
        for (const auto& device : devices)
            add(apiTitle(api) + ": " + device.name, api, device.name);
    }
    // A device in use may not be listed.
    if (!hasCurrent) {
        const std::string api = current.api.empty() ? "" : apiTitle(current.api) + ": ";
        add(api + (current.device.empty() ? "default" : current.device), current.api,
            current.device);
    }
    return menu;
}

std::vector<MenuChoice> midiMenu(const std::vector<std::string>& ports, const std::string& current,
                                 const std::function<void(const std::string&)>& pick) {
    std::vector<MenuChoice> menu = {{"All ports", current.empty(), [pick] { pick(""); }}};
    for (const auto& port : ports) {
        const std::string name = lastingPart(port);
        menu.push_back({port, name == current, [pick, name] { pick(name); }});
    }
    const bool isThere = current.empty() || std::any_of(menu.begin() + 1, menu.end(),
                                                        [](const auto& c) { return c.isCurrent; });
    if (!isThere) menu.push_back({current, true, [pick, current] { pick(current); }});
    return menu;
}

}  // namespace app
