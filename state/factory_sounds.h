// The factory sounds as browsers list them.
#pragma once

#include <string>

#include "state/bank.h"

namespace state {

struct FactorySound {
    const char* family;
    const char* name;
    const char* character;
};

// What is known of a program; null if the name is not that of the factory sound of this number.
const FactorySound* factorySound(int program, const std::string& name);

// The factory sound of this number.
const FactorySound& factorySound(int program);

// Reads the bank that is delivered, into `bank`. False, without a message, when it cannot.
bool readFactoryBank(state::BankChunk& bank);

}  // namespace state
