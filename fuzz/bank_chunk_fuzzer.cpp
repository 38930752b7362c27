// Bank chunks from a host: a good one with damage anywhere, of any size.
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
    const std::string before = instance.chunk(false);
    std::string chunk = before;
    const std::size_t size = input.byte() % 4 == 3 ? input.word() : chunk.size();
    fuzz::damage(chunk, input);
    chunk.resize(size);

    const bool fits = size == sizeof(state::BankChunk);
    instance.setChunk(chunk, false);
    fuzz::require(world.messages.all.size() == (fits ? 0 : 1), "a bank of another size is refused");
    instance.requireBank(fits ? fuzz::asSent(chunk, program) : before);

    // Set in another instance, the saved chunk sounds the same.
    fuzz::Instance other;
    other.dispatch(effSetProgram, 0, program);
    other.setChunk(instance.chunk(false), false);
    other.requireBank(instance.chunk(false));
    fuzz::require(sameBits(playChord(instance), playChord(other)), "a kept bank sounds the same");
    instance.requireBank(other.chunk(false));
}

const fuzz::Registered registered("bank_chunk", run);

}  // namespace
