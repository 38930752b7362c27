// Life of the window, and what it tells the host.
#include "plugin/lv2/ui.h"

#include <cstdlib>
#include <exception>
#include <utility>

#include <xcb/xcb.h>

namespace lv2 {

namespace {

// The topmost window inside another one; 0: there is none.
xcb_window_t windowInside(xcb_window_t parent) {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const auto asked = xcb_query_tree(connection, parent);
    auto* const tree = xcb_query_tree_reply(connection, asked, nullptr);
    xcb_window_t found = 0;
    if (tree && xcb_query_tree_children_length(tree) > 0) {
        found = xcb_query_tree_children(tree)[xcb_query_tree_children_length(tree) - 1];
    }
    std::free(tree);
    xcb_disconnect(connection);
    return found;
}

}  // namespace

Ui::Ui(std::shared_ptr<Shell> shell, LV2UI_Write_Function write, LV2UI_Controller controller,
       Features features)
    : shell_(std::move(shell)),
      write_(write),
      controller_(controller),
      touch_(feature<LV2UI_Touch>(features, LV2_UI__touch)),
      resize_(feature<LV2UI_Resize>(features, LV2_UI__resize)),
      editor_(shell_->instrument()) {
    editor_.setContentScale(numberOption(features, LV2_UI__scaleFactor, 0.0));
}

Ui::~Ui() {
    if (!editor_.isOpen()) return;
    editor_.close();
    shell_->show(nullptr);
}

std::uint32_t Ui::open(std::uint32_t parent) {
    // What has changed is told to one editor.
    if (!shell_->show(this)) return 0;
    try {
        void* const window = reinterpret_cast<void*>(std::uintptr_t{parent});
        if (editor_.open(window)) {
            const editor::EditorRect size = editor_.getRect();
            requestSize(size.right, size.bottom);
            return windowInside(parent);
        }
    } catch (const std::exception&) {  // no memory for a skin's pictures
        editor_.close();
    }
    shell_->show(nullptr);
    return 0;
}

void Ui::idle() {
    editor_.idle();
    shell_->writePorts();
}

void Ui::write(int parameter, float port) {
    if (write_) write_(controller_, static_cast<std::uint32_t>(parameter), sizeof port, 0, &port);
}

void Ui::touch(int parameter, bool grabbed) {
    if (touch_) touch_->touch(touch_->handle, static_cast<std::uint32_t>(parameter), grabbed);
}

void Ui::requestSize(int width, int height) {
    if (resize_ && resize_->ui_resize) resize_->ui_resize(resize_->handle, width, height);
}

}  // namespace lv2
