// Values and names of the bank. Any bytes may have come in with a chunk.
#include "state/bank.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "state/atomic_word.h"

namespace state {

namespace {

std::string fieldText(const char (&field)[kNameSize]) {
    char bytes[kNameSize];
    loadBytes(bytes, field, kNameSize);
    return {bytes, std::find(bytes, bytes + kNameSize, '\0')};
}

void setField(char (&field)[kNameSize], const char* text) {
    char bytes[kNameSize] = {};
    std::memcpy(bytes, text, strnlen(text, kNameSize - 1));
    storeBytes(field, bytes, kNameSize);
}

}  // namespace

std::string nameOf(const ProgramRecord& program) {
    return fieldText(program.name);
}

void setName(ProgramRecord& program, const std::string& name) {
    setField(program.name, name.c_str());
}

Bank::Bank() {
    for (int i = 0; i < kNumParams; ++i) {
        ParameterRecord& record = chunk_.parameters[i];
        record.programHeld = 1;
        record.value = parameter(i).defaultValue;
        setField(record.name, parameter(i).name);
    }
    for (ProgramRecord& program : chunk_.programs) {
        setField(program.name, "Init");
        for (int i = 0; i < kNumParams; ++i) program.values[i] = parameter(i).defaultValue;
    }
}

float Bank::value(int program, int index) const {
    const ParameterRecord& record = chunk_.parameters[index];
    return loadWord(record.programHeld) ? loadWord(chunk_.programs[program].values[index])
                                        : loadWord(record.value);
}

void Bank::setValue(int program, int index, float value) {
    storeWord(heldValue(program, index), limited(index, value));
}

void Bank::limitValues(int program) {
    for (int index = 0; index < kNumParams; ++index) {
        float& held = heldValue(program, index);
        const float value = loadWord(held);
        exchangeWord(held, value, limited(index, value));
    }
}

float& Bank::heldValue(int program, int index) {
    ParameterRecord& record = chunk_.parameters[index];
    return loadWord(record.programHeld) ? chunk_.programs[program].values[index] : record.value;
}

float Bank::limited(int index, float value) const {
    const bool asGiven = loadWord(chunk_.parameters[index].unclamped) && std::isfinite(value);
    return asGiven ? value : engineValue(value);
}

float Bank::valuePastTable(int program) const {
    const auto* bytes = reinterpret_cast<const unsigned char*>(&chunk_);
    const std::size_t record = offsetof(BankChunk, programs);
    const bool programHeld = loadWord(bytes[record]) != 0;
    const std::size_t at = programHeld ? record + (program + 1) * sizeof(ProgramRecord)
                                       : record + offsetof(ParameterRecord, value);
    float value = 0.0f;
    if (at + sizeof value <= sizeof chunk_) loadBytes(&value, bytes + at, sizeof value);
    return std::isfinite(value) ? value : engineValue(value);
}

std::string Bank::parameterName(int index) const {
    return fieldText(chunk_.parameters[index].name);
}

std::string Bank::programName(int program) const {
    return fieldText(chunk_.programs[program].name);
}

void Bank::setProgramName(int program, const char* name) {
    setField(chunk_.programs[program].name, name);
}

ProgramRecord Bank::program(int index) const {
    ProgramRecord record;
    loadBytes(&record, &chunk_.programs[index], sizeof record);
    return record;
}

void Bank::copyProgram(int from, int to) {
    const ProgramRecord record = program(from);
    storeBytes(&chunk_.programs[to], &record, sizeof record);
}

}  // namespace state
