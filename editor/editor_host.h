// What the editor needs from its instrument and from the host around it.
#pragma once

#include <bitset>
#include <cstdint>
#include <string>

#include "state/bank.h"
#include "state/controller_map.h"
#include "state/tone_curve.h"
#include "state/saved_state.h"

namespace editor {

struct OutputPeaks {
    float left = 0.0f;
    float right = 0.0f;
};

// The editor calls all of this on the host's user-interface thread. It passes only parameter and
// program indices in range. Values are 0..1 and texts are UTF-8.
class EditorHost {
  public:
    virtual ~EditorHost() = default;

    virtual int parameterCount() const = 0;
    virtual float parameter(int index) const = 0;
    virtual void setParameter(int index, float value) = 0;
    virtual void setParameterAutomated(int index, float value) = 0;  // also tells the host
    // These enclose every value that one gesture sets.
    virtual void beginEdit(int index) = 0;
    virtual void endEdit(int index) = 0;
    virtual std::string parameterName(int index) const = 0;
    virtual std::string parameterDisplay(int index) const = 0;
    virtual std::string parameterLabel(int index) const = 0;
    // One bit per parameter, set if its value has changed since the last call.
    virtual std::uint64_t takeChangedParameters() = 0;

    virtual int programCount() const = 0;
    virtual int program() const = 0;
    virtual void setProgram(int program) = 0;
    virtual std::string programName(int program) const = 0;
    virtual void renameProgram(int program, const std::string& name) = 0;
    virtual state::ProgramRecord programRecord(int program) const = 0;
    // Replaces a program and selects it. What came with a song, a bank or loadProgram is the loaded
    // program, and stays so through edits and putProgram.
    virtual void putProgram(int program, const state::ProgramRecord& record) = 0;
    virtual void loadProgram(int program, const state::ProgramRecord& record) = 0;
    virtual state::ProgramRecord loadedProgram(int program) const = 0;
    // All programs and which one is current.
    virtual state::SavedState savedState() = 0;
    virtual void loadSavedState(const state::SavedState& saved) = 0;

    virtual int heldNotes() const = 0;
    virtual int lastKey() const = 0;  // MIDI key of the latest note; -1 before the first
    virtual std::bitset<128> heldKeys() const = 0;  // by MIDI key, whoever plays them
    // Plays a MIDI key as a note of the host's would. A velocity of 0 ends the note.
    virtual void playKey(int key, int velocity) = 0;
    virtual const state::ToneCurve& toneCurve() = 0;  // of the sound as it is
    // The largest magnitudes of the output since the last call; 1 is full scale.
    virtual OutputPeaks takeOutputPeaks() = 0;
    virtual int chorusTapCount() const = 0;
    virtual float chorusTap(int tap) const = 0;  // 0..1 is the usual range; may go beyond

    virtual state::LearnSlot& learnSlot() = 0;
    virtual void sizeWindow(int width, int height) = 0;  // requests a window size in pixels

    bool isParameter(int tag) const { return tag >= 0 && tag < parameterCount(); }
};

}  // namespace editor
