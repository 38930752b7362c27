// What the editor adds to the controls of a skin: explanations, keys, MIDI learn and commands.
#include <algorithm>

#include "editor/parameter_line.h"
#include "editor/views/about_view.h"
#include "editor/views/pop_up_menu.h"
#include "editor/views/size_grip.h"
#include "editor/xml_gui_editor.h"
#include "state/controller_map.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr uint32_t kLongestLearning = 20000;  // milliseconds

struct Explanation {
    int tag;
    const char* title;
    const char* text;
};
constexpr Explanation kExplanations[] = {
    {kSkinSelectorTag, "Skin", "The installed looks."},
    {kFirstSwitchTag, "Groups", "Chooses which of the upper sections play."},
    {kFirstSwitchTag + 1, "Bass", "Switches cello and contrabass."},
    {kFirstSwitchTag + 2, "Ensemble", "Switches the ensemble."},
    {kFirstSwitchTag + 3, "Effects", "Switches phaser and reverb."},
    {kUndoCommand, "Undo", "Takes the latest change back (Ctrl+Z)."},
    {kRedoCommand, "Redo", "Makes it again (Ctrl+Y)."},
    {kCompareCommand, "Compare A and B", "Goes to the other version of this sound."},
    {kCopyCommand, "Copy", "Makes the other version equal to this one."},
    {kVaryCommand, "Vary", "Moves the values of one panel a little."},
    {kControllersCommand, "Controllers", "Lists the learnt controllers and forgets them."},
    {kSizeCommand, "Size", "The size of the editor."},
    {kHelpCommand, "Help", "Opens the help text."},
    {kSoundsCommand, "Sounds", "All sounds, your own and files (Ctrl+F)."},
    {kToolsCommand, "Tools", "Undo, compare, vary, controllers and the size."},
};

}  // namespace

xmlGuiEditor::Aids::Aids(xmlGuiEditor& editor)
    : entry(editor.host_),
      learning(makeOwned<COutline>(kLearningColor, 3, 2)),
      focus(makeOwned<COutline>(kFocusColor, 3, 2)),
      hover(makeOwned<COutline>(kHoverColor, 1, 1)),
      help([&editor](CView& view) { return editor.describe(view); }),
      keys(makeOwned<CKeyView>([&editor](KeyboardEvent& event) { editor.useKey(event); })) {}

void xmlGuiEditor::addAids() {
    aids_ = std::make_unique<Aids>(*this);
    const std::initializer_list<CView*> views = {aids_->keys.get(),    aids_->hover.get(),
                                                 aids_->focus.get(),   aids_->learning.get(),
                                                 aids_->entry.field(), aids_->help.tip()};
    for (CView* const view : views) {
        view->remember();
        frame->addView(view);
    }
}

std::vector<std::string> xmlGuiEditor::describe(CView& view) const {
    if (dynamic_cast<const CSizeGrip*>(&view)) return {"Size", "Drag to another size."};
    const auto* const control = dynamic_cast<const CControl*>(&view);
    if (!control) return {};
    const int tag = control->getTag();
    if (host_.isParameter(tag)) {
        std::vector<std::string> lines = {titleAndValue(host_, tag), whatItDoes(tag)};
        const std::string controller = boundController(tag);
        if (!controller.empty()) lines.push_back("Follows " + controller + '.');
        return lines;
    }
    for (const Explanation& row : kExplanations) {
        if (row.tag == tag) return {row.title, row.text};
    }
    if (dynamic_cast<const CSplashScreen*>(control)) return {"About", "Who made this, and help."};
    return {};
}

// A key that no control has used.
void xmlGuiEditor::useKey(KeyboardEvent& event) {
    if (event.type != EventType::KeyDown) return;
    aids_->help.left();
    if (event.virt == VirtualKey::Escape && host_.learnSlot().armed() != state::LearnSlot::kNone) {
        host_.learnSlot().disarm();
        event.consumed = true;
    } else if (event.virt == VirtualKey::Tab) {
        moveFocus(event.modifiers.has(ModifierKey::Shift));
        event.consumed = true;
    } else if (event.virt == VirtualKey::Return && event.modifiers.empty()) {
        auto* const about = dynamic_cast<CSplashScreen*>(frame->getFocusView());
        event.consumed = about && about->splash();
    } else if (event.virt == VirtualKey::F2) {
        const auto range = controls_.equal_range(currentTag_);
        for (auto it = range.first; it != range.second; ++it) {
            if (it->second != currentView_ || !gestures_.takesTyping(*it->second)) continue;
            aids_->entry.open(*it->second);
            event.consumed = true;
            return;
        }
    } else if (event.modifiers.has(ModifierKey::Control)) {
        const char32_t letter = event.character | 0x20;
        const bool shift = event.modifiers.has(ModifierKey::Shift);
        if (letter == 'z' && !shift) event.consumed = tools_.history().undo();
        if (letter == 'f') event.consumed = openBrowser();
        if (letter == 'y' || (letter == 'z' && shift)) event.consumed = tools_.history().redo();
    }
}

// Goes through the controls in the order of the skin. The keyboard's control is outlined until the
// pointer takes over.
void xmlGuiEditor::moveFocus(bool back) {
    std::vector<CView*> stops;
    frame->forEachChild([&](CView* view) {
        if (view == aids_->keys || !view->wantsFocus() || !view->isVisible()) return;
        if (!dynamic_cast<CTextEdit*>(view)) stops.push_back(view);
    });
    if (stops.empty()) return;
    const auto at = std::find(stops.begin(), stops.end(), frame->getFocusView());
    const auto count = static_cast<std::ptrdiff_t>(stops.size());
    std::ptrdiff_t next = back ? count - 1 : 0;
    if (at != stops.end()) next = (at - stops.begin() + (back ? count - 1 : 1)) % count;
    frame->setFocusView(stops[next]);
    aids_->focus->surround(stops[next]);
    onMouseEntered(stops[next], frame);  // the read-out shows its value
    aids_->hover->surround(nullptr);
}

// The engine disarms when a controller arrives.
void xmlGuiEditor::followLearning() {
    if (!aids_) return;
    if (!frame->getFocusView() && !frame->getModalView()) frame->setFocusView(aids_->keys);
    const int armed = host_.learnSlot().armed();
    if (armed == learning_) return;
    learning_ = armed;
    learningEnds_ = makeOwned<CVSTGUITimer>(
        [this](CVSTGUITimer* timer) {
            timer->stop();
            host_.learnSlot().disarm();
        },
        kLongestLearning, armed != state::LearnSlot::kNone);
    CView* outlined = nullptr;
    const auto range = controls_.equal_range(armed);
    for (auto it = range.first; it != range.second && armed >= 0; ++it) {
        if (it->second->wantsFocus()) outlined = it->second;
    }
    aids_->learning->surround(outlined);
}

bool xmlGuiEditor::isSwitchAt(int number, int position) const {
    bool known = false;
    for (const SwitchPreset& preset : switchPresets_) {
        if (preset.switchNumber != number || preset.position != position) continue;
        known = true;
        if ((host_.parameter(preset.parameter) > 0.5f) != (preset.value > 0.5f)) return false;
    }
    return known;
}

// A preset switch shows where its parameters are, however they came there.
void xmlGuiEditor::showSwitch(CControl& control) {
    const int number = control.getTag() - kFirstSwitchTag;
    if (auto* const menu = dynamic_cast<COptionMenu*>(&control)) {
        for (int i = 0; i < menu->getNbEntries(); ++i) {
            menu->getEntry(i)->setChecked(isSwitchAt(number, i));
        }
    } else if (!dynamic_cast<CKickButton*>(&control)) {
        control.setValue(isSwitchAt(number, 1) ? 1.0f : 0.0f);
    }
}

void xmlGuiEditor::followSwitches() {
    for (auto it = controls_.lower_bound(kFirstSwitchTag);
         it != controls_.end() && isSwitch(it->first); ++it) {
        if (!it->second->isEditing()) showSwitch(*it->second);
    }
}

void xmlGuiEditor::run(int command, const CPoint& where) {
    switch (command) {
        case kUndoCommand:
            tools_.history().undo();
            break;
        case kRedoCommand:
            tools_.history().redo();
            break;
        case kCompareCommand:
            tools_.compare();
            break;
        case kCopyCommand:
            tools_.copyToOther();
            break;
        case kVaryCommand:
            return openVaryMenu(where);
        case kControllersCommand:
            return openControllerMenu(where);
        case kSizeCommand:
            return openSizeMenu(where);
        case kHelpCommand:
            return openHelp();
        case kToolsCommand:
            return openMenu(where);
        case kSoundsCommand:
            openBrowser();
            return;
        default:
            break;
    }
    showCompare();
}

// The button of the versions shows which one plays.
void xmlGuiEditor::showCompare() {
    tools_.followProgram();
    const auto range = controls_.equal_range(kCompareCommand);
    for (auto it = range.first; it != range.second; ++it) {
        if (it->second->isEditing()) continue;
        it->second->setValue(tools_.showsB() ? 1.0f : 0.0f);
    }
}

bool xmlGuiEditor::openBrowser() {
    if (!showsSkin() || frame->getModalView() || !BrowserLayout::fits(size_)) return false;
    browser_.refresh();
    const SharedPointer<CView> before(frame->getFocusView());
    const auto close = [this, before] {
        const auto end = [this, before] {
            if (!frame) return;
            frame->endModalViewSession(browsing_);
            if (before) frame->setFocusView(before);
        };
        if (!frame->doAfterEventProcessing(end)) end();
    };
    const auto view = makeOwned<CBrowserView>(size_, browser_, browserColors_, close,
                                              [this](KeyboardEvent& event) { useKey(event); });
    const auto session = frame->beginModalViewSession(view);
    if (!session) return false;
    view->remember();  // the frame's
    browsing_ = *session;
    frame->setFocusView(view);
    return true;
}

bool xmlGuiEditor::wantsText() const {
    return AEffGUIEditor::wantsText() ||
           (frame && dynamic_cast<const CBrowserView*>(frame->getModalView()));
}

// The sizes come first, then everything that the buttons of a skin can do.
void xmlGuiEditor::openMenu(const CPoint& where) {
    std::vector<int> commands;
    int current = kNoLine;
    std::vector<std::string> lines = sizeLines(current);
    const std::vector<int> steps = zoomSteps();
    const auto add = [&](const std::string& line, int command) {
        lines.push_back(line);
        commands.push_back(command);
    };
    const auto addRule = [&add] { add("", kNoTag); };
    addRule();
    const std::string undo = tools_.history().undoName();
    const std::string redo = tools_.history().redoName();
    if (!undo.empty()) add("Undo " + undo, kUndoCommand);
    if (!redo.empty()) add("Redo " + redo, kRedoCommand);
    add(tools_.showsB() ? "Go to A" : "Go to B", kCompareCommand);
    add(tools_.showsB() ? "Copy B to A" : "Copy A to B", kCopyCommand);
    addRule();
    add("Sounds...", kSoundsCommand);
    add("Vary...", kVaryCommand);
    add("Controllers...", kControllersCommand);
    addRule();
    add("Help", kHelpCommand);
    popUpMenu(*frame, where, lines, current, [this, where, steps, commands](int line) {
        const auto sizes = static_cast<int>(steps.size());
        line < sizes ? zoomTo(steps[line]) : run(commands[line - sizes], where);
    });
}

void xmlGuiEditor::openVaryMenu(const CPoint& where) {
    popUpMenu(*frame, where, SoundTools::panels(), kNoLine,
              [this](int panel) { tools_.vary(panel); });
}

// Choosing a line forgets its controller.
void xmlGuiEditor::openControllerMenu(const CPoint& where) {
    std::vector<std::string> lines;
    std::vector<int> bound;
    for (int i = 0; i < host_.parameterCount(); ++i) {
        if (state::controllerMap().controller(i) < 0) continue;
        lines.push_back("Forget " + boundController(i) + ": " + panelName(i));
        bound.push_back(i);
    }
    if (!bound.empty()) lines.emplace_back();  // a rule
    lines.emplace_back(bound.empty() ? "No controller is learnt" : "Forget all");
    popUpMenu(*frame, where, lines, kNoLine, [bound](int line) {
        const bool all = line >= static_cast<int>(bound.size());
        for (int i = 0; i < static_cast<int>(bound.size()); ++i) {
            if (!all && i != line) continue;
            state::controllerMap().bind(bound[i], state::ControllerMap::kUnbound);
        }
    });
}

}  // namespace editor
