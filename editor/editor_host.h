// What the editor asks of its instrument and of the program that the instrument runs in.
#pragma once

#include <cstdint>
#include <string>

#include "state/controller_map.h"

namespace editor {

// Called on the host's user-interface thread. Parameter and program indices are in range, values
// are 0..1, texts are UTF-8.
class EditorHost {
  public:
    virtual ~EditorHost() = default;

    virtual int parameterCount() const = 0;
    virtual float parameter(int index) const = 0;
    virtual void setParameter(int index, float value) = 0;
    virtual void setParameterAutomated(int index, float value) = 0;  // and tells the host
    // Around everything that one gesture sets.
    virtual void beginEdit(int index) = 0;
    virtual void endEdit(int index) = 0;
    virtual std::string parameterName(int index) const = 0;
    virtual std::string parameterDisplay(int index) const = 0;
    virtual std::string parameterLabel(int index) const = 0;
    // One bit a parameter: which have a new value since the last call.
    virtual std::uint64_t takeChangedParameters() = 0;

    virtual int programCount() const = 0;
    virtual int program() const = 0;
    virtual void setProgram(int program) = 0;
    virtual std::string programName(int program) const = 0;
    virtual void renameProgram(int program, const std::string& name) = 0;

    virtual int heldNotes() const = 0;
    virtual int lastKey() const = 0;  // MIDI key of the last note, -1 before the first
    virtual float outputLevel() const = 0;
    virtual int chorusTapCount() const = 0;
    virtual float chorusTap(int tap) const = 0;  // 0..1 within its range, or beyond

    virtual state::LearnSlot& learnSlot() = 0;
    virtual void sizeWindow(int width, int height) = 0;  // asks for another size, in pixels

    bool isParameter(int tag) const { return tag >= 0 && tag < parameterCount(); }
};

}  // namespace editor
