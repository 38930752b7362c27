// The editor in an LV2 host's window.
#pragma once

#include <cstdint>
#include <memory>

#include "editor/my_editor.h"
#include "lv2/ui/ui.h"
#include "plugin/lv2/features.h"
#include "plugin/lv2/shell.h"

namespace lv2 {

// Shares the instrument with its shell, which it keeps alive. User-interface thread.
class Ui {
  public:
    Ui(std::shared_ptr<Shell> shell, LV2UI_Write_Function write, LV2UI_Controller controller,
       Features features);
    ~Ui();
    Ui(const Ui&) = delete;
    Ui& operator=(const Ui&) = delete;

    // The window inside the host's that shows the editor; 0: there is none.
    std::uint32_t open(std::uint32_t parent);
    void idle();

    // The shell's, for the host.
    void write(int parameter, float port);
    void touch(int parameter, bool grabbed);
    bool requestSize(int width, int height);

  private:
    const std::shared_ptr<Shell> shell_;
    const LV2UI_Write_Function write_;
    const LV2UI_Controller controller_;
    const LV2UI_Touch* const touch_;    // null: the host does not want to know
    const LV2UI_Resize* const resize_;  // the same
    editor::myEditor editor_;
};

}  // namespace lv2
