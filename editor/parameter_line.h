// The editor's texts about a parameter: its value with units, and what it does.
#pragma once

#include <string>

#include "editor/editor_host.h"

namespace editor {

// "61.2 %", "A2", "On".
std::string valueWithUnit(const EditorHost& host, int parameter);
// The same for a small field: "61 %".
std::string shortValueWithUnit(const EditorHost& host, int parameter);
// "Attack 118.2 ms", "Ensemble off".
std::string titleAndValue(const EditorHost& host, int parameter);
// The name on the panel: "Attack", "Ensemble".
std::string panelName(int parameter);
// One sentence.
std::string whatItDoes(int parameter);
// "CC 74", or nothing while no controller is bound.
std::string boundController(int parameter);

}  // namespace editor
