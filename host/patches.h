// Brings bank and preset files into an instrument, and its state into such files.
#pragma once

#include <string>

#include "host/plugin_host.h"

namespace host {

// The file is read whole and checked before the instrument hears of it. Both take either form, and
// throw Error for a file that cannot be used and for an instrument that refuses it.
void loadBank(PluginHost& host, const std::string& path);
// Into the current program.
void loadPreset(PluginHost& host, const std::string& path);

// A chunk when the instrument has chunks, else lists. Throw Error. The instrument is as before
// afterwards, but an instrument without chunks goes through all its programs.
std::string bankBytes(PluginHost& host);  // of the file
void saveBank(PluginHost& host, const std::string& path);
void savePreset(PluginHost& host, const std::string& path);

}  // namespace host
