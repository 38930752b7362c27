// What a user says of an instrument: which file it is, which of its programs or parameters.
#pragma once

#include <string>
#include <vector>

#include "host/plugin_host.h"

namespace host {

// typed, or when that is empty the instrument beside the program, else that of the system the
// program is installed in: ../lib/vst.
std::string instrumentPath(const std::string& typed);

// The names of a list as they are told apart: the second of two equal names gets "#2".
std::vector<std::string> distinctNames(const std::vector<std::string>& names);
std::vector<std::string> distinctProgramNames(PluginHost& host);
std::vector<std::string> distinctParameterNames(const PluginHost& host);

// The index that text means: a number, or one of names. what is "program" or "parameter". Throws
// Error.
int indexOf(const std::string& text, const std::vector<std::string>& names,
            const std::string& what);

}  // namespace host
