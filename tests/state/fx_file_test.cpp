// Bank and preset files: their bytes, and the error for each kind of bad file.
#include "state/fx_file.h"

#include <cstring>
#include <limits>

#include <gtest/gtest.h>

#include "platform/input_error.h"
#include "tests/host/midi_bytes.h"

namespace {

using state::FxBank;
using state::FxChunk;
using state::FxPreset;
using state::FxProgram;

constexpr uint32_t kId = 0x54737449;  // "TstI"
constexpr state::FxOwner kOwner = {kId, 3, 2};

std::string valueBytes(float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bigEndian(bits, 4);
}

// content includes a preset's name of 28 bytes or a bank's reserved bytes.
std::string fileOf(const std::string& form, unsigned formVersion, int count,
                   const std::string& content, uint32_t id = kId) {
    const std::string rest = form + bigEndian(formVersion, 4) + bigEndian(id, 4) + bigEndian(7, 4) +
                             bigEndian(count, 4) + content;
    return "CcnK" + bigEndian(static_cast<unsigned>(rest.size()), 4) + rest;
}

const std::string kName = "Soft" + std::string(24, '\0');
const std::string kReserved(124, '\0');

std::string listPreset(int count = 2,
                       const std::string& values = valueBytes(0.5f) + valueBytes(1.0f)) {
    return fileOf("FxCk", 1, count, kName + values);
}

std::string bankOf(const std::string& form, const std::string& content, int count = 2,
                   int current = 1) {
    return fileOf(form, 2, count, bigEndian(current, 4) + kReserved + content);
}

const std::string kChunkContent = bigEndian(3, 4) + "abc";

template <typename Parse>
std::string errorOf(Parse parse, const std::string& file, const char* name) {
    try {
        parse(file, kOwner, name);
    } catch (const platform::InputError& error) {
        return error.what();
    }
    return "";
}

TEST(FxFile, ReadsAndWritesTheSameBytesInEveryForm) {
    const std::string listBank = bankOf("FxBk", listPreset() + listPreset());
    const FxBank list = state::parseFxBank(listBank, kOwner, "a.fxb");
    EXPECT_EQ(list.version, 7);
    EXPECT_EQ(list.currentProgram, 1);
    const auto& programs = std::get<std::vector<FxProgram>>(list.content);
    ASSERT_EQ(programs.size(), 2u);
    EXPECT_EQ(programs[1].name, "Soft");
    EXPECT_EQ(programs[1].values, (std::vector<float>{0.5f, 1.0f}));
    EXPECT_EQ(state::fxBytes(list, kId), listBank);

    const std::string chunkBank = bankOf("FBCh", kChunkContent, 3);
    const FxBank chunk = state::parseFxBank(chunkBank, kOwner, "a.fxb");
    EXPECT_EQ(std::get<FxChunk>(chunk.content), "abc");
    EXPECT_EQ(state::fxBytes(chunk, kId), chunkBank);

    // Version 1 has no current program; those bytes are reserved.
    const std::string oldBank = fileOf("FBCh", 1, 3, std::string(128, '\0') + kChunkContent);
    const FxBank old = state::parseFxBank(oldBank, kOwner, "a.fxb");
    EXPECT_EQ(old.currentProgram, FxBank::kNoProgram);
    EXPECT_EQ(state::fxBytes(old, kId), oldBank);

    const FxPreset preset = state::parseFxPreset(listPreset(), kOwner, "a.fxp");
    EXPECT_EQ(preset.name, "Soft");
    EXPECT_EQ(state::fxBytes(preset, kId), listPreset());
    const std::string chunkPreset = fileOf("FPCh", 1, 2, kName + kChunkContent);
    EXPECT_EQ(state::fxBytes(state::parseFxPreset(chunkPreset, kOwner, "a.fxp"), kId), chunkPreset);
}

TEST(FxFile, CutsLongNamesAndReadsNamesWithoutAnEnd) {
    const FxPreset longName = {7, 0, std::string(40, 'n'), std::vector<float>{}};
    EXPECT_EQ(state::fxBytes(longName, kId).substr(28), std::string(27, 'n') + '\0');
    const auto unended = fileOf("FxCk", 1, 0, std::string(28, 'n'));
    EXPECT_EQ(state::parseFxPreset(unended, kOwner, "a.fxp").name, std::string(28, 'n'));
}

TEST(FxFile, RefusesEachBadBankForItsReason) {
    const std::string good = bankOf("FBCh", kChunkContent);
    const std::string list = listPreset() + listPreset();
    auto lyingEntry = listPreset();
    lyingEntry[7] += 4;
    const struct {
        std::string file;
        const char* error;
    } rows[] = {
        {"", "a.fxb is not a bank file."},
        {"Ccn", "a.fxb is not a bank file."},
        {"RIFF" + good.substr(4), "a.fxb is not a bank file."},
        {listPreset(), "a.fxb is not a bank file."},
        {"CcnK", "a.fxb is damaged: it is cut short."},
        {good.substr(0, 20), "a.fxb is damaged: it promises 155 bytes and brings 12."},
        {good + "x", "a.fxb is damaged: it promises 155 bytes and brings 156."},
        {fileOf("FBCh", 2, 1, ""), "a.fxb is damaged: it is cut short."},
        {fileOf("FBCh", 3, 1, ""), "a.fxb is of version 3; only versions 1 and 2 can be read."},
        {fileOf("FBCh", 0, 1, ""), "a.fxb is of version 0; only versions 1 and 2 can be read."},
        {fileOf("FBCh", 2, 1, "", 0x41420143),
         "a.fxb is for the instrument with the ID \"AB?C\", not \"TstI\"."},
        {bankOf("FBCh", kChunkContent, 4),
         "a.fxb is damaged: it counts 4 programs; the instrument has 3."},
        {bankOf("FxBk", list, -1),
         "a.fxb is damaged: it counts 4294967295 programs; the instrument has 3."},
        {bankOf("FxBk", "", 0), "a.fxb is damaged: it lists no program."},
        {bankOf("FxBk", list, 2, 3),
         "a.fxb is damaged: it names a current program that the instrument does not have."},
        {bankOf("FBCh", bigEndian(4, 4) + "abc"),
         "a.fxb is damaged: it promises a chunk of 4 bytes and brings 3."},
        {bankOf("FBCh", bigEndian(0xFFFFFFFF, 4) + "abc"),
         "a.fxb is damaged: it promises a chunk of 4294967295 bytes and brings 3."},
        {bankOf("FxBk", list, 3), "a.fxb is damaged: it has a program 2 that is cut short."},
        {bankOf("FxBk", list + "x"), "a.fxb is damaged: it goes on after its end."},
        {bankOf("FxBk", list.substr(0, 100)),
         "a.fxb is damaged: it has a program 1 that is cut short."},
        {bankOf("FxBk", lyingEntry + listPreset()),
         "a.fxb is damaged: it has a program 0 that goes on after its end."},
        {bankOf("FxBk", listPreset() + fileOf("FPCh", 1, 2, kName + kChunkContent)),
         "a.fxb is damaged: it has a program 1 that is a chunk where a list is due."},
        {bankOf("FxBk", listPreset() + "RIFF" + listPreset().substr(4)),
         "a.fxb is damaged: it has a program 1 that is no preset."},
        {bankOf("FxBk", listPreset() + fileOf("FxCk", 1, 0, kName, 0x41424344)),
         "a.fxb is damaged: it has a program 1 that is for the instrument with the ID \"ABCD\", "
         "not \"TstI\"."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.error);
        EXPECT_EQ(errorOf(state::parseFxBank, row.file, "a.fxb"), row.error);
    }
}

TEST(FxFile, RefusesEachBadPresetForItsReason) {
    const float infinity = std::numeric_limits<float>::infinity();
    const struct {
        std::string file;
        const char* error;
    } rows[] = {
        {bankOf("FBCh", kChunkContent), "a.fxp is not a preset file."},
        {listPreset(3), "a.fxp is damaged: it counts 3 parameters; the instrument has 2."},
        {listPreset(0x40000001),
         "a.fxp is damaged: it counts 1073741825 parameters; the instrument has 2."},
        {listPreset(1), "a.fxp is damaged: it goes on after its end."},
        {listPreset(2, valueBytes(0.5f)), "a.fxp is damaged: it is cut short."},
        {listPreset(1, valueBytes(infinity)),
         "a.fxp is damaged: it holds a value that is no number."},
        {fileOf("FPCh", 1, 2, kName + bigEndian(2, 4) + "abc"),
         "a.fxp is damaged: it promises a chunk of 2 bytes and brings 3."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.error);
        EXPECT_EQ(errorOf(state::parseFxPreset, row.file, "a.fxp"), row.error);
    }
}

}  // namespace
