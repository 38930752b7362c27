// What an editor needs without a plug-in: an instrument that records the calls to it, and the
// pictures of a skin.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "editor/aeff_gui_editor.h"
#include "editor/skin_preview.h"
#include "state/bank.h"
#include "state/parameters.h"

// An instrument without sound. Like a real one, it reports changed parameters back to the editor.
class FakeInstrument : public editor::EditorHost {
  public:
    int parameterCount() const override { return state::kNumParams; }
    float parameter(int index) const override { return values[index]; }
    void setParameter(int index, float value) override {
        values[index] = value;
        changed |= std::uint64_t{1} << index;
        note("set " + std::to_string(index) + ' ' + state::valueText(value));
    }
    void setParameterAutomated(int index, float value) override {
        values[index] = value;
        changed |= std::uint64_t{1} << index;
        note("automate " + std::to_string(index) + ' ' + state::valueText(value));
    }
    void beginEdit(int index) override { note("begin " + std::to_string(index)); }
    void endEdit(int index) override { note("end " + std::to_string(index)); }
    std::string parameterName(int index) const override { return state::parameter(index).name; }
    std::string parameterDisplay(int index) const override {
        return state::valueText(values[index]);
    }
    std::string parameterLabel(int) const override { return "x"; }
    std::uint64_t takeChangedParameters() override { return std::exchange(changed, 0); }

    int programCount() const override { return state::kNumPrograms; }
    int program() const override { return current; }
    void setProgram(int program) override { current = program; }
    std::string programName(int program) const override { return names[program]; }
    void renameProgram(int program, const std::string& name) override { names[program] = name; }
    state::ProgramRecord programRecord(int program) const override {
        state::ProgramRecord record = bank.program(program);
        state::setName(record, names[program]);
        if (program == current) std::copy(values.begin(), values.end(), record.values);
        return record;
    }
    void putProgram(int program, const state::ProgramRecord& record) override {
        names[program] = state::nameOf(record);
        bank.chunk().programs[program] = record;
        std::copy_n(record.values, values.size(), values.begin());
        current = program;
        note("put " + std::to_string(program) + ' ' + names[program]);
    }
    void loadProgram(int program, const state::ProgramRecord& record) override {
        loaded.chunk().programs[program] = record;
        putProgram(program, record);
    }
    state::ProgramRecord loadedProgram(int program) const override {
        return loaded.program(program);
    }
    state::SavedState savedState() override { return {current, false, ""}; }
    void loadSavedState(const state::SavedState& saved) override { current = saved.program; }

    int heldNotes() const override { return held; }
    int lastKey() const override { return key; }
    std::bitset<128> heldKeys() const override { return keys; }
    void playKey(int key, int velocity) override {
        keys[static_cast<unsigned>(key)] = velocity > 0;
        note("key " + std::to_string(key) + ' ' + std::to_string(velocity));
    }
    const state::ToneCurve& toneCurve() override { return tone; }
    editor::OutputPeaks takeOutputPeaks() override { return std::exchange(peaks, {}); }
    int chorusTapCount() const override { return 3; }
    float chorusTap(int tap) const override { return taps[tap]; }

    state::LearnSlot& learnSlot() override { return slot; }
    void sizeWindow(int width, int height) override {
        note("size " + std::to_string(width) + ' ' + std::to_string(height));
    }

    // The calls recorded since the last time, separated by semicolons.
    std::string calls() { return std::exchange(log_, std::string()); }

    std::array<float, state::kNumParams> values{};
    std::array<std::string, state::kNumPrograms> names;
    std::array<float, 3> taps{};
    state::Bank bank;
    state::Bank loaded;
    int current = 0;
    int held = 0;
    int key = -1;
    std::bitset<128> keys;
    state::ToneCurve tone;
    editor::OutputPeaks peaks;
    state::LearnSlot slot;
    std::uint64_t changed = 0;

  private:
    void note(const std::string& call) { log_ += (log_.empty() ? "" : "; ") + call; }
    std::string log_;
};

inline VSTGUI::PixelBuffer plainPicture(int width, int height, VSTGUI::CColor color) {
    VSTGUI::PixelBuffer picture(width, height);
    VSTGUI::fillArea(picture, picture.bounds(), VSTGUI::premultiplied(color));
    return picture;
}

// bg.png is 400 x 300. The other pictures are named after their sizes.
inline void writeSkinPictures(const std::string& folder) {
    editor::writePng(folder + "bg.png", plainPicture(400, 300, VSTGUI::CColor(40, 50, 60)));
    editor::writePng(folder + "10x10.png", plainPicture(10, 10, VSTGUI::kRedCColor));
    editor::writePng(folder + "20x40.png", plainPicture(20, 40, VSTGUI::kGreenCColor));
    editor::writePng(folder + "32x3200.png", plainPicture(32, 3200, VSTGUI::kBlueCColor));
}
