// What a user types to choose an instrument's file, program or parameter.
#pragma once

#include <string>
#include <vector>

#include "host/plugin_host.h"

namespace host {

// The name of the instrument that is delivered.
std::string instrumentFile();

// Returns typed. If that is empty, returns the instrument beside the program, else the one
// installed in ../lib/vst.
std::string instrumentPath(const std::string& typed);

// Makes the names of a list distinct: the second of two equal names gets "#2".
std::vector<std::string> distinctNames(const std::vector<std::string>& names);
std::vector<std::string> distinctProgramNames(PluginHost& host);
std::vector<std::string> distinctParameterNames(const PluginHost& host);

// The index that text denotes: a number, or one of names. what is "program" or "parameter", for
// errors. Throws Error.
int indexOf(const std::string& text, const std::vector<std::string>& names,
            const std::string& what);

}  // namespace host
