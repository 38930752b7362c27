// The instrument as the page sees it: a copy that is not heard, kept equal to that of the worklet.
#pragma once

#include <array>
#include <string>

#include "editor/editor_host.h"
#include "instrument/instrument.h"
#include "plugin/web/news.h"
#include "state/saved_state.h"

namespace web {

// Sends every change of sound on to the worklet. Page's thread only.
class Model final : public editor::EditorHost {
  public:
    Model() { instrument_.start(engine::kInitialRate); }

    void setSampleRate(double rate) { instrument_.setSampleRate(rate); }

    // What came from the worklet last.
    float* news() { return news_.data(); }
    void newsCame();

    // A message that also goes to the worklet. Controllers move what is bound to them, and program
    // changes arrive here, too.
    void play(const std::uint8_t* message);
    // Tells the worklet about controllers that have been bound or freed.
    void sendBindings();

    std::string state() { return state::bytesOf(instrument_.savedState()); }
    std::string bankFile();
    std::string presetFile();  // of the current program

    int parameterCount() const override { return instrument_.parameterCount(); }
    float parameter(int index) const override { return instrument_.parameter(index); }
    void setParameter(int index, float value) override;
    void setParameterAutomated(int index, float value) override { setParameter(index, value); }
    void beginEdit(int) override {}
    void endEdit(int) override {}
    std::string parameterName(int index) const override { return instrument_.parameterName(index); }
    std::string parameterDisplay(int index) const override {
        return instrument_.parameterDisplay(index);
    }
    std::string parameterLabel(int index) const override {
        return instrument_.parameterLabel(index);
    }
    std::uint64_t takeChangedParameters() override { return instrument_.takeChangedParameters(); }

    int programCount() const override { return instrument_.programCount(); }
    int program() const override { return instrument_.program(); }
    void setProgram(int program) override;
    std::string programName(int program) const override { return instrument_.programName(program); }
    void renameProgram(int program, const std::string& name) override;

    state::ProgramRecord programRecord(int program) const override {
        return instrument_.programRecord(program);
    }
    void putProgram(int program, const state::ProgramRecord& record) override;
    void loadProgram(int program, const state::ProgramRecord& record) override;
    state::ProgramRecord loadedProgram(int program) const override {
        return instrument_.loadedProgram(program);
    }
    state::SavedState savedState() override { return instrument_.savedState(); }
    void loadSavedState(const state::SavedState& saved) override;

    int heldNotes() const override { return static_cast<int>(news_[kHeldNotes]); }
    int lastKey() const override { return static_cast<int>(news_[kLastKey]); }
    std::bitset<128> heldKeys() const override;
    void playKey(int key, int velocity) override;
    const state::ToneCurve& toneCurve() override { return instrument_.toneCurve(); }
    editor::OutputPeaks takeOutputPeaks() override;
    int chorusTapCount() const override { return kTaps; }
    float chorusTap(int tap) const override { return news_[kFirstTap + tap]; }

    state::LearnSlot& learnSlot() override { return instrument_.learnSlot(); }
    bool sizeWindow(int, int) override { return true; }  // the canvas follows the frame

  private:
    void sendEverything();

    instrument::Host host_;
    instrument::Instrument instrument_{host_};
    std::array<float, kNewsSize> news_ = initialNews();
    editor::OutputPeaks peaks_;
    std::array<std::int32_t, state::kNumParams> boundInWorklet_ = nothingBound();

    static std::array<float, kNewsSize> initialNews();
    static std::array<std::int32_t, state::kNumParams> nothingBound();
};

}  // namespace web
