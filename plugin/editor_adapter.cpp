// Translates between the editor's calls and the instance's.
#include "plugin/editor_adapter.h"

#include <exception>

#include "engine/ensemble_chorus.h"
#include "plugin/vst_synth.h"

namespace plugin {

namespace {

// The text that an operation writes for an index.
template <void (AudioEffect::*operation)(VstInt32, char*)>
std::string textOf(VstSynth& synth, int index) {
    char text[64] = {};
    (synth.*operation)(index, text);
    return text;
}

}  // namespace

int SynthForEditor::parameterCount() const {
    return synth_.getAeffect()->numParams;
}

float SynthForEditor::parameter(int index) const {
    return synth_.getParameter(index);
}

void SynthForEditor::setParameter(int index, float value) {
    synth_.setParameter(index, value);
}

void SynthForEditor::setParameterAutomated(int index, float value) {
    synth_.setParameterAutomated(index, value);
}

void SynthForEditor::beginEdit(int index) {
    synth_.beginEdit(index);
}

void SynthForEditor::endEdit(int index) {
    synth_.endEdit(index);
}

std::string SynthForEditor::parameterName(int index) const {
    return textOf<&AudioEffect::getParameterName>(synth_, index);
}

std::string SynthForEditor::parameterDisplay(int index) const {
    return textOf<&AudioEffect::getParameterDisplay>(synth_, index);
}

std::string SynthForEditor::parameterLabel(int index) const {
    return textOf<&AudioEffect::getParameterLabel>(synth_, index);
}

int SynthForEditor::programCount() const {
    return synth_.getAeffect()->numPrograms;
}

int SynthForEditor::program() const {
    return synth_.getProgram();
}

void SynthForEditor::setProgram(int program) {
    synth_.setProgram(program);
}

std::string SynthForEditor::programName(int program) const {
    char name[64] = {};
    synth_.getProgramNameIndexed(0, program, name);
    return name;
}

void SynthForEditor::renameProgram(const std::string& name) {
    synth_.setProgramName(name.c_str());
    synth_.updateDisplay();
}

int SynthForEditor::heldNotes() const {
    return synth_.engine().heldNotes();
}

int SynthForEditor::lastKey() const {
    return synth_.engine().lastKey();
}

float SynthForEditor::outputLevel() const {
    return synth_.engine().outputLevel();
}

int SynthForEditor::chorusTapCount() const {
    return engine::EnsembleChorus::kTaps;
}

float SynthForEditor::chorusTap(int tap) const {
    return synth_.engine().chorusTap(tap);
}

state::LearnSlot& SynthForEditor::learnSlot() {
    return synth_.learnSlot();
}

void SynthForEditor::sizeWindow(int width, int height) {
    synth_.sizeWindow(width, height);
}

EditorAdapter::EditorAdapter(VstSynth& synth) : AEffEditor(&synth), host_(synth), editor_(host_) {}

bool EditorAdapter::getRect(ERect** rect) {
    const editor::EditorRect size = editor_.getRect();
    rect_ = {size.top, size.left, size.bottom, size.right};
    *rect = &rect_;
    return true;
}

bool EditorAdapter::open(void* parentWindow) {
    try {
        return editor_.open(parentWindow);
    } catch (const std::exception&) {  // no memory for a skin's pictures
        editor_.close();
        return false;
    }
}

bool EditorAdapter::setKnobMode(VstInt32 mode) {
    if (mode < 0 || mode > 2) return false;
    editor_.setKnobMode(mode);
    return true;
}

}  // namespace plugin
