// The parameter table and the 128 programs, laid out as the bank chunk that hosts save.
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

// One parameter's flags, name, and its value while no program holds it.
struct ParameterRecord {
    unsigned char programHeld;  // 1: the value lives in the current program
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
static_assert(sizeof(ProgramRecord) == 192 && std::is_trivially_copyable_v<ProgramRecord>);
static_assert(offsetof(ProgramRecord, values) == 24);

struct BankChunk {
    ParameterRecord parameters[kNumParams];
    ProgramRecord programs[kNumPrograms];
};
static_assert(sizeof(BankChunk) == 26088 && std::is_trivially_copyable_v<BankChunk>);
static_assert(offsetof(BankChunk, programs) == 1512);

// May be read and written by several threads at once, each word whole; a name that is read while it
// is written may come half old, half new. What a chunk brought is kept as it came until a program
// is sent: readers check.
class Bank {
  public:
    // Defaults everywhere, every program named "Init".
    Bank();

    // The value that the program, or the table for a parameter that programs do not hold, has now.
    // `program` and `index` are in range.
    float value(int program, int index) const;
    // Stores a value, limited to 0..1 unless the record says otherwise; one that is not finite in
    // any case.
    void setValue(int program, int index, float value);
    // Stores what the program has anew, so that it is limited however it came.
    void limitValues(int program);
    // What lies where a 43rd record would: the first program's name read as a record. Any float
    // that is finite; one that is not comes limited.
    float valuePastTable(int program) const;

    std::string parameterName(int index) const;
    std::string programName(int program) const;
    // Cut to kNameSize - 1 bytes.
    void setProgramName(int program, const char* name);
    void copyProgram(int from, int to);

    // The live bytes.
    BankChunk& chunk() { return chunk_; }

  private:
    float& heldValue(int program, int index);
    float limited(int index, float value) const;

    BankChunk chunk_{};
};

}  // namespace state
