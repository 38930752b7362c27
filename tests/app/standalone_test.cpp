// The whole program: its sound in a JACK server and its window on an X server.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include <gtest/gtest.h>

#include "app/midi_inputs.h"
#include "app/quiet_libraries.h"
#include "editor/skin_preview.h"
#include "tests/app/jack_server.h"
#include "tests/gui/x11_server.h"
#include "tests/host/midi_bytes.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wait_for.h"

namespace {

using namespace std::chrono_literals;
constexpr double kPi = 3.14159265358979323846;

double rms(const std::vector<float>& samples) {
    double squares = 0.0;
    for (const float sample : samples) squares += double{sample} * sample;
    return std::sqrt(squares / samples.size());
}

// The level of one frequency (Goertzel's sum, with a Hann window).
double levelAt(double hz, const std::vector<float>& samples) {
    const auto count = static_cast<double>(samples.size());
    double cosines = 0.0, sines = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double window = 0.5 - 0.5 * std::cos(2.0 * kPi * i / count);
        cosines += samples[i] * window * std::cos(2.0 * kPi * hz * i / JackServer::kRate);
        sines += samples[i] * window * std::sin(2.0 * kPi * hz * i / JackServer::kRate);
    }
    return std::hypot(cosines, sines) / count;
}

// Whether an A sounds: nothing between 220 and 440 Hz is as loud as one of the two.
bool hearsAnA(const std::vector<float>& samples) {
    if (rms(samples) < 0.003) return false;
    std::vector<double> levels;
    for (int step = 0; step < 24; ++step) {
        levels.push_back(levelAt(220.0 * std::pow(2.0, step / 12.0), samples));
    }
    return (std::max_element(levels.begin(), levels.end()) - levels.begin()) % 12 == 0;
}

class Standalone : public testing::Test {
  protected:
    void SetUp() override {
        setenv("XDG_CONFIG_HOME", folder_.path().c_str(), 1);
        const std::filesystem::path plugin = QUARZEL_PLUGIN;
        std::filesystem::copy_file(plugin, folder_.path() + "instrument.so");
        // With a display, a message about a missing bank would wait for its button.
        std::filesystem::copy_file(plugin.parent_path() / "default.fxb",
                                   folder_.path() + "default.fxb");
        JackServer::acceptClients(kManyClients);
        jack_ = std::make_unique<JackServer>(folder_.path());
        if (!jack_->isRunning()) GTEST_SKIP() << "needs jackd";
    }

    void start(std::vector<std::string> options) {
        std::vector<std::string> words = {QUARZEL, "--plugin", folder_.path() + "instrument.so",
                                          "--api", "jack"};
        words.insert(words.end(), options.begin(), options.end());
        program_ = std::make_unique<ChildProcess>(words, folder_.path() + "quarzel.log");
    }
    bool says(const std::string& text) {
        return waitFor([&] { return program_->output().find(text) != std::string::npos; });
    }
    // Sends the note each time, because a new connection may lose its first cycle.
    bool playsAnA() {
        jack_->sendMidi({0x90, 69, 100});
        return jack_->listen() && hearsAnA(jack_->heard());
    }
    std::string savedState() const {
        return folder_.read("Tembrilon/Quarzel Strings/standalone-73656e69.fxb");
    }
    // A skin of one colour with the name of the sound.
    void makeSkin(const std::string& name, uint32_t color) {
        const std::string skin = folder_.path() + name;
        std::filesystem::create_directories(skin);
        VSTGUI::PixelBuffer ground(600, 100);
        VSTGUI::fillArea(ground, ground.bounds(), color);
        editor::writePng(skin + "/bg.png", ground);
        folder_.write(name + "/skin.xml", R"(<GUI><background filename="bg.png"/>
            <PresetsDisplay x="50" y="40" w="200" h="20" id="2000"/>
            <skinselector x="50" y="5" w="100" h="20" style="0"/></GUI>)");
    }
    static bool showsSkin(const VSTGUI::X11Server& screen, uint32_t color) {
        return waitFor(
            [&] { return (screen.contents(299, kBar + 99, 1, 1)[0] & 0xFFFFFF) == color; });
    }
    std::string settings() const { return folder_.read("Tembrilon/Quarzel Strings/settings"); }
    bool isSilent() { return rms(jack_->heard()) < 1e-4; }

    static constexpr int kManyClients = 10000;
    static constexpr int kBar = 28;  // the height of the bar above the editor
    TemporaryFolder folder_;
    std::unique_ptr<JackServer> jack_;
    std::unique_ptr<ChildProcess> program_;
};

TEST_F(Standalone, PlaysWhatComesInByMidiAndEndsCleanly) {
    start({"--no-window", "--program", "3", "--block", "64"});
    ASSERT_TRUE(says("Listening to the MIDI port listener:keys.")) << program_->output();
    EXPECT_TRUE(jack_->feed("Quarzel Strings MIDI:in"));
    ASSERT_TRUE(waitFor([&] { return jack_->listen(); }));
    EXPECT_TRUE(isSilent());
    EXPECT_TRUE(waitFor([&] { return playsAnA(); })) << program_->output();

    program_->signal(SIGTERM);
    EXPECT_EQ(program_->waitForEnd(), 0) << program_->output();
    EXPECT_TRUE(waitFor([&] { return isSilent(); }));

    // The program is still current.
    start({"--no-window"});
    ASSERT_TRUE(says("Listening")) << program_->output();
    program_->signal(SIGINT);
    EXPECT_EQ(program_->waitForEnd(), 0);
    EXPECT_EQ(savedState().substr(28, 4), std::string("\0\0\0\3", 4));
}

TEST_F(Standalone, PlaysASongAndLeaves) {
    // A second of sound, then none at once.
    const std::string song = bytes({0, 0x90, 69, 100, 0x87, 0x40, 0xB0, 120, 0});
    folder_.write("song.mid", midiFile(0, 480, {song}));
    start({"--no-window", folder_.path() + "song.mid"});
    EXPECT_TRUE(waitFor([&] { return jack_->listen() && hearsAnA(jack_->heard()); }));
    EXPECT_EQ(program_->waitForEnd(), 0) << program_->output();
}

TEST_F(Standalone, SurvivesTheServerAndWaitsForTheNext) {
    start({"--no-window"});
    ASSERT_TRUE(says("Listening")) << program_->output();
    jack_->stop();
    ASSERT_TRUE(says("The audio device is gone.")) << program_->output();
    ASSERT_TRUE(says("No audio (jack: no device).")) << program_->output();
    jack_ = std::make_unique<JackServer>(folder_.path());
    ASSERT_TRUE(jack_->isRunning());
    ASSERT_TRUE(waitFor([&] { return jack_->listen(); })) << program_->output();
    ASSERT_TRUE(waitFor([&] {
        const std::string text = program_->output();
        return text.rfind("Listening") > text.rfind("gone");
    })) << program_->output();
    EXPECT_TRUE(waitFor([&] { return playsAnA(); })) << program_->output();
    program_->signal(SIGTERM);
    EXPECT_EQ(program_->waitForEnd(), 0) << program_->output();
}

TEST_F(Standalone, WaitsForAServerThatRefusesAClientOfItsMidi) {
    const app::QuietLibraries quiet;
    for (const int accepted : {0, 1, 2}) {  // the port query, its own port, the first other port
        SCOPED_TRACE(accepted);
        std::string said;
        const auto say = [&](const std::string& text) { said += text + '\n'; };
        app::MidiInbox inbox;
        JackServer::acceptClients(accepted);
        app::MidiInputs inputs(inbox, "jack", "listener", say);
        JackServer::acceptClients(0);
        inputs.poll();
        const bool foundThePort = accepted == 2;
        EXPECT_EQ(said,
                  foundThePort ? "The MIDI port listener:keys cannot be opened.\n" : std::string());
        said.clear();
        JackServer::acceptClients(kManyClients);
        inputs.poll();
        inputs.poll();
        EXPECT_EQ(said, "Listening to the MIDI port listener:keys.\n");
        said.clear();
        inputs.listenTo("organ");
        EXPECT_EQ(said,
                  "No MIDI port has organ in its name; waiting for one. "
                  "There are: listener:keys.\n");
    }
}

TEST_F(Standalone, ShowsTheEditorAndPlaysFromTheComputerKeyboard) {
    VSTGUI::X11Server screen("640x480x24");
    if (!screen.isRunning()) GTEST_SKIP() << "needs Xvfb and xdotool";
    makeSkin("skin", 0xFF336699u);
    start({});
    ASSERT_TRUE(waitFor([&] { return jack_->listen(); })) << program_->output();
    ASSERT_TRUE(showsSkin(screen, 0x336699));
    EXPECT_TRUE(waitFor([&] {
        const std::string title = "Quarzel Strings - Jack, 44100 Hz - load .* % - .* dropouts?";
        return std::system(("xdotool search --name '" + title + "' >/dev/null").c_str()) == 0;
    }));

    // Typing into the editor plays no notes.
    const auto change = [&](const std::string& command) {
        const auto before = screen.contents(50, kBar + 40, 200, 20);
        screen.drive(command);
        return waitFor([&] { return screen.contents(50, kBar + 40, 200, 20) != before; });
    };
    EXPECT_TRUE(change("mousemove 150 78 click --repeat 2 --delay 20 1"));
    EXPECT_TRUE(change("type --delay 50 yyyy"));
    std::this_thread::sleep_for(500ms);
    EXPECT_TRUE(isSilent());
    EXPECT_TRUE(change("key Return"));

    // A held key repeats, but its note keeps sounding. The field that closes may take a first
    // press.
    EXPECT_TRUE(waitFor([&] {
        screen.drive("keyup y keydown y");
        std::this_thread::sleep_for(1500ms);
        return hearsAnA(jack_->heard());
    })) << program_->output();
    screen.drive("keyup y");
    EXPECT_TRUE(waitFor([&] { return isSilent(); }));

    screen.askTopWindowToClose();
    EXPECT_EQ(program_->waitForEnd(), 0) << program_->output();
    EXPECT_NE(savedState().find("yyyy"), std::string::npos);
}

TEST_F(Standalone, ObeysTheBarAndItsKeys) {
    VSTGUI::X11Server screen("640x480x24");
    if (!screen.isRunning()) GTEST_SKIP() << "needs Xvfb and xdotool";
    makeSkin("skin", 0xFF336699u);
    makeSkin("other", 0xFF993366u);
    std::string song;
    for (int beat = 0; beat < 200; ++beat) song += bytes({0x83, 0x60, 0x90, 69, 100});
    folder_.write("song.mid", midiFile(0, 480, {song}));
    start({folder_.path() + "song.mid", "--factory"});
    ASSERT_TRUE(showsSkin(screen, 0x336699)) << program_->output();
    const auto plays = [&] {
        return waitFor([&] { return jack_->listen() && hearsAnA(jack_->heard()); });
    };
    const auto ends = [&] { return waitFor([&] { return isSilent(); }); };
    EXPECT_TRUE(plays()) << program_->output();
    screen.drive("mousemove 20 110 click 1 key space");
    EXPECT_TRUE(ends());
    screen.drive("mousemove 80 14 click 1");  // Play
    EXPECT_TRUE(plays());
    screen.drive("key Delete");
    EXPECT_TRUE(ends());
    screen.drive("key Home");
    EXPECT_TRUE(plays());

    const auto isCovered = [&](int x, int y) {
        return (screen.contents(x, y, 1, 1)[0] & 0xFFFFFF) != 0x336699;
    };
    const auto opensMenu = [&](int x, int y, int belowY) {
        screen.drive("mousemove " + std::to_string(x) + " " + std::to_string(y) + " click 1");
        return waitFor([&] { return isCovered(x, belowY); });
    };
    EXPECT_TRUE(opensMenu(400, 14, kBar + 15));  // the audio menu, over the editor
    screen.drive("key Down key Down key Return");
    EXPECT_TRUE(waitFor([&] { return settings().find("MidiPort=") != std::string::npos; }));
    EXPECT_NE(settings().find("AudioDevice=system"), std::string::npos) << settings();
    EXPECT_TRUE(waitFor([&] { return !isCovered(400, kBar + 15); }));

    EXPECT_TRUE(opensMenu(100, kBar + 15, kBar + 30));
    screen.drive("key Up key Return");
    EXPECT_TRUE(showsSkin(screen, 0x993366));  // in the same window
}

}  // namespace
