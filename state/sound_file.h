// The instrument's sounds and banks as preset and bank files (.fxp, .fxb).
#pragma once

#include <string>

#include "state/bank.h"
#include "state/saved_state.h"

namespace state {

// Throw platform::InputError if the bytes cannot be used; errors of form call the file `name`. The
// list forms change what they contain; the rest stays as `before`.
ProgramRecord readSoundFile(const std::string& bytes, const std::string& name,
                            const ProgramRecord& before);
SavedState readBankFile(const std::string& bytes, const std::string& name,
                        const SavedState& before);

// With a chunk, as hosts write them.
std::string soundFileOf(const ProgramRecord& sound);
std::string bankFileOf(const SavedState& saved);

}  // namespace state
