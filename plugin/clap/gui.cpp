// The editor's life, and what the player does in it.
#include <cstring>
#include <exception>

#include "plugin/clap/editor_window.h"
#include "plugin/clap/shell.h"

namespace clap {

namespace {

constexpr uint32_t kIdleMilliseconds = 20;

}  // namespace

bool EditorWindow::setParent(void* parent) {
    hide();
    parent_ = parent;
    return show();
}

bool EditorWindow::show() {
    if (editor_.isOpen()) return true;
    if (!parent_) return false;
    try {
        if (!editor_.open(parent_)) return false;
        timer_ = std::make_unique<IdleTimer>(host_, timers_, kIdleMilliseconds);
        return true;
    } catch (const std::exception&) {  // no memory, or no thread
        hide();
        return false;
    }
}

void EditorWindow::hide() {
    timer_.reset();
    if (editor_.isOpen()) editor_.close();
}

void EditorWindow::onTimer(Id timer) {
    if (timer_ && timer_->isTimer(timer)) editor_.idle();
}

void EditorWindow::onCallback() {
    if (timer_ && timer_->takeCallback()) editor_.idle();
}

bool Shell::isGuiSupported(const char* api, bool isFloating) {
    return api && std::strcmp(api, kWindowApi) == 0 && !isFloating;
}

bool Shell::preferredGui(const char** api, bool* isFloating) {
    if (api) *api = kWindowApi;
    if (isFloating) *isFloating = false;
    return true;
}

bool Shell::createGui(const char* api, bool isFloating) {
    if (editor_ || !isGuiSupported(api, isFloating)) return false;
    editor_ = std::make_shared<EditorWindow>(instrument_, host_, hostTimers_);
    return true;
}

void Shell::destroyGui() {
    const auto editor = std::move(editor_);
    if (editor) editor->hide();
}

bool Shell::setGuiScale(double scale) {
    if (editor_) editor_->setScale(scale);
    return editor_ != nullptr;
}

bool Shell::guiSize(uint32_t* width, uint32_t* height) {
    if (!editor_ || !width || !height) return false;
    const editor::EditorRect size = editor_->size();
    *width = static_cast<uint32_t>(size.right - size.left);
    *height = static_cast<uint32_t>(size.bottom - size.top);
    return true;
}

// By its zoom alone.
bool Shell::setGuiSize(uint32_t width, uint32_t height) {
    uint32_t ownWidth = 0;
    uint32_t ownHeight = 0;
    return guiSize(&ownWidth, &ownHeight) && width == ownWidth && height == ownHeight;
}

bool Shell::setGuiParent(const Window* window) {
    if (!editor_ || !window || !isGuiSupported(window->api, false)) return false;
    // Both systems' handles have the size of a pointer.
    return window->ptr && editor_->setParent(window->ptr);
}

bool Shell::showGui() {
    return editor_ && editor_->show();
}

bool Shell::hideGui() {
    if (editor_) editor_->hide();
    return editor_ != nullptr;
}

// A host that refuses shows a part.
void Shell::resizeEditor(int width, int height) {
    if (!hostGui_ || !hostGui_->request_resize) return;
    hostGui_->request_resize(&host_, static_cast<uint32_t>(width), static_cast<uint32_t>(height));
}

// The host may have put the instrument to sleep.
void Shell::keyPlayed() {
    if (host_.request_process) host_.request_process(&host_);
}

void Shell::gestureBegins(int parameter) {
    if (!state::isParameter(parameter)) return;
    held_ |= std::uint64_t{1} << parameter;
    markEdit(parameter);
}

void Shell::edited(int parameter, float) {
    if (state::isParameter(parameter)) markEdit(parameter);
}

void Shell::gestureEnds(int parameter) {
    if (!state::isParameter(parameter)) return;
    held_ &= ~(std::uint64_t{1} << parameter);
    markEdit(parameter);
}

// The next block or flush takes it to the host.
void Shell::markEdit(int parameter) {
    edits_.mark(std::uint64_t{1} << parameter);
    if (hostParams_ && hostParams_->request_flush) hostParams_->request_flush(&host_);
}

}  // namespace clap
