// Loads bank and preset files into an instrument and saves its state to such files.
#pragma once

#include <string>

#include "host/plugin_host.h"

namespace host {

// The whole file is read and checked before the instrument is called. Both functions accept either
// form. They throw Error if the file cannot be used or the instrument refuses it.
void loadBank(PluginHost& host, const std::string& path);
// Loads into the current program.
void loadPreset(PluginHost& host, const std::string& path);

// Writes a chunk if the instrument supports chunks, else lists. The instrument's state is unchanged
// afterwards, but one without chunks visits all its programs. All throw Error.
std::string bankBytes(PluginHost& host);  // the contents of the file
void saveBank(PluginHost& host, const std::string& path);
void savePreset(PluginHost& host, const std::string& path);

}  // namespace host
