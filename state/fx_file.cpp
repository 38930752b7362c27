// Bank and preset files byte by byte. Numbers are big-endian; a size counts the bytes after it.
//
//   0 "CcnK"   4 size   8 form   12 version of the form   16 ID   20 version of the instrument
//   24 count of programs or parameters
//   bank:   28 current program (form version 2)   32 reserved   156 content
//   preset: 28 name   56 content
//
// The content is a size and a chunk ("FBCh", "FPCh"), or a list: of whole presets in a bank
// ("FxBk"), of values in a preset ("FxCk").
#include "state/fx_file.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include "platform/byte_reader.h"
#include "platform/four_char_code.h"
#include "platform/input_error.h"

namespace state {
namespace {

using platform::ByteReader;
using platform::Damage;
using platform::fourCharCode;

constexpr uint32_t kMagic = fourCharCode("CcnK");
constexpr std::size_t kReservedBytes = 124;
constexpr std::size_t kNameBytes = 28;
constexpr uint32_t kNewestForm = 2;  // the first with a current program

// The forms of one kind of file.
struct Kind {
    uint32_t chunk;
    uint32_t list;
    const char* name;
};

constexpr Kind kBank = {fourCharCode("FBCh"), fourCharCode("FxBk"), "a bank file"};
constexpr Kind kPreset = {fourCharCode("FPCh"), fourCharCode("FxCk"), "a preset file"};

// The common header, up to the count.
struct Header {
    bool isChunk;
    uint32_t formVersion;
    int version;
    int count;
};

std::string codeText(uint32_t value) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char character = static_cast<char>(value >> shift);
        text += character >= ' ' && character <= '~' ? character : '?';
    }
    return text;
}

// Says why an intact file cannot be used here, as the end of a sentence.
struct Unfit : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void checkSize(uint32_t size, const ByteReader& reader, const std::string& what) {
    if (size == reader.left()) return;
    throw Damage("promises " + what + std::to_string(size) + " bytes and brings " +
                 std::to_string(reader.left()));
}

void checkEnd(const ByteReader& reader) {
    if (reader.left() > 0) throw Damage("goes on after its end");
}

Header readHeader(ByteReader& reader, const Kind& kind, uint32_t id) {
    reader.number(4);  // the magic, already checked
    const uint32_t size = reader.number(4);
    const ByteReader behindSize = reader;
    const uint32_t form = reader.number(4);
    if (form != kind.chunk && form != kind.list) throw Unfit(std::string("is not ") + kind.name);
    checkSize(size, behindSize, "");

    Header header = {};
    header.isChunk = form == kind.chunk;
    header.formVersion = reader.number(4);
    if (header.formVersion < 1 || header.formVersion > kNewestForm) {
        throw Unfit("is of version " + std::to_string(header.formVersion) +
                    "; only versions 1 and 2 can be read");
    }
    const uint32_t fileId = reader.number(4);
    if (fileId != id) {
        throw Unfit("is for the instrument with the ID \"" + codeText(fileId) + "\", not \"" +
                    codeText(id) + "\"");
    }
    header.version = static_cast<int32_t>(reader.number(4));
    header.count = static_cast<int32_t>(reader.number(4));
    return header;
}

void checkCount(int count, int most, const std::string& what) {
    if (count >= 0 && count <= most) return;
    throw Damage("counts " + std::to_string(static_cast<uint32_t>(count)) + " " + what +
                 "; the instrument has " + std::to_string(most));
}

std::string readName(ByteReader& reader) {
    const std::string_view field = reader.take(kNameBytes);
    return std::string(field.substr(0, field.find('\0')));
}

FxChunk readChunk(ByteReader& reader) {
    const uint32_t size = reader.number(4);
    checkSize(size, reader, "a chunk of ");
    return FxChunk(reader.take(size));
}

std::vector<float> readValues(ByteReader& reader, int count) {
    std::vector<float> values;
    for (int i = 0; i < count; ++i) {
        const uint32_t bits = reader.number(4);
        float value;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) throw Damage("holds a value that is no number");
        values.push_back(value);
    }
    return values;
}

FxPreset readPreset(ByteReader& reader, const FxOwner& owner) {
    const Header header = readHeader(reader, kPreset, owner.id);
    checkCount(header.count, owner.parameters, "parameters");
    FxPreset preset = {header.version, header.count, readName(reader), {}};
    if (header.isChunk) {
        preset.content = readChunk(reader);
    } else {
        preset.content = readValues(reader, header.count);
        checkEnd(reader);
    }
    return preset;
}

// One preset of a list. Its content must have exactly the size that it states.
FxProgram readEntry(ByteReader& reader, const FxOwner& owner) {
    ByteReader head = reader;
    if (head.number(4) != kMagic) throw Damage("is no preset");
    const uint32_t size = head.number(4);
    if (size > head.left()) throw Damage("is cut short");
    ByteReader entry(reader.take(8 + size));
    FxPreset preset = readPreset(entry, owner);
    auto* const values = std::get_if<std::vector<float>>(&preset.content);
    if (!values) throw Damage("is a chunk where a list is due");
    return {std::move(preset.name), std::move(*values)};
}

std::vector<FxProgram> readPrograms(ByteReader& reader, int count, const FxOwner& owner) {
    std::vector<FxProgram> programs;
    for (int i = 0; i < count; ++i) {
        try {
            programs.push_back(readEntry(reader, owner));
        } catch (const std::runtime_error& wrong) {
            throw Damage("has a program " + std::to_string(i) + " that " + wrong.what());
        }
    }
    return programs;
}

FxBank readBank(ByteReader& reader, const FxOwner& owner) {
    const Header header = readHeader(reader, kBank, owner.id);
    checkCount(header.count, owner.programs, "programs");
    FxBank bank = {header.version, header.count, FxBank::kNoProgram, {}};
    const uint32_t current = reader.number(4);
    if (header.formVersion == kNewestForm) {
        bank.currentProgram = static_cast<int32_t>(current);
        if (current >= static_cast<uint32_t>(std::max(owner.programs, 1))) {
            throw Damage("names a current program that the instrument does not have");
        }
    }
    reader.take(kReservedBytes);
    if (header.isChunk) {
        bank.content = readChunk(reader);
    } else {
        if (header.count == 0) throw Damage("lists no program");
        bank.content = readPrograms(reader, header.count, owner);
        checkEnd(reader);
    }
    return bank;
}

template <typename Read>
auto parsed(std::string_view bytes, const Kind& kind, const std::string& file, Read read) {
    if (bytes.substr(0, 4) != "CcnK")
        throw platform::InputError(file + " is not " + kind.name + ".");
    ByteReader reader(bytes);
    try {
        return read(reader);
    } catch (const Unfit& reason) {
        throw platform::InputError(file + " " + reason.what() + ".");
    } catch (const Damage& damage) {
        throw platform::InputError(file + " is damaged: it " + damage.what() + ".");
    }
}

std::string bigEndian(uint32_t value) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(value >> shift);
    return text;
}

std::string nameField(const std::string& name) {
    std::string field = name.substr(0, kNameBytes - 1);
    field.resize(kNameBytes, '\0');
    return field;
}

std::string chunkBytes(const FxChunk& chunk) {
    return bigEndian(static_cast<uint32_t>(chunk.size())) + chunk;
}

// content is everything after the count.
std::string fileBytes(uint32_t form, uint32_t formVersion, uint32_t id, int version, int count,
                      const std::string& content) {
    const std::string rest = bigEndian(form) + bigEndian(formVersion) + bigEndian(id) +
                             bigEndian(static_cast<uint32_t>(version)) +
                             bigEndian(static_cast<uint32_t>(count)) + content;
    return bigEndian(kMagic) + bigEndian(static_cast<uint32_t>(rest.size())) + rest;
}

}  // namespace

FxBank parseFxBank(std::string_view bytes, const FxOwner& owner, const std::string& file) {
    return parsed(bytes, kBank, file, [&](ByteReader& reader) { return readBank(reader, owner); });
}

FxPreset parseFxPreset(std::string_view bytes, const FxOwner& owner, const std::string& file) {
    return parsed(bytes, kPreset, file,
                  [&](ByteReader& reader) { return readPreset(reader, owner); });
}

std::string fxBytes(const FxBank& bank, uint32_t id) {
    const bool saysCurrent = bank.currentProgram != FxBank::kNoProgram;
    std::string content = bigEndian(saysCurrent ? static_cast<uint32_t>(bank.currentProgram) : 0);
    content.append(kReservedBytes, '\0');
    const auto* const chunk = std::get_if<FxChunk>(&bank.content);
    if (chunk) {
        content += chunkBytes(*chunk);
    } else {
        for (const auto& program : std::get<std::vector<FxProgram>>(bank.content)) {
            const int count = static_cast<int>(program.values.size());
            content += fxBytes(FxPreset{bank.version, count, program.name, program.values}, id);
        }
    }
    return fileBytes(chunk ? kBank.chunk : kBank.list, saysCurrent ? kNewestForm : 1, id,
                     bank.version, bank.programs, content);
}

std::string fxBytes(const FxPreset& preset, uint32_t id) {
    std::string content = nameField(preset.name);
    const auto* const chunk = std::get_if<FxChunk>(&preset.content);
    if (chunk) {
        content += chunkBytes(*chunk);
    } else {
        for (const float value : std::get<std::vector<float>>(preset.content)) {
            uint32_t bits;
            std::memcpy(&bits, &value, sizeof bits);
            content += bigEndian(bits);
        }
    }
    return fileBytes(chunk ? kPreset.chunk : kPreset.list, 1, id, preset.version, preset.parameters,
                     content);
}

}  // namespace state
