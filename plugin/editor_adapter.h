// Joins the editor to the instance: the host's calls on one side, the instrument's on the other.
#pragma once

#include <string>

#include "editor/editor_host.h"
#include "editor/my_editor.h"
#include "plugin/aeff_editor.h"

namespace plugin {

class VstSynth;

// What the editor asks, answered by the instance.
class SynthForEditor final : public editor::EditorHost {
  public:
    explicit SynthForEditor(VstSynth& synth) : synth_(synth) {}

    int parameterCount() const override;
    float parameter(int index) const override;
    void setParameter(int index, float value) override;
    void setParameterAutomated(int index, float value) override;
    void beginEdit(int index) override;
    void endEdit(int index) override;
    std::string parameterName(int index) const override;
    std::string parameterDisplay(int index) const override;
    std::string parameterLabel(int index) const override;

    int programCount() const override;
    int program() const override;
    void setProgram(int program) override;
    std::string programName(int program) const override;
    void renameProgram(int program, const std::string& name) override;

    int heldNotes() const override;
    int lastKey() const override;
    float outputLevel() const override;
    int chorusTapCount() const override;
    float chorusTap(int tap) const override;

    state::LearnSlot& learnSlot() override;
    void sizeWindow(int width, int height) override;

  private:
    VstSynth& synth_;
};

class EditorAdapter final : public AEffEditor {
  public:
    explicit EditorAdapter(VstSynth& synth);

    bool getRect(ERect** rect) override;
    bool open(void* parentWindow) override;
    void close() override { editor_.close(); }
    bool isOpen() const override { return editor_.isOpen(); }
    void idle() override { editor_.idle(); }
    bool wantsKeys() const override { return editor_.wantsKeys(); }
    bool onKeyDown(const VstKeyCode& key) override;
    bool onKeyUp(const VstKeyCode& key) override;
    bool onWheel(float clicks) override { return editor_.onWheel(clicks); }
    bool setKnobMode(VstInt32 mode) override;
    void setParameter(VstInt32 index, float) override { editor_.setParameter(index); }

    editor::myEditor& editor() { return editor_; }

  private:
    SynthForEditor host_;
    editor::myEditor editor_;
    ERect rect_ = {};
};

}  // namespace plugin
