// What the user has done to the parameters, to take it back and to do it again.
#include "editor/edit_history.h"

#include <chrono>
#include <utility>

namespace editor {

namespace {

constexpr std::uint64_t kMergeTime = 700;  // milliseconds

std::uint64_t now() {
    using namespace std::chrono;
    return static_cast<std::uint64_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

}  // namespace

Values valuesOf(const EditorHost& host) {
    Values values;
    for (int i = 0; i < state::kNumParams; ++i) values[i] = host.parameter(i);
    return values;
}

void EditHistory::begin() {
    if (depth_++ > 0) return;
    program_ = host_.program();
    before_ = valuesOf(host_);
}

void EditHistory::end(const std::string& name, int parameter) {
    if (depth_ == 0 || --depth_ > 0 || host_.program() != program_) return;
    Values after = valuesOf(host_);
    if (parameter >= 0) {  // meanwhile the host may have moved others
        const float value = after[parameter];
        after = before_;
        after[parameter] = value;
    }
    if (after == before_) return;
    steps_.resize(done_);
    if (parameter >= 0 && joinsLatest(parameter)) {
        Step& latest = steps_.back();
        latest.after[parameter] = after[parameter];
        latest.ended = now();
        if (latest.after == latest.before) steps_.pop_back();
        done_ = steps_.size();
        return;
    }
    keep({name, program_, parameter, now(), before_, after, {}, {}});
}

void EditHistory::keep(Step step) {
    steps_.resize(done_);
    if (steps_.size() == kMostSteps) steps_.erase(steps_.begin());
    steps_.push_back(std::move(step));
    done_ = steps_.size();
}

void EditHistory::did(const std::string& name, std::function<void()> undo,
                      std::function<void()> redo) {
    keep({name, host_.program(), kAllParameters, 0, {}, {}, std::move(undo), std::move(redo)});
}

bool EditHistory::joinsLatest(int parameter) const {
    if (steps_.empty()) return false;
    const Step& latest = steps_.back();
    return latest.parameter == parameter && latest.program == program_ &&
           latest.after[parameter] == before_[parameter] && now() - latest.ended < kMergeTime;
}

bool EditHistory::undo() {
    if (done_ == 0 || depth_ > 0) return false;
    const Step& step = steps_[--done_];
    send(step, step.after, step.before);
    return true;
}

bool EditHistory::redo() {
    if (done_ == steps_.size() || depth_ > 0) return false;
    const Step& step = steps_[done_++];
    send(step, step.before, step.after);
    return true;
}

// Only what the step has changed goes back, so changes from elsewhere stay.
void EditHistory::send(const Step& step, const Values& from, const Values& to) {
    if (step.undo) return &to == &step.before ? step.undo() : step.redo();
    if (step.program != host_.program()) host_.setProgram(step.program);
    for (int i = 0; i < state::kNumParams; ++i) {
        if (from[i] == to[i]) continue;
        host_.beginEdit(i);
        host_.setParameterAutomated(i, to[i]);
        host_.endEdit(i);
    }
}

void EditHistory::apply(const Values& values, const std::string& name) {
    begin();
    send({name, host_.program(), -1, 0, {}, {}, {}, {}}, valuesOf(host_), values);
    end(name);
}

}  // namespace editor
