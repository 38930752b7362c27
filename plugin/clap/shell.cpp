// Life, and what the host hears on its main thread.
#include "plugin/clap/shell.h"

#include <utility>

#include "plugin/clap/editor_window.h"
#include "plugin/clap/factory.h"
#include "plugin/clap/forward.h"

namespace clap {

namespace {

template <typename Extension>
void find(const clap::Host& host, const char* id, const Extension*& extension) {
    if (!extension && host.get_extension) {
        extension = static_cast<const Extension*>(host.get_extension(&host, id));
    }
}

}  // namespace

Shell::Shell(const clap::Host& host)
    : host_(host),
      plugin_{&descriptor(),
              this,
              forward<&Shell::init>,
              forward<&Shell::destroy>,
              forward<&Shell::activate>,
              forward<&Shell::deactivate>,
              forward<&Shell::startProcessing>,
              forward<&Shell::stopProcessing>,
              forward<&Shell::reset>,
              forward<&Shell::process>,
              forward<&Shell::extension>,
              forward<&Shell::onMainThread>},
      instrument_(*this) {}

Shell::~Shell() {
    destroyGui();
}

bool Shell::init() {
    find(host_, kExtParams, hostParams_);
    find(host_, kExtState, hostState_);
    find(host_, kExtGui, hostGui_);
    find(host_, kExtTimerSupport, hostTimers_);
    find(host_, kExtPresetLoad, hostPresets_);
    find(host_, kExtPresetLoadCompat, hostPresets_);
    find(host_, kExtNoteName, hostNoteNames_);
    instrument_.start(engine::kInitialRate);
    told_.take(instrument_);
    for (int i = 0; i < state::kNumParams; ++i) {
        defaults_[i] = plainOf(i, instrument_.parameter(i));
    }
    toldBassKeys_ = bassKeys();
    return true;
}

bool Shell::activate(double sampleRate, uint32_t, uint32_t) {
    if (!engine::isAcceptedRate(sampleRate)) return false;
    if (sampleRate != sampleRate_) instrument_.setSampleRate(sampleRate);
    sampleRate_ = sampleRate;
    instrument_.resume();
    // Hosts do not let go of what sounded when they deactivated.
    if (notes_.isEmpty()) return true;
    instrument_.discardEvents();
    silence(0);
    return true;
}

void Shell::deactivate() {
    instrument_.suspend();
}

void Shell::onMainThread() {
    tellHost();
    const auto editor = editor_;  // the host may destroy it meanwhile
    if (editor) editor->onCallback();
}

void Shell::onTimer(Id timer) {
    const auto editor = editor_;
    if (editor) editor->onTimer(timer);
}

// Values are compared when the host is told.
void Shell::displayChanged(instrument::DisplayChange change) {
    (change == instrument::DisplayChange::kProgramName ? namesChanged_ : valuesChanged_) = true;
    if (host_.request_callback) host_.request_callback(&host_);
}

void Shell::tellHost() {
    const bool names = namesChanged_.exchange(false);
    uint32_t flags = 0;
    if (names) flags |= kParamRescanText;
    if (valuesChanged_.exchange(false)) {
        told_.take(instrument_);
        flags |= kParamRescanValues;
    }
    if (flags && hostParams_ && hostParams_->rescan) hostParams_->rescan(&host_, flags);
    if (names && hostState_ && hostState_->mark_dirty) hostState_->mark_dirty(&host_);
    const int keys = bassKeys();
    if (std::exchange(toldBassKeys_, keys) == keys) return;
    if (hostNoteNames_ && hostNoteNames_->changed) hostNoteNames_->changed(&host_);
}

}  // namespace clap
