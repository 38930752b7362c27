// Adapts the editor to AEffEditor.
#pragma once

#include "editor/editor_host.h"
#include "editor/my_editor.h"
#include "plugin/vst2/aeff_editor.h"

namespace vst2 {

class EditorAdapter final : public AEffEditor {
  public:
    EditorAdapter(AudioEffect& effect, editor::EditorHost& instrument)
        : AEffEditor(&effect), editor_(instrument) {}

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

    editor::myEditor& editor() { return editor_; }

  private:
    editor::myEditor editor_;
    ERect rect_ = {};
};

}  // namespace vst2
