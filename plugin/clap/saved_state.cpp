// The state in a host's stream, and presets of the factory bank.
#include <charconv>
#include <cstring>

#include "plugin/clap/preset_discovery.h"
#include "plugin/clap/shell.h"
#include "state/factory_sounds.h"
#include "plugin/state_stream.h"

namespace clap {

namespace {

// A program's number, as preset_provider.cpp writes it.
int programOf(const char* key) {
    int program = -1;
    const char* const end = key + std::strlen(key);
    const auto read = std::from_chars(key, end, program);
    return read.ec == std::errc() && read.ptr == end ? program : -1;
}

}  // namespace

bool Shell::save(const OutputStream* stream) {
    if (!stream || !stream->write) return false;
    return plugin::writeState(instrument_.savedState(), [stream](const char* bytes, int size) {
        return stream->write(stream, bytes, static_cast<uint64_t>(size));
    });
}

bool Shell::load(const InputStream* stream) {
    if (!stream || !stream->read) return false;
    const auto saved = plugin::readState([stream](char* buffer, int size) {
        return stream->read(stream, buffer, static_cast<uint64_t>(size));
    });
    if (!saved) return false;
    instrument_.loadSavedState(*saved);
    tellHost();
    return true;
}

// The sound as it was delivered, in the program of its number.
bool Shell::loadPreset(uint32_t kind, const char* location, const char* key) {
    const auto bank = std::make_unique<state::BankChunk>();
    const int program = key ? programOf(key) : -1;
    const char* fault = nullptr;
    if (kind != kPresetLocationPlugin || location || !state::isProgram(program)) {
        fault = "There is no such preset";
    } else if (!state::readFactoryBank(*bank)) {
        fault = "The factory bank cannot be read";
    }
    if (fault) {
        if (hostPresets_ && hostPresets_->on_error) {
            hostPresets_->on_error(&host_, kind, location, key, 0, fault);
        }
        return false;
    }
    instrument_.loadProgram(program, bank->programs[program]);
    tellHost();
    if (hostPresets_ && hostPresets_->loaded) hostPresets_->loaded(&host_, kind, location, key);
    return true;
}

}  // namespace clap
