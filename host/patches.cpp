// Calls the instrument in the usual order of hosts: ask first, load, then go to the bank's program.
#include "host/patches.h"

#include "host/error.h"
#include "host/files.h"
#include "state/fx_file.h"

namespace host {
namespace {

using state::FxBank;
using state::FxChunk;
using state::FxOwner;
using state::FxPreset;
using state::FxProgram;

constexpr std::size_t kLargestFile = std::size_t{1} << 30;

FxOwner ownerFor(const PluginHost& host) {
    return {static_cast<uint32_t>(host.uniqueId()), host.programCount(), host.parameterCount()};
}

void askFirst(const PluginHost& host, Extent extent, int version, int count,
              const std::string& path) {
    if (host.acceptsLoading(extent, host.uniqueId(), version, count)) return;
    throw Error(host.name() + " does not accept " + path + ".");
}

void setChunk(PluginHost& host, Extent extent, const FxChunk& chunk, const std::string& path) {
    if (!host.hasChunks()) {
        throw Error(path + " holds a chunk; " + host.name() + " takes lists of parameters only.");
    }
    host.setChunk(extent, chunk);
}

FxChunk chunkOf(const PluginHost& host, Extent extent) {
    FxChunk chunk = host.chunk(extent);
    if (chunk.empty()) throw Error(host.name() + " does not give out its state.");
    return chunk;
}

std::vector<float> valuesOf(const PluginHost& host) {
    std::vector<float> values;
    for (int i = 0; i < host.parameterCount(); ++i) values.push_back(host.parameter(i));
    return values;
}

void setValues(PluginHost& host, const std::vector<float>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        host.setParameter(static_cast<int>(i), values[i]);
    }
}

void goTo(PluginHost& host, int program) {
    if (host.program() != program) host.setProgram(program);
}

void setPrograms(PluginHost& host, const std::vector<FxProgram>& programs) {
    const int current = host.program();
    for (std::size_t i = 0; i < programs.size(); ++i) {
        goTo(host, static_cast<int>(i));
        host.setProgramName(programs[i].name);
        setValues(host, programs[i].values);
    }
    goTo(host, current);
}

// Visiting the other programs can reset edits of the current one, so they are restored.
std::vector<FxProgram> programsOf(PluginHost& host) {
    const int current = host.program();
    const std::vector<float> currentValues = valuesOf(host);
    std::vector<FxProgram> programs;
    for (int i = 0; i < host.programCount(); ++i) {
        goTo(host, i);
        programs.push_back({host.programName(i), i == current ? currentValues : valuesOf(host)});
    }
    goTo(host, current);
    setValues(host, currentValues);
    return programs;
}

}  // namespace

void loadBank(PluginHost& host, const std::string& path) {
    const auto bytes = readWhole(path, kLargestFile, "a bank file");
    const FxBank bank = parseFxBank(bytes, ownerFor(host), path);
    askFirst(host, Extent::kBank, bank.version, bank.programs, path);
    if (const auto* const chunk = std::get_if<FxChunk>(&bank.content)) {
        setChunk(host, Extent::kBank, *chunk, path);
    } else {
        setPrograms(host, std::get<std::vector<FxProgram>>(bank.content));
    }
    if (bank.currentProgram != FxBank::kNoProgram) goTo(host, bank.currentProgram);
}

void loadPreset(PluginHost& host, const std::string& path) {
    const auto bytes = readWhole(path, kLargestFile, "a preset file");
    const FxPreset preset = parseFxPreset(bytes, ownerFor(host), path);
    askFirst(host, Extent::kProgram, preset.version, preset.parameters, path);
    if (const auto* const chunk = std::get_if<FxChunk>(&preset.content)) {
        setChunk(host, Extent::kProgram, *chunk, path);
    } else {
        host.setProgramName(preset.name);
        setValues(host, std::get<std::vector<float>>(preset.content));
    }
}

std::string bankBytes(PluginHost& host) {
    FxBank bank = {host.version(), host.programCount(), host.program(), {}};
    if (host.hasChunks()) {
        bank.content = chunkOf(host, Extent::kBank);
    } else {
        bank.content = programsOf(host);
    }
    return fxBytes(bank, ownerFor(host).id);
}

void saveBank(PluginHost& host, const std::string& path) {
    writeWhole(path, bankBytes(host));
}

void savePreset(PluginHost& host, const std::string& path) {
    FxPreset preset = {host.version(), host.parameterCount(), host.programName(host.program()), {}};
    if (host.hasChunks()) {
        preset.content = chunkOf(host, Extent::kProgram);
    } else {
        preset.content = valuesOf(host);
    }
    writeWhole(path, fxBytes(preset, ownerFor(host).id));
}

}  // namespace host
