// The module of the page: the model and the editor, as functions that a script calls.
//
// Texts and bytes go through buffers: out of the module as a pointer and a size, into it as
// pointers that the script has filled.
#include <memory>
#include <string>
#include <vector>

#include "editor/browser/sound_slots.h"
#include "editor/my_editor.h"
#include "gui/windows/canvas_window.h"
#include "host/midi_song.h"
#include "host/song_selection.h"
#include "platform/input_error.h"
#include "plugin/web/model.h"
#include "state/factory_sounds.h"
#include "state/parameter_text.h"
#include "state/saved_state.h"
#include "state/sound_file.h"

namespace {

using VSTGUI::CPoint;
using VSTGUI::WindowClient;

struct Page {
    web::Model model;
    editor::myEditor editor{model};
    editor::SoundSlots slots{model, editor.history()};
    std::string out;  // the last text or bytes that were asked for
    std::vector<double> song;
};

Page& page() {
    static const auto page = std::make_unique<Page>();
    return *page;
}

const char* give(std::string text) {
    page().out = std::move(text);
    return page().out.c_str();
}

// Empty, or one sentence for the player.
template <typename Action>
const char* faultOf(Action action) {
    try {
        action();
        return give("");
    } catch (const platform::InputError& fault) {
        return give(fault.what());
    }
}

state::SavedState stateOf(const std::string& bytes, const std::string& name) {
    const auto saved = state::readSavedState(bytes);
    if (!saved) throw platform::InputError(name + " holds no sounds of this instrument.");
    return *saved;
}

template <typename Use>
void withClient(Use use) {
    WindowClient* const client = VSTGUI::canvasClient();
    if (!client) return;
    const auto alive = VSTGUI::shared(&client->owner());
    use(*client);
}

}  // namespace

extern "C" {

// The rate at which the worklet plays.
void quarzelStart(double sampleRate) {
    page().model.setSampleRate(sampleRate);
}

int quarzelOutSize() {
    return static_cast<int>(page().out.size());
}

// --- the instrument ---

float* quarzelNews() {
    return page().model.news();
}
void quarzelNewsCame() {
    page().model.newsCame();
}
void quarzelPlay(int status, int data1, int data2) {
    const std::uint8_t message[] = {static_cast<std::uint8_t>(status),
                                    static_cast<std::uint8_t>(data1),
                                    static_cast<std::uint8_t>(data2)};
    page().model.play(message);
}
void quarzelSendBindings() {
    page().model.sendBindings();
}
int quarzelParameterCount() {
    return page().model.parameterCount();
}
float quarzelParameter(int index) {
    return page().model.isParameter(index) ? page().model.parameter(index) : 0.0f;
}
void quarzelSetParameter(int index, float value) {
    if (page().model.isParameter(index)) page().model.setParameter(index, value);
}
// On the panel.
const char* quarzelParameterName(int index) {
    return give(page().model.isParameter(index) ? state::parameter(index).title : "");
}
const char* quarzelParameterText(int index) {
    return give(page().model.isParameter(index)
                    ? state::plainText(index, page().model.parameter(index))
                    : "");
}
int quarzelProgram() {
    return page().model.program();
}
void quarzelSetProgram(int program) {
    if (state::isProgram(program)) page().model.setProgram(program);
}
const char* quarzelProgramName(int program) {
    return give(page().model.programName(program));
}
// The family of a factory sound, empty for others.
const char* quarzelProgramFamily(int program) {
    const auto* const sound = state::factorySound(program, page().model.programName(program));
    return give(sound ? sound->family : "");
}

// --- files ---

const char* quarzelState() {
    return give(page().model.state());
}
const char* quarzelBankFile() {
    return give(page().model.bankFile());
}
const char* quarzelPresetFile() {
    return give(page().model.presetFile());
}
// These answer what was wrong, or an empty text. All but the first can be undone.
const char* quarzelBeginWith(const char* bytes, int size, const char* name) {
    return faultOf([=] { page().model.loadSavedState(stateOf({bytes, bytes + size}, name)); });
}
const char* quarzelTakeState(const char* bytes, int size, const char* name) {
    return faultOf([=] { page().slots.loadBank(stateOf({bytes, bytes + size}, name)); });
}
const char* quarzelTakeBank(const char* bytes, int size, const char* name) {
    return faultOf([=] {
        const state::SavedState saved = page().model.savedState();
        page().slots.loadBank(state::readBankFile({bytes, bytes + size}, name, saved));
    });
}
const char* quarzelTakePreset(const char* bytes, int size, const char* name) {
    return faultOf([=] {
        const state::ProgramRecord record = page().model.programRecord(page().model.program());
        page().slots.load(state::readSoundFile({bytes, bytes + size}, name, record));
    });
}
// Reads a MIDI file, as much of it as the programs play.
const char* quarzelReadSong(const char* bytes, int size, const char* name, int sampleRate) {
    return faultOf([=] {
        host::MidiSong song = host::parseMidiSong({bytes, static_cast<std::size_t>(size)}, name);
        host::keep(song, host::SongSelection());
        page().song.clear();
        for (const host::SongEvent& event : song.events) {
            page().song.push_back(static_cast<double>(song.frameAt(event.time, sampleRate)));
            for (const unsigned char byte : event.message) page().song.push_back(byte);
        }
    });
}
// Four numbers an event: its frame and three bytes.
const double* quarzelSong() {
    return page().song.data();
}
int quarzelSongSize() {
    return static_cast<int>(page().song.size());
}

// --- the editor on the canvas ---

// `scale` says how many of the canvas's pixels a pixel of the skin covers.
int quarzelOpenEditor(double scale) {
    page().editor.setContentScale(scale);
    return page().editor.open(&page());
}
void quarzelCloseEditor() {
    page().editor.close();
}
void quarzelScaleEditor(double scale) {
    page().editor.setContentScale(scale);
}
// Call this some thirty times a second.
void quarzelIdle() {
    page().editor.idle();
}
int quarzelEditorWantsKeys() {
    return page().editor.wantsKeys();
}
int quarzelEditorWantsText() {
    return page().editor.wantsText();
}

enum Pointer : int { kPressed, kMoved, kReleased, kLeft, kLost };

// `state` has the bits of CButton: the button and the modifiers, for moves those that are held.
void quarzelPointer(int what, double x, double y, int state) {
    withClient([=](WindowClient& client) {
        switch (what) {
            case kPressed:
                return client.pointerPressed(CPoint(x, y), state);
            case kMoved:
                return client.pointerMoved(CPoint(x, y), state);
            case kReleased:
                return client.pointerReleased(CPoint(x, y), state);
            case kLeft:
                return client.pointerLeft();
            default:
                return client.pointerLost();
        }
    });
}

void quarzelWheel(double x, double y, double right, double up, int modifiers) {
    withClient(
        [=](WindowClient& client) { client.wheelTurned(CPoint(x, y), right, up, modifiers); });
}

// `name` is the browser's name of a key without a character. Returns 1 if the key was used.
int quarzelKey(int down, int character, const char* name, int modifiers) {
    VSTGUI::KeyboardEvent event(down ? VSTGUI::EventType::KeyDown : VSTGUI::EventType::KeyUp);
    event.character = static_cast<char32_t>(character);
    event.virt = VSTGUI::virtualKeyNamed(name);
    event.modifiers = VSTGUI::modifiersOf(modifiers);
    bool used = false;
    withClient([&](WindowClient& client) { used = client.keyChanged(event); });
    return used;
}
void quarzelKeyboardLost() {
    withClient([](WindowClient& client) { client.keyboardLost(); });
}

}  // extern "C"
