// The editor's texts about a parameter: its value with units, and what it does.
#include "editor/parameter_line.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <iterator>

#include "platform/number_text.h"
#include "state/controller_map.h"
#include "state/parameter_text.h"

namespace editor {

namespace {

constexpr const char* kWhatItDoes[] = {
    "The level while notes sound; it leaves the tails alone.",
    "Stored with the sound, but without effect.",
    "Tunes all keys by up to a semitone.",
    "How much your touch changes the level of a note.",
    "Thins the sound from below.",
    "Raises or lowers the treble.",
    "The raw tone. Moving it silences all notes.",
    "The time to full level.",
    "The time to fall to the sustain level.",
    "The level while a key is held.",
    "The time to die away after the key is released.",
    "The level of the violas.",
    "The level of the violins, an octave above the violas.",
    "The level of the brass.",
    "The level of the horns.",
    "The level of the contrabass, below the key split.",
    "The level of the cello, below the key split.",
    "Lets the violas play.",
    "Lets the violins play.",
    "Lets the brass play.",
    "Lets the horns play.",
    "Lets the contrabass play.",
    "Lets the cello play.",
    "Keys below this one also play the bass.",
    "The phase of the violins relative to the violas.",
    "Para: one loudness for all keys. Poly: an envelope for each.",
    "Turns one string into many.",
    "The depth of the slow vibrato.",
    "The depth of the fast vibrato.",
    "The length of the delays.",
    "How far the delays are apart.",
    "How much of the dry sound is taken away.",
    "Sweeps notches through the sound.",
    "The speed of the sweep.",
    "The feedback of the phaser.",
    "Two stages, four from 25 %, with a low-pass from 50 %.",
    "The range of the sweep.",
    "A room with a spring. Switching it clears its tail.",
    "The level of the room against the dry sound.",
    "How long the room rings.",
    "How bright the room is.",
    "Drives a spring with the side signal.",
};
static_assert(std::size(kWhatItDoes) == state::kNumParams);

constexpr char kSwitchEnd[] = " on/off";

}  // namespace

std::string panelName(int parameter) {
    std::string name = state::parameter(parameter).title;
    const auto end = name.rfind(kSwitchEnd);
    return end == std::string::npos ? name : name.substr(0, end);
}

std::string valueWithUnit(const EditorHost& host, int parameter) {
    if (parameter == state::kPan) return "not used";
    return state::plainText(parameter, host.parameter(parameter));
}

// Two digits are enough, and three before the point.
std::string shortValueWithUnit(const EditorHost& host, int parameter) {
    const std::string text = valueWithUnit(host, parameter);
    const std::size_t point = text.find('.');
    const std::size_t unit = text.find(' ');
    if (point == std::string::npos || unit == std::string::npos) return text;
    double shown = 0.0;
    platform::readNumber(text.data(), text.data() + unit, shown);
    if (std::abs(shown) < 9.95) {
        const bool hasTenths = std::abs(shown) >= 1.0 && unit - point == 3;
        return hasTenths ? platform::fixedText(shown, 1) + text.substr(unit) : text;
    }
    // The text is rounded already, unless its unit is that of the law.
    const double plain = state::plainValue(parameter, host.parameter(parameter));
    const double number = std::abs(plain - shown) < 0.1 ? plain : shown;
    return platform::fixedText(number, 0) + text.substr(unit);
}

std::string titleAndValue(const EditorHost& host, int parameter) {
    std::string value = valueWithUnit(host, parameter);
    const state::Law::Kind kind = state::parameter(parameter).law.kind;
    if (kind == state::Law::kSwitch) value[0] = static_cast<char>(std::tolower(value[0]));
    const char* const between = kind == state::Law::kSplitKey ? " at " : " ";
    return panelName(parameter) + between + value;
}

std::string whatItDoes(int parameter) {
    return kWhatItDoes[parameter];
}

std::string boundController(int parameter) {
    const int controller = state::controllerMap().controller(parameter);
    return controller < 0 ? "" : "CC " + std::to_string(controller);
}

}  // namespace editor
