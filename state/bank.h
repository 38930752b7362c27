// The parameter table and 128 programs, laid out as the bank chunk that hosts save.
#pragma once

#include <cstddef>
#include <string>
#include <type_traits>

#include "state/parameters.h"

namespace state {

constexpr int kNumPrograms = 128;
constexpr std::size_t kNameSize = 24;  // bytes, with the terminating zero

constexpr bool isProgram(int index) {
    return index >= 0 && index < kNumPrograms;
}

// A parameter's flags and name, and its value if programs do not hold it.
struct ParameterRecord {
    unsigned char programHeld;  // 1: each program has its own value
    unsigned char unclamped;    // 1: values are stored as given
    unsigned char reserved[2];
    float value;
    unsigned unused;
    char name[kNameSize];
};
static_assert(sizeof(ParameterRecord) == 36 && std::is_trivially_copyable_v<ParameterRecord>);
static_assert(offsetof(ParameterRecord, value) == 4 && offsetof(ParameterRecord, name) == 12);

struct ProgramRecord {
    char name[kNameSize];
    float values[kNumParams];
};
static_assert(offsetof(ProgramRecord, values) == 24);
static_assert(sizeof(ProgramRecord) == 24 + 4 * kNumParams &&  // 192
              std::is_trivially_copyable_v<ProgramRecord>);

// Up to the terminating zero or the end of the field.
std::string nameOf(const ProgramRecord& program);
void setName(ProgramRecord& program, const std::string& name);  // cut to kNameSize - 1 bytes

struct BankChunk {
    ParameterRecord parameters[kNumParams];
    ProgramRecord programs[kNumPrograms];
};
static_assert(offsetof(BankChunk, programs) == 36 * kNumParams);  // 1512
static_assert(sizeof(BankChunk) == 36 * kNumParams + kNumPrograms * (24 + 4 * kNumParams) &&
              std::is_trivially_copyable_v<BankChunk>);  // 26088

// Comments marked "intentional" in this folder name oddities that saved sessions depend on.
//
// Several threads may read and write at once. Each word is read whole; a name read during a write
// may mix old and new text. Bytes from a chunk are stored unchecked, so readers check them.
class Bank {
  public:
    // Every value at its default, every program named "Init".
    Bank();

    // The value in the program, or in the table if programs do not hold this parameter. `program`
    // and `index` must be in range.
    float value(int program, int index) const;
    // Limits the value to 0..1 unless the record is marked unclamped; a non-finite value is always
    // limited.
    void setValue(int program, int index, float value);
    // Limits every value that the program uses, as setValue does.
    void limitValues(int program);
    // The value of a 43rd record, which overlaps the first program's name. intentional: saved
    // sessions may read it. Finite, but of any size.
    float valuePastTable(int program) const;

    std::string parameterName(int index) const;
    std::string programName(int program) const;
    // Cut to kNameSize - 1 bytes.
    void setProgramName(int program, const char* name);
    void copyProgram(int from, int to);
    ProgramRecord program(int index) const;

    // The live bytes, not a copy.
    BankChunk& chunk() { return chunk_; }

  private:
    float& heldValue(int program, int index);
    float limited(int index, float value) const;

    BankChunk chunk_{};
};

}  // namespace state
