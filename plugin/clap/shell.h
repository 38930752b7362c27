// The instrument as a CLAP host sees it.
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <string>

#include "instrument/instrument.h"
#include "plugin/clap/extensions.h"
#include "plugin/clap/note_table.h"
#include "plugin/clap/parameter_list.h"
#include "plugin/told_values.h"

namespace clap {

class EditorWindow;

// Lives from create_plugin() to destroy(). [main], [audio] and [any] are the threads as the headers
// of the interface name them; what has no mark is [main].
class Shell final : private instrument::Host {
  public:
    explicit Shell(const clap::Host& host);
    ~Shell() override;

    const Plugin& plugin() const { return plugin_; }
    instrument::Instrument& instrument() { return instrument_; }  // for tests

    // shell.cpp: life.
    bool init();
    void destroy() { delete this; }
    bool activate(double sampleRate, uint32_t minFrames, uint32_t maxFrames);
    void deactivate();
    const void* extension(const char* id);  // [any]
    void onMainThread();
    void onTimer(Id timer);

    // processing.cpp
    bool startProcessing() { return true; }                      // [audio]
    void stopProcessing() {}                                     // [audio]
    void reset();                                                // [audio]
    ProcessStatus process(const Process* block);                 // [audio]
    void flush(const InputEvents* in, const OutputEvents* out);  // [audio], inactive [main]

    // parameters.cpp
    uint32_t parameterCount() { return kParameterCount; }
    bool parameterInfo(uint32_t index, ParamInfo* info);
    bool parameterValue(Id id, double* value);
    bool valueToText(Id id, double value, char* text, uint32_t size);
    bool textToValue(Id id, const char* text, double* value);
    uint32_t noteNameCount();
    bool noteName(uint32_t index, NoteName* name);

    // saved_state.cpp
    bool save(const OutputStream* stream);
    bool load(const InputStream* stream);
    bool saveFor(const OutputStream* stream, uint32_t) { return save(stream); }
    bool loadFor(const InputStream* stream, uint32_t) { return load(stream); }
    bool loadPreset(uint32_t kind, const char* location, const char* key);

    // gui.cpp
    bool isGuiSupported(const char* api, bool isFloating);
    bool preferredGui(const char** api, bool* isFloating);
    bool createGui(const char* api, bool isFloating);
    void destroyGui();
    bool setGuiScale(double scale);
    bool guiSize(uint32_t* width, uint32_t* height);
    bool canResizeGui() { return false; }
    bool guiResizeHints(GuiResizeHints*) { return false; }
    bool adjustGuiSize(uint32_t* width, uint32_t* height) { return guiSize(width, height); }
    bool setGuiSize(uint32_t width, uint32_t height);
    bool setGuiParent(const Window* window);
    bool setGuiTransient(const Window*) { return false; }
    void suggestGuiTitle(const char*) {}
    bool showGui();
    bool hideGui();

    uint32_t tail() { return plugin::tailFrames(sampleRate_); }  // [any]

  private:
    void gestureBegins(int parameter) override;
    void edited(int parameter, float value) override;
    void gestureEnds(int parameter) override;
    void displayChanged(instrument::DisplayChange change) override;  // [any]
    void resizeEditor(int width, int height) override;
    void keyPlayed() override;
    void markEdit(int parameter);
    // Tells the host what has changed as a whole.
    void tellHost();
    int bassKeys() const;

    // processing.cpp
    void takeEvents(const InputEvents* in, int frames, bool notes);
    void takeParameter(const EventParamValue& event, int frame, int frames);
    void takeProgram(double value, int frame, int frames);
    void takeNote(const EventNote& event, int frame);
    void takeMessage(const EventMidi& event, int frame);
    void silence(int frame);
    void add(int frame, const plugin::Message& bytes);
    void end(const NoteTable::Note& note);
    bool push(const OutputEvents& out, const EventHeader& event);
    bool pushValue(const OutputEvents& out, int index, uint32_t flags);
    bool pushEdit(const OutputEvents& out, int index);
    void pushEdits(const OutputEvents* out);
    void pushChanges(const OutputEvents* out);
    void pushEnds(const OutputEvents* out);

    const clap::Host& host_;
    const Plugin plugin_;
    const HostParams* hostParams_ = nullptr;
    const HostState* hostState_ = nullptr;
    const HostGui* hostGui_ = nullptr;
    const HostTimerSupport* hostTimers_ = nullptr;
    const HostPresetLoad* hostPresets_ = nullptr;
    const HostNoteName* hostNoteNames_ = nullptr;

    instrument::Instrument instrument_;
    std::array<double, state::kNumParams> defaults_{};
    std::atomic<double> sampleRate_{engine::kInitialRate};

    plugin::ToldValues told_;
    // What has changed as a whole, by a program or a state.
    std::atomic<bool> valuesChanged_{false};
    std::atomic<bool> namesChanged_{false};
    int toldBassKeys_ = 0;

    // The player's edits on their way to the host: parameters that are held, those with news, and
    // those whose gesture the host believes to be going on.
    std::atomic<std::uint64_t> held_{0};
    instrument::ChangeBits edits_;
    std::uint64_t begun_ = 0;  // process() and flush(), which never run together

    NoteTable notes_;
    // Notes that have ended in this block; their places are in it.
    std::array<NoteTable::Note, 256> ended_;
    int endedCount_ = 0;
    uint32_t time_ = 0;  // of what goes out

    std::shared_ptr<EditorWindow> editor_;
};

}  // namespace clap
