// Chunks from hosts and the default bank's file, valid and damaged.
#include "state/chunks.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "platform/folders.h"
#include "state/saved_state.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace {

using state::Bank;
using Message = RecordedMessage;
constexpr auto kNoIcon = platform::MessageIcon::kNone;
constexpr std::uint32_t kId = 0x73656E69;

std::string bytesOf(const Bank& bank) {
    return {reinterpret_cast<const char*>(&const_cast<Bank&>(bank).chunk()),
            sizeof(state::BankChunk)};
}

Bank namedBank(const char* name) {
    Bank bank;
    bank.setProgramName(0, name);
    bank.setValue(0, state::kHorn, 0.625f);
    return bank;
}

std::string bigEndian(std::uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
            static_cast<char>(value >> 8), static_cast<char>(value)};
}

std::string header(const char* form, std::uint32_t id, std::uint32_t programs) {
    return "CcnK" + bigEndian(0) + form + bigEndian(1) + bigEndian(id) + bigEndian(1) +
           bigEndian(programs) + std::string(128, '\0');
}

std::string opaqueFile(const std::string& chunk, std::uint32_t size) {
    return header("FBCh", kId, 128) + bigEndian(size) + chunk;
}

// One entry of the list form, with counts and values in machine order.
std::string listEntry(std::int32_t count, const std::vector<float>& values) {
    std::string entry(56, '\0');
    std::memcpy(&entry[24], &count, sizeof count);
    entry.append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(float));
    return entry + std::string(4, '\0');
}

struct LoadedDefault {
    explicit LoadedDefault(const std::string& contents) {
        folder.write("default.fxb", contents);
        const platform::ScopedFolders folders(folder.path(), "");
        state::loadDefaultBank(bank, kId);
    }
    TemporaryFolder folder;
    RecordedMessages messages;
    Bank bank;
};

TEST(ProgramChunk, ReplacesAsMuchAsItBrings) {
    Bank bank;
    const Bank source = namedBank("Brought");
    const std::string bytes = bytesOf(source).substr(1512, 192);
    ASSERT_TRUE(state::takeProgramChunk(bank, 5, bytes.data(), 24));
    EXPECT_EQ(bank.programName(5), "Brought");
    EXPECT_EQ(bank.value(5, state::kHorn), state::parameter(state::kHorn).defaultValue);
    ASSERT_TRUE(state::takeProgramChunk(bank, 5, bytes.data(), 192));
    EXPECT_EQ(bank.value(5, state::kHorn), 0.625f);
    EXPECT_TRUE(state::takeProgramChunk(bank, 5, nullptr, 0));
}

TEST(Chunks, OfAnotherSizeAreRefusedWithAMessage) {
    const RecordedMessages messages;
    Bank bank;
    const std::string before = bytesOf(bank);
    const std::string bytes(26089, '\x7F');
    EXPECT_FALSE(state::takeProgramChunk(bank, 0, bytes.data(), 193));
    EXPECT_FALSE(state::takeProgramChunk(bank, 0, bytes.data(), -1));
    EXPECT_FALSE(state::takeBankChunk(bank, bytes.data(), 26087));
    EXPECT_FALSE(state::takeBankChunk(bank, bytes.data(), 26089));
    EXPECT_EQ(bytesOf(bank), before);
    const Message preset{"Error!", "Can't load preset, wrong file size!", kNoIcon};
    const Message whole{"Error!", "Can't load bank, wrong file size!", kNoIcon};
    EXPECT_EQ(messages.all, (std::vector<Message>{preset, preset, whole, whole}));
}

TEST(SavedState, IsReadAsItWasWritten) {
    for (const bool bypassed : {false, true}) {
        const auto read = state::readSavedState(
            state::bytesOf(state::SavedState{127, bypassed, bytesOf(namedBank("Saved"))}));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->program, 127);
        EXPECT_EQ(read->bypassed, bypassed);
        EXPECT_TRUE(read->bank == bytesOf(namedBank("Saved")));
    }
}

TEST(DefaultBank, LoadsAnOpaqueBank) {
    const LoadedDefault loaded(opaqueFile(bytesOf(namedBank("Signature")), 26088));
    EXPECT_EQ(loaded.bank.programName(0), "Signature");
    EXPECT_TRUE(loaded.messages.all.empty());
    EXPECT_FALSE(state::defaultBankMissing());
}

TEST(DefaultBank, LoadsAListAsItAlwaysDid) {
    std::vector<float> values(42, 0.125f);
    values[3] = 7.0f;
    const std::string file =
        header("FxBk", kId, 1000) + listEntry(42, values) + listEntry(2, {0.75f, 0.5f});
    const LoadedDefault loaded(file);
    EXPECT_EQ(loaded.bank.value(0, 0), 0.125f);
    EXPECT_EQ(loaded.bank.value(0, 3), 1.0f);
    EXPECT_EQ(loaded.bank.value(1, 0), 0.75f);
    EXPECT_EQ(loaded.bank.value(1, 2), state::parameter(2).defaultValue);
    EXPECT_EQ(loaded.bank.programName(0), "Init");
    EXPECT_TRUE(loaded.messages.all.empty());
}

TEST(DefaultBank, WithoutAUsableFileStaysInit) {
    const std::string chunk = bytesOf(namedBank("Signature"));
    const Message notABank{"Preset loader", "Default bank error: not an fxb file", kNoIcon};
    const Message wrongId{"Preset loader", "Default bank error: wrong unique ID", kNoIcon};
    const Message wrongSize{"Error!", "Can't load bank, wrong file size!", kNoIcon};
    const struct {
        const char* what;
        std::string contents;
        std::vector<Message> messages;
    } rows[] = {
        {"empty", "", {notABank}},
        {"short", "CcnK", {notABank}},
        {"another format", std::string(500, 'x'), {notABank}},
        {"another form", header("FPCh", kId, 1), {notABank}},
        {"another instrument", header("FBCh", kId + 1, 128) + bigEndian(26088) + chunk, {wrongId}},
        {"header only", header("FBCh", kId, 128), {wrongSize}},
        {"chunk cut short", opaqueFile(chunk.substr(0, 26087), 26088), {wrongSize}},
        {"size lies", opaqueFile(chunk, 26087), {wrongSize}},
        {"size beyond the file", opaqueFile(chunk, 26089), {wrongSize}},
        {"negative size", opaqueFile(chunk, 0xFFFFFFFF), {wrongSize}},
        {"list without entries", header("FxBk", kId, 0x7FFFFFFF), {}},
        {"negative count of programs", header("FxBk", kId, 0xFFFFFFFF) + listEntry(42, {}), {}},
        {"negative count of values", header("FxBk", kId, 1) + listEntry(-1, {0.5f}), {}},
        {"values cut short",
         header("FxBk", kId, 1) + listEntry(42, std::vector<float>(20, 0.5f)),
         {}},
        {"absurd count of values", header("FxBk", kId, 1) + listEntry(0x40000001, {0.5f}), {}},
    };
    const std::string untouched = bytesOf(Bank());
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const LoadedDefault loaded(row.contents);
        EXPECT_TRUE(bytesOf(loaded.bank) == untouched);
        EXPECT_EQ(loaded.messages.all, row.messages);
    }
}

TEST(DefaultBank, ThatCannotBeOpenedIsOnlyRemembered) {
    const TemporaryFolder folder;
    const RecordedMessages messages;
    const platform::ScopedFolders folders(folder.path(), "");
    Bank bank;
    state::loadDefaultBank(bank, kId);
    EXPECT_TRUE(state::defaultBankMissing());

    std::filesystem::create_directory(folder.path() + "default.fxb");
    state::loadDefaultBank(bank, kId);
    EXPECT_TRUE(state::defaultBankMissing());

    // If the library's folder is unknown, no other folder is searched.
    const TemporaryFolder other;
    other.write("default.fxb", opaqueFile(bytesOf(namedBank("Stranger")), 26088));
    const CurrentFolder current(other.path());
    const platform::ScopedFolders unknown("", "");
    state::loadDefaultBank(bank, kId);
    EXPECT_TRUE(state::defaultBankMissing());
    EXPECT_TRUE(messages.all.empty());
    EXPECT_EQ(bank.programName(0), "Init");
}

}  // namespace
