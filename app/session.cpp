// The main loop of quarzel.
#include "app/session.h"

#include <algorithm>
#include <thread>

#include "host/error.h"
#include "host/instrument_names.h"
#include "host/numbers.h"
#include "host/patches.h"

namespace app {
namespace {

using namespace std::chrono_literals;

constexpr auto kTurn = 33ms;           // between calls of the editor's idle
constexpr auto kShowInterval = 200ms;  // between changes of the bar; its clock counts seconds
constexpr auto kWatchInterval = 500ms;
constexpr auto kPollInterval = 1s;
constexpr auto kRetryInterval = 2s;
constexpr auto kSaveInterval = 30s;
constexpr auto kFadePatience = 300ms;
constexpr double kKeyStep = 5.0;   // seconds of the song
constexpr int kFirstRate = 48000;  // until a device is open
constexpr host::HostIdentity kIdentity = {"quarzel", true};

// The command line comes first, and no part of it is mixed with what was chosen before.
AudioWish wishOf(const CommandLine& line, const DeviceChoice& chosen) {
    AudioWish wish = line.audio;
    if (!wish.api.empty() || !wish.device.empty()) return wish;
    const auto apis = audioApis();
    if (std::find(apis.begin(), apis.end(), chosen.audioApi) == apis.end()) return wish;
    wish.api = chosen.audioApi;
    wish.device = chosen.audioDevice;
    return wish;
}

std::optional<host::MidiSong> readSong(const std::string& path,
                                       const host::SongSelection& selection) {
    if (path.empty()) return std::nullopt;
    host::MidiSong song = host::readMidiSong(path);
    host::keep(song, selection);
    return song;
}

}  // namespace

Session::Session(const CommandLine& line, const Surroundings& surroundings)
    : line_(line),
      surroundings_(surroundings),
      devices_(readDeviceChoice()),
      wish_(wishOf(line, devices_)),
      song_(readSong(line.song, line.selection)),
      host_(host::instrumentPath(line.plugin), line.audio.rate.value_or(kFirstRate),
            line.audio.blockSize, kIdentity),
      state_(host_),
      player_(host_, inbox_, song_ ? &*song_ : nullptr, line.hasCeiling),
      output_([this](float* left, float* right, int frames, bool late) {
          player_.render(left, right, frames, late);
      }),
      midi_(inbox_, line.midiApi, line.midiPort.empty() ? devices_.midiPort : line.midiPort,
            [this](const std::string& text) { say(text); }),
      keyboard_([this](const host::MidiMessage& message) {
          inbox_.post(MidiInbox::kPlayerLane, message);
      }),
      actions_(makeActions()),
      show_(kShowInterval) {
    loadState();
    if (line.hasWindow) openWindow();
}

Session::~Session() {
    closeAudio();
}

void Session::loadState() {
    try {
        if (line_.isFactoryFresh) {
            const std::string aside = state_.putAside();
            if (!aside.empty()) say("The bank of the last run is kept as " + aside + ".");
        } else {
            state_.load();
        }
    } catch (const host::Error& error) {
        say(error.what());
    }
    if (line_.bank) host::loadBank(host_, *line_.bank);
    if (!line_.program) return;
    const auto names = host::distinctProgramNames(host_);
    host_.setProgram(host::indexOf(*line_.program, names, "program"));
}

void Session::openWindow() {
    try {
        window_.emplace(host_, keyboard_, actions_);
    } catch (const host::Error& error) {
        say(error.what());
    }
}

BarActions Session::makeActions() {
    BarActions actions;
    actions.playOrPause = [this] {
        player_.songPlays() ? player_.pauseSong() : player_.playSong();
        show_.hurry();
    };
    actions.restart = [this] {
        player_.moveSongTo(0.0);
        player_.playSong();
        show_.hurry();
    };
    actions.panic = [this] { silence(); };
    actions.moveTo = [this](double seconds) {
        player_.moveSongTo(seconds);
        show_.hurry();
    };
    const auto moveBy = [this](double seconds) {
        actions_.moveTo(player_.songPosition() + seconds);
    };
    actions.back = [moveBy] { moveBy(-kKeyStep); };
    actions.forward = [moveBy] { moveBy(kKeyStep); };
    actions.audioChoices = [this] {
        return audioMenu(audioDevices(), wish_, [this](const auto& wish) { playThrough(wish); });
    };
    actions.midiChoices = [this] {
        return midiMenu(midi_.portNames(), midi_.wantedPort(),
                        [this](const auto& port) { listenTo(port); });
    };
    return actions;
}

void Session::silence() {
    player_.pauseSong();
    show_.hurry();
    keyboard_.releaseAll();
    constexpr host::MidiMessage kAllOff[] = {{0xb0, 64, 0}, {0xb0, 123, 0}, {0xb0, 120, 0}};
    for (const auto& message : kAllOff) inbox_.post(MidiInbox::kPlayerLane, message);
}

void Session::playThrough(const AudioWish& wish) {
    closeAudio();
    wish_ = wish;
    devices_.audioApi = wish.api;
    devices_.audioDevice = wish.device;
    keepDevices();
    openAudio();
}

void Session::listenTo(const std::string& port) {
    midi_.listenTo(port);
    devices_.midiPort = port;
    keepDevices();
}

void Session::keepDevices() {
    if (!keepDeviceChoice(devices_)) say("The choice of devices cannot be stored.");
}

void Session::showBar() {
    BarState state;
    state.isPlaying = player_.songPlays();
    state.position = player_.songPosition();
    state.length = player_.songLength();
    state.audio = audioTrouble_.empty() ? format_.api + ": " + format_.device : "no audio";
    state.midi = midi_.wantedPort().empty() ? "MIDI: all ports" : "MIDI: " + midi_.wantedPort();
    state.status = loadText();
    window_->show(state);
}

void Session::run() {
    Every watch(kWatchInterval);
    Every poll(kPollInterval);
    Every save(kSaveInterval);
    save.isDue();  // the first save is due after one interval
    while (!surroundings_.interrupted) {
        if (watch.isDue()) {
            watchAudio();
            if (window_) window_->setTitle(title());
        }
        if (poll.isDue()) midi_.poll();
        if (save.isDue()) saveState();
        if (window_) {
            if (show_.isDue()) showBar();
            if (!window_->serve(kTurn)) break;
        } else {
            if (song_ && player_.songHasEnded()) break;
            std::this_thread::sleep_for(kTurn);
        }
    }
    player_.fadeOut();
    const auto end = Clock::now() + kFadePatience;
    while (output_.isOpen() && !player_.isFaded() && Clock::now() < end) {
        std::this_thread::sleep_for(5ms);
    }
    closeAudio();
    player_.leaveSong();
    saveState();
}

void Session::watchAudio() {
    if (output_.isOpen() && !output_.isAlive()) {
        closeAudio();
        audioTrouble_ = "The audio device is gone.";
        say(audioTrouble_);
        midi_.restart();
    }
    if (output_.isOpen() || Clock::now() < nextAttempt_) return;
    nextAttempt_ = Clock::now() + kRetryInterval;
    openAudio();
}

// A chosen device that is not there does not keep the others silent. One that the command line
// names does.
AudioFormat Session::openDevice() {
    const bool isTyped = !line_.audio.api.empty() || !line_.audio.device.empty();
    const bool hasOthers = !isTyped && !(wish_.api.empty() && wish_.device.empty());
    try {
        const AudioFormat format = output_.open(wish_);
        deviceTrouble_.clear();
        return format;
    } catch (const host::Error& error) {
        if (!hasOthers) throw;
        if (deviceTrouble_ != error.what()) say(error.what());
        deviceTrouble_ = error.what();
    }
    return output_.open(line_.audio);
}

void Session::openAudio() {
    try {
        format_ = openDevice();
        host_.setFormat(format_.rate, format_.blockSize);
        player_.start();
        output_.start();
    } catch (const host::Error& error) {
        closeAudio();
        if (audioTrouble_ != error.what()) say(error.what());
        audioTrouble_ = error.what();
        return;
    }
    audioTrouble_.clear();
    say("Playing through " + format_.api + ", " + format_.device + ", " +
        std::to_string(format_.rate) + " Hz, blocks of " + std::to_string(format_.blockSize) +
        " frames.");
    const bool isAnotherRate = line_.audio.rate && *line_.audio.rate != format_.rate;
    if (isAnotherRate) {
        say("The device does not run at " + std::to_string(*line_.audio.rate) + " Hz.");
    }
}

void Session::closeAudio() {
    if (!output_.isOpen()) return;
    output_.close();
    player_.stop();
}

void Session::saveState() {
    try {
        state_.save();
        stateTrouble_.clear();
    } catch (const host::Error& error) {
        if (stateTrouble_ != error.what()) say(error.what());
        stateTrouble_ = error.what();
    }
}

void Session::say(const std::string& sentence) {
    surroundings_.err << "quarzel: " << sentence << std::endl;
}

std::string Session::title() const {
    const std::string name = host_.name();
    if (!audioTrouble_.empty()) return name + " - " + audioTrouble_;
    return name + " - " + format_.api + ", " + std::to_string(format_.rate) + " Hz - " + loadText();
}

std::string Session::loadText() const {
    return "load " + host::fixedText(player_.load() * 100.0, 0) + " % - " +
           std::to_string(player_.lateBlocks()) +
           (player_.lateBlocks() == 1 ? " dropout" : " dropouts");
}

}  // namespace app
