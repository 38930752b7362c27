// What the user has done to the parameters, to take it back and to do it again.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "editor/editor_host.h"
#include "state/parameters.h"

namespace editor {

// All values of a program.
using Values = std::array<float, state::kNumParams>;
Values valuesOf(const EditorHost& host);

// One step is everything that changes between begin and end. Steps may be nested; the outermost
// pair counts. Changes by the host, by MIDI and by programs are no steps.
class EditHistory {
  public:
    static constexpr std::size_t kMostSteps = 200;
    static constexpr int kAllParameters = -1;

    explicit EditHistory(EditorHost& host) : host_(host) {}

    void begin();
    // `name` is what the step is called. A step that changes nothing is not kept. If only one
    // parameter is meant, the step joins one of the same that ended shortly before.
    void end(const std::string& name, int parameter = kAllParameters);

    // The names of the steps that are next, or nothing.
    std::string undoName() const { return done_ > 0 ? steps_[done_ - 1].name : ""; }
    std::string redoName() const { return done_ < steps_.size() ? steps_[done_].name : ""; }
    bool undo();
    bool redo();

    // Keeps a step of another kind that has just been done.
    void did(const std::string& name, std::function<void()> undo, std::function<void()> redo);

    // Sets all values that differ, telling the host, as one step.
    void apply(const Values& values, const std::string& name);

  private:
    struct Step {
        std::string name;
        int program;
        int parameter;        // or kAllParameters
        std::uint64_t ended;  // milliseconds
        Values before;
        Values after;
        std::function<void()> undo;  // of steps of another kind
        std::function<void()> redo;
    };

    bool joinsLatest(int parameter) const;
    void keep(Step step);
    void send(const Step& step, const Values& from, const Values& to);

    EditorHost& host_;
    int depth_ = 0;
    int program_ = 0;
    Values before_{};
    std::vector<Step> steps_;
    std::size_t done_ = 0;  // steps before this one have been done
};

}  // namespace editor
