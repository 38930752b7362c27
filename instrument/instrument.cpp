// Parameters, programs and saved state.
#include "instrument/instrument.h"

#include <utility>

#include "engine/engine.h"
#include "engine/ensemble_chorus.h"
#include "platform/product.h"
#include "platform/thread_id.h"
#include "state/atomic_word.h"
#include "state/chunks.h"

namespace instrument {

Instrument::Instrument(Host& host)
    : Instrument(host, std::make_unique<engine::Engine>(engine::kInitialRate)) {}

Instrument::Instrument(Host& host, std::unique_ptr<engine::SoundEngine> engine)
    : host_(host), engine_(std::move(engine)), sampleRate_(engine_->sampleRate()) {}

Instrument::~Instrument() {
    state::controllerMap().save();
}

void Instrument::start(double sampleRate) {
    state::controllerMap().load();
    setSampleRate(engine::isAcceptedRate(sampleRate) ? sampleRate : engine::kInitialRate);
    state::loadDefaultBank(bank_, platform::kProductCode);
    rememberLoadedBank();
    starting_ = false;
    bank_.limitValues(program());
    demand(kPushProgram);
    shown_.mark(kAllParameters);
}

float Instrument::parameter(int index) const {
    if (index < 0 || index > state::kNumParams) return 0.0f;
    // intentional: accepts one index past the table
    return index == state::kNumParams ? bank_.valuePastTable(program())
                                      : bank_.value(program(), index);
}

void Instrument::setParameter(int index, float value) {
    const bool known = state::isParameter(index);
    if (known) shown_.mark(std::uint64_t{1} << index);
    if (starting_) return;
    if (index == state::kVoiceCountParam) {
        voices_.store(state::voiceCount(value), std::memory_order_relaxed);
        demand(kChangeVoices);
    } else if (known) {
        bank_.setValue(program(), index, value);
        if (index == state::kHP) highPassMoves_.fetch_add(1, std::memory_order_relaxed);
        demand(std::uint64_t{1} << index);
    }
}

void Instrument::changeParameter(int index, float value) {
    if (parameter(index) != value) setParameter(index, value);
}

void Instrument::setParameterAutomated(int index, float value) {
    setParameter(index, value);
    host_.edited(index, value);
}

std::string Instrument::parameterName(int index) const {
    return state::isParameter(index) ? bank_.parameterName(index) : "";
}

std::string Instrument::parameterDisplay(int index) const {
    return state::valueText(parameter(index));
}

void Instrument::setProgram(int program) {
    const bool fromWithin = pusher_.load(std::memory_order_relaxed) == platform::currentThreadId();
    if (starting_ || !state::isProgram(program) || fromWithin) return;
    program_.store(program, std::memory_order_relaxed);
    sendProgram();
}

// To the engine, then to the editor and the host.
void Instrument::sendProgram() {
    bank_.limitValues(program());
    demand(kPushProgram);
    shown_.mark(kAllParameters);
    host_.displayChanged(DisplayChange::kProgram);
}

std::string Instrument::programName(int program) const {
    return state::isProgram(program) ? bank_.programName(program) : "";
}

void Instrument::setProgramName(const char* name) {
    bank_.setProgramName(program(), name);
}

void Instrument::renameProgram(int program, const std::string& name) {
    bank_.setProgramName(program, name.c_str());
    host_.displayChanged(DisplayChange::kProgramName);
}

bool Instrument::copyProgram(int destination) {
    if (!state::isProgram(destination)) return false;
    bank_.copyProgram(program(), destination);
    return true;
}

void Instrument::loadBankChunk(const void* data, std::int32_t size) {
    if (state::takeBankChunk(bank_, data, size)) rememberLoadedBank();
    sendProgram();
}

void Instrument::loadProgramChunk(const void* data, std::int32_t size) {
    if (!state::takeProgramChunk(bank_, program(), data, size)) return;
    rememberLoaded(program());
    sendProgram();
}

void Instrument::loadProgram(int program, const state::ProgramRecord& record) {
    if (starting_ || !state::isProgram(program)) return;
    state::takeProgramChunk(loaded_, program, &record, sizeof record);
    putProgram(program, record);
}

void Instrument::putProgram(int program, const state::ProgramRecord& record) {
    if (starting_ || !state::isProgram(program)) return;
    const bool renames = bank_.programName(program) != state::nameOf(record);
    state::takeProgramChunk(bank_, program, &record, sizeof record);
    program_.store(program, std::memory_order_relaxed);
    sendProgram();
    if (renames) host_.displayChanged(DisplayChange::kProgramName);
}

state::ProgramRecord Instrument::programRecord(int program) const {
    return bank_.program(program);
}

state::ProgramRecord Instrument::loadedProgram(int program) const {
    return loaded_.program(program);
}

void Instrument::rememberLoaded(int program) {
    const state::ProgramRecord record = bank_.program(program);
    state::storeBytes(&loaded_.chunk().programs[program], &record, sizeof record);
}

void Instrument::rememberLoadedBank() {
    for (int program = 0; program < state::kNumPrograms; ++program) rememberLoaded(program);
}

state::SavedState Instrument::savedState() {
    state::SavedState saved;
    saved.program = program();
    saved.bank.resize(sizeof(state::BankChunk));
    state::loadBytes(saved.bank.data(), &bank_.chunk(), saved.bank.size());
    return saved;
}

void Instrument::loadSavedState(const state::SavedState& saved) {
    if (starting_) return;
    state::takeBankChunk(bank_, saved.bank.data(), static_cast<std::int32_t>(saved.bank.size()));
    rememberLoadedBank();
    program_.store(saved.program, std::memory_order_relaxed);
    sendProgram();
}

void Instrument::playKey(int key, int velocity) {
    keyPresses_.add(key & 0x7F, velocity & 0x7F);
    host_.keyPlayed();
}

const state::ToneCurve& Instrument::toneCurve() {
    const state::ToneSettings now = {valueForEngine(state::kHP), engine_->smoothedHighPass(),
                                     valueForEngine(state::kBrigthness),
                                     sampleRate_.load(std::memory_order_relaxed)};
    if (!(now == toneSettings_)) {
        toneSettings_ = now;
        toneCurve_ = state::toneCurve(now);
    }
    return toneCurve_;
}

int Instrument::chorusTapCount() const {
    return engine::EnsembleChorus::kTaps;
}

}  // namespace instrument
