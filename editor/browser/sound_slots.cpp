// Whole sounds of the bank: what has been edited, and copies, which can be undone.
#include "editor/browser/sound_slots.h"

#include <cstring>

#include "state/factory_sounds.h"
#include "state/parameters.h"

namespace editor {

namespace {

// Compares what the engine would get: loaded values are limited when they are sent to it.
bool sameValues(const state::ProgramRecord& one, const state::ProgramRecord& other) {
    for (int i = 0; i < state::kNumParams; ++i) {
        if (state::engineValue(one.values[i]) != state::engineValue(other.values[i])) return false;
    }
    return true;
}

}  // namespace

bool isEdited(const EditorHost& host, int program) {
    return !sameValues(host.programRecord(program), host.loadedProgram(program));
}

const state::BankChunk* SoundSlots::factory() {
    if (!factory_) {
        factory_ = std::make_unique<state::BankChunk>();
        if (!state::readFactoryBank(*factory_)) factory_.reset();
    }
    return factory_.get();
}

bool SoundSlots::differsFromFactory() {
    const state::BankChunk* const bank = factory();
    if (!bank) return false;
    const state::ProgramRecord& delivered = bank->programs[host_.program()];
    const state::ProgramRecord here = host_.programRecord(host_.program());
    return !sameValues(here, delivered) || state::nameOf(here) != state::nameOf(delivered);
}

void SoundSlots::revert() {
    replace("revert", host_.loadedProgram(host_.program()), false);
}

void SoundSlots::revertToFactory() {
    if (factory()) replace("factory sound", factory_->programs[host_.program()], false);
}

void SoundSlots::paste() {
    if (copied_) replace("paste " + state::nameOf(*copied_), *copied_, false);
}

void SoundSlots::load(const state::ProgramRecord& sound) {
    replace("load " + state::nameOf(sound), sound, true);
}

void SoundSlots::replace(const std::string& what, const state::ProgramRecord& sound, bool loaded) {
    EditorHost& host = host_;
    const int program = host.program();
    const state::ProgramRecord before = host.programRecord(program);
    const state::ProgramRecord loadedBefore = host.loadedProgram(program);
    const auto redo = [&host, program, sound, loaded] {
        loaded ? host.loadProgram(program, sound) : host.putProgram(program, sound);
    };
    const auto undo = [&host, program, before, loaded, loadedBefore] {
        if (loaded) host.loadProgram(program, loadedBefore);
        host.putProgram(program, before);
    };
    redo();
    history_.did(what, undo, redo);
}

// Renaming a sound as it is called tells the host to look at all names.
void SoundSlots::putBank(const state::SavedState& bank) {
    host_.loadSavedState(bank);
    host_.renameProgram(bank.program, host_.programName(bank.program));
}

void SoundSlots::loadBank(const state::SavedState& bank) {
    const state::SavedState before = host_.savedState();
    const auto redo = [this, bank] { putBank(bank); };
    redo();
    history_.did(
        "load bank", [this, before] { putBank(before); }, redo);
}

}  // namespace editor
