// Program chunks: any bytes of any length, set in any program.
#include "fuzz/support/instance.h"
#include "fuzz/support/target.h"
#include "fuzz/support/world.h"

namespace {

void run(std::string_view bytes) {
    const fuzz::World world;
    fuzz::Instance instance;
    fuzz::Input input(bytes);
    const int program = input.below(state::kNumPrograms);
    instance.dispatch(effSetProgram, 0, program);
    const std::string chunk(input.rest());
    std::string expected = instance.chunk(false);

    const bool fits = chunk.size() <= sizeof(state::ProgramRecord);
    instance.setChunk(chunk, true);
    fuzz::require(world.messages.all.size() == (fits ? 0 : 1), "a longer program is refused");
    const std::size_t place =
        offsetof(state::BankChunk, programs) + program * sizeof(state::ProgramRecord);
    if (fits) expected = fuzz::asSent(expected.replace(place, chunk.size(), chunk), program);
    instance.requireBank(expected);
    fuzz::require(instance.chunk(true) == expected.substr(place, sizeof(state::ProgramRecord)),
                  "a program is got as it lies in the bank");

    // Set in another instance, the saved chunk sounds the same.
    if (!fits) return;
    fuzz::Instance other;
    other.dispatch(effSetProgram, 0, program);
    other.setChunk(instance.chunk(true), true);
    other.requireBank(expected);
    fuzz::require(sameBits(playChord(instance), playChord(other)), "a kept program sounds alike");
}

const fuzz::Registered registered("preset_chunk", run);

}  // namespace
