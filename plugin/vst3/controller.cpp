// What the host hears, and the editor's view.
#include <cstring>
#include <exception>

#include "editor/views/about_view.h"
#include "plugin/vst3/shell.h"
#include "plugin/vst3/view.h"

namespace vst3 {

tresult Shell::setComponentHandler(IComponentHandler* handler) {
    handler_ = shared(handler);
    return kResultOk;
}

void Shell::gestureBegins(int parameter) {
    if (handler_) handler_->beginEdit(static_cast<ParamID>(parameter));
}

void Shell::edited(int parameter, float value) {
    if (state::isParameter(parameter)) told_.set(parameter, value);
    if (handler_) handler_->performEdit(static_cast<ParamID>(parameter), state::engineValue(value));
}

void Shell::gestureEnds(int parameter) {
    if (handler_) handler_->endEdit(static_cast<ParamID>(parameter));
}

// Any thread: values and the program are compared when the host is told.
void Shell::displayChanged(instrument::DisplayChange change) {
    if (change == instrument::DisplayChange::kProgramName) namesChanged_ = true;
}

bool Shell::resizeEditor(int width, int height) {
    return view_ && view_->requestSize(width, height);
}

void Shell::tellHost() {
    if (!handler_) return;
    const auto handler = shared(handler_.get());  // it may be taken away meanwhile
    const bool changed = told_.takeChanged(instrument_) != 0;
    if (told_.takeChangedProgram(instrument_)) {
        handler->beginEdit(kProgramId);
        handler->performEdit(kProgramId, getParamNormalized(kProgramId));
        handler->endEdit(kProgramId);
    }
    if (changed) handler->restartComponent(kParamValuesChanged);
    if (!namesChanged_.exchange(false)) return;
    if (const auto units = query<IUnitHandler>(handler.get())) {
        units->notifyProgramListChange(kProgramListId, kAllProgramInvalid);
    }
}

IPlugView* Shell::createView(FIDString name) {
    if (!name || std::strcmp(name, kViewTypeEditor) != 0) return nullptr;
    try {
        return new View(*this);
    } catch (const std::exception&) {  // no memory
        return nullptr;
    }
}

bool Shell::show(View* view) {
    if (view && view_) return false;
    view_ = view;
    return true;
}

tresult Shell::setKnobMode(int32 mode) {
    if (mode < kCircularMode || mode > kLinearMode) return kInvalidArgument;
    knobMode_ = mode;
    if (view_) view_->setKnobMode(mode);
    return kResultOk;
}

tresult Shell::openHelp(TBool onlyCheck) {
    if (!onlyCheck) editor::openHelp();
    return kResultOk;
}

}  // namespace vst3
