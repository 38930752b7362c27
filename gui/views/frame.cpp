// The outermost view. It owns the picture, the window, the timers and the input of one editor.
#include "gui/views/frame.h"
#include "gui/headless.h"
#include "platform/two_threads.h"

#include <algorithm>
#include <atomic>
#include <set>
#include <utility>

namespace VSTGUI {
namespace {

constexpr uint32_t kIdleViewTime = 1000 / 30;  // milliseconds

}  // namespace

int32_t CFrame::kDefaultKnobMode = kCircularMode;

CFrame::CFrame(const CRect& size, VSTGUIEditorInterface* editor)
    : CViewContainer(size), editor_(editor), input_(*this) {}

bool CFrame::open(void* parent, PlatformType, IPlatformFrameConfig*) {
    if (!parent || open_) return false;
    surface_.resize(getWidth(), getHeight());
    if (!headless::isActive()) {
        const PixelBuffer& shown = surface_.picture();
        window_ = openNativeWindow(parent, shown.width(), shown.height(), input_);
        if (!window_) return false;
    }
    open_ = true;
    frame_ = this;
    timers_.open();
    idleTimer_ = makeOwned<CVSTGUITimer>([this](CVSTGUITimer*) { callIdleViews(); }, kIdleViewTime);
    forEachChild([this](CView* child) { child->attached(this); });
    return true;
}

void CFrame::close() {
    if (closing_) return;  // committing the last text entry may close the editor
    closing_ = true;
    if (open_) input_.finish();
    open_ = false;
    removeAll();
    idleTimer_ = nullptr;
    timers_.close();
    if (window_) window_->close();
    frame_ = nullptr;
    forget();
}

void CFrame::idle() {
    if (!open_) return;
    const auto alive = shared(this);
    timers_.makeCurrent();
    if (!serving_) {  // a listener may call idle during an event
        serving_ = true;
        if (window_) window_->pump();
        timers_.callDue();
        serving_ = false;
    }
    redraw();
}

void CFrame::redraw() {
    if (!open_ || drawing_) return;
    drawing_ = true;
    if (!std::exchange(isPrepared_, true)) preparePictures();
    if (std::exchange(mayHaveDirtyViews_, false)) invalidateIfDirty();
    isCovered_ = isCoveredByBackground();
    surface_.redraw(
        [this](CDrawContext& context, const CRect& area) {
            // A transparent view must not blend with the previous drawing.
            if (!isCovered_) {
                context.setFillColor(kBlackCColor);
                context.drawRect(area, kDrawFilled);
            }
            drawRect(&context, area);
        },
        [this](const IntRect& area) {
            if (window_) window_->show(surface_.picture(), area);
        });
    if (window_) window_->flush();
    drawing_ = false;
}

// Two threads unpack what the first drawing needs. The background takes as long as all others
// together.
void CFrame::preparePictures() const {
    std::vector<const PictureRows*> pictures;
    std::set<const PictureRows*> known;
    const std::function<void(const CView*)> addFrom = [&](const CView* view) {
        if (!view->isVisible()) return;
        const CBitmap* const shown = view->getDrawBackground();
        if (shown && shown->isLoaded()) {
            const auto& picture = shown->getBestPlatformBitmapForScaleFactor(getZoom())->pixels();
            if (known.insert(&picture).second) pictures.push_back(&picture);
        }
        if (const auto* const container = dynamic_cast<const CViewContainer*>(view))
            container->forEachChild(addFrom);
    };
    addFrom(this);
    if (pictures.size() == 1) return pictures.front()->prepare();
    if (pictures.empty()) return;
    std::atomic<size_t> next{0};
    platform::inTwoThreads([&] {
        for (size_t i = next++; i < pictures.size(); i = next++) pictures[i]->prepare();
    });
}

bool CFrame::isCoveredByBackground() const {
    const CBitmap* const picture = getDrawBackground();
    if (!picture || !picture->isLoaded()) return false;
    const CPoint size = picture->getSize();
    return size.x >= getWidth() && size.y >= getHeight() &&
           picture->getBestPlatformBitmapForScaleFactor(getZoom())->pixels().isOpaque();
}

void CFrame::showAgain(const IntRect& area) {
    if (!open_ || !window_) return;
    window_->show(surface_.picture(), area);
    window_->flush();
}

void CFrame::takeKeyboard() {
    if (window_) window_->takeKeyboard();
}

void CFrame::hidePointer() {
    if (window_) window_->hidePointer();
}

void CFrame::showPointer() {
    if (window_) window_->showPointer();
}

bool CFrame::getSize(CRect& size) const {
    if (!open_) return false;
    size = CRect(0, 0, surface_.picture().width(), surface_.picture().height());
    return true;
}

bool CFrame::setSize(CCoord width, CCoord height) {
    CRect size = getViewSize();
    setViewSize(size.setSize(CPoint(width, height)), false);
    if (!open_) return true;
    surface_.resize(width, height);
    keptBackground_.forget();
    fitWindow();
    return true;
}

bool CFrame::setZoom(double zoom) {
    const double before = surface_.zoom();
    surface_.setZoom(zoom);
    keptBackground_.forget();
    isPrepared_ = false;
    fitWindow();
    input_.scalePosition(before / surface_.zoom());
    return surface_.zoom() == zoom;
}

void CFrame::fitWindow() {
    if (window_) window_->resize(surface_.picture().width(), surface_.picture().height());
}

int32_t CFrame::getKnobMode() const {
    const int32_t wanted = editor_ ? editor_->getKnobMode() : -1;
    return wanted == -1 ? kDefaultKnobMode : wanted;
}

void CFrame::beginEdit(int32_t tag) {
    if (editor_) editor_->beginEdit(tag);
}

void CFrame::endEdit(int32_t tag) {
    if (editor_) editor_->endEdit(tag);
}

bool CFrame::setFocusView(CView* view) {
    input_.setFocusView(view);
    return getFocusView() == view;
}

bool CFrame::getCurrentMouseLocation(CPoint& where) const {
    where = input_.position();
    return open_;
}

std::optional<ModalViewSessionID> CFrame::beginModalViewSession(CView* view) {
    return input_.beginModal(view);
}

bool CFrame::doAfterEventProcessing(std::function<void()>&& function) {
    return input_.afterEvent(std::move(function));
}

void CFrame::setBackground(CBitmap* background) {
    CViewContainer::setBackground(background);
    keptBackground_.forget();
}

void CFrame::drawBackground(CDrawContext& context, CBitmap& picture) {
    const CPoint size(getWidth(), getHeight());
    if (isCovered_ && keptBackground_.draw(context, picture, size, getZoom())) return;
    CViewContainer::drawBackground(context, picture);
}

void CFrame::invalid() {
    setDirty(false);
    invalidRect(getViewSize());
}

void CFrame::invalidRect(const CRect& rect) {
    if (!open_ || !isVisible()) return;
    surface_.invalidate(rect);
    // A view that draws a part of itself while idle moves, and will draw the next part soon.
    if (calledView_ && getZoom() > 1 && calledView_->getParentView() == this &&
        calledView_->getViewSize() != rect)
        keptBackground_.keep(surface_.pixelsOf(calledView_->getViewSize()));
}

void CFrame::removeIdleView(CView* view) {
    idleViews_.erase(std::remove(idleViews_.begin(), idleViews_.end(), view), idleViews_.end());
}

void CFrame::forgetView(CView* view) {
    removeIdleView(view);
    input_.forgetView(view);
}

// A view may come and go meanwhile.
void CFrame::callIdleViews() {
    for (size_t i = 0; i < idleViews_.size(); ++i) {
        const auto view = shared(idleViews_[i]);
        calledView_ = view;
        view->onIdle();
        calledView_ = nullptr;
    }
}

}  // namespace VSTGUI
