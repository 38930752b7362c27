// Calls through the record like a host and checks each answer.
#include "fuzz/support/instance.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "fuzz/support/target.h"
#include "tests/plugin/vst2/test_host.h"

namespace fuzz {

namespace {

constexpr float kUntouched = 12345.0f;

bool sameBits(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// A host's buffer of exactly the size that an operation may fill.
template <typename Fill>
std::string textFrom(std::size_t size, Fill fill) {
    const auto buffer = std::make_unique<char[]>(size);
    std::fill_n(buffer.get(), size, '?');
    fill(buffer.get());
    const std::string text(buffer.get(), std::find(buffer.get(), buffer.get() + size, '\0'));
    require(text.size() < size, "a text for the host has an end");
    return text;
}

std::string fieldText(const char (&field)[state::kNameSize]) {
    return {field, std::find(field, field + state::kNameSize - 1, '\0')};
}

// The stored value as the host sees it. The record's flags decide which one counts.
float storedValue(const state::BankChunk& bank, int program, int index) {
    return bank.parameters[index].programHeld ? bank.programs[program].values[index]
                                              : bank.parameters[index].value;
}

}  // namespace

void EventList::clear() {
    events_.clear();
    memory_.assign(sizeof(VstEvents) / sizeof(VstIntPtr), 0);
}

void EventList::add(int frame, VstInt32 type, const unsigned char (&message)[3]) {
    const std::size_t size = type == kVstMidiType ? sizeof(VstMidiEvent) : 16;
    VstMidiEvent event = {};
    event.type = type;
    event.byteSize = static_cast<VstInt32>(size);
    event.deltaFrames = frame;
    std::copy_n(message, 3, event.midiData);
    events_.push_back(type == 0 ? nullptr : std::make_unique<char[]>(size));
    if (type != 0) std::memcpy(events_.back().get(), &event, size);
    // The list itself has room for two events.
    const std::size_t count = events_.size();
    if (count > 2) memory_.push_back(0);
    list()->numEvents = static_cast<VstInt32>(count);
    VstEvent** const places = list()->events;
    places[count - 1] = reinterpret_cast<VstEvent*>(events_.back().get());
}

void EventList::add(Input& input, int frames) {
    constexpr VstInt32 kTypes[] = {
        kVstMidiType, kVstMidiType, kVstMidiType, kVstMidiType, kVstMidiType, kVstSysExType, 0, -1};
    int frame = 0;
    for (int count = input.below(9); count > 0; --count) {
        const int how = input.byte();
        // Mostly sorted, as from a host.
        frame = how & 0x80 ? input.integer() : frame + (how >> 3) % (frames / 4 + 2);
        const unsigned char message[] = {input.byte(), input.byte(), input.byte()};
        add(frame, kTypes[how & 7], message);
        if (how & 0x80) frame = 0;
    }
}

Instance::Instance(std::unique_ptr<engine::SoundEngine> engine)
    : synth_(engine ? new vst2::VstSynth(TestHost::callback, std::move(engine))
                    : new vst2::VstSynth(TestHost::callback)),
      record_(synth_->getAeffect()) {
    dispatch(effMainsChanged, 0, 1);
}

Instance::~Instance() {
    dispatch(effClose);
}

const state::BankChunk& Instance::bank() {
    void* data = nullptr;
    require(dispatch(effGetChunk, 0, 0, &data) == sizeof(state::BankChunk), "a bank has its size");
    return *static_cast<const state::BankChunk*>(data);
}

std::string Instance::chunk(bool isPreset) {
    void* data = nullptr;
    const VstIntPtr size = dispatch(effGetChunk, isPreset, 0, &data);
    return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

void Instance::setChunk(std::string_view chunk, bool isPreset) {
    const auto bytes = std::make_unique<char[]>(chunk.size());
    std::copy(chunk.begin(), chunk.end(), bytes.get());
    dispatch(effSetChunk, isPreset, static_cast<VstIntPtr>(chunk.size()), bytes.get());
}

void Instance::setParameter(int index, float value) {
    std::string expected = chunk(false);
    if (state::isParameter(index)) {
        auto& to = *reinterpret_cast<state::BankChunk*>(expected.data());
        float stored = std::isfinite(value) ? value : 0.0f;
        if (!to.parameters[index].unclamped) stored = std::clamp(stored, 0.0f, 1.0f);
        const bool held = to.parameters[index].programHeld;
        const auto program = dispatch(effGetProgram);
        (held ? to.programs[program].values[index] : to.parameters[index].value) = stored;
    }
    record_->setParameter(record_, index, value);
    require(chunk(false) == expected, "a parameter is stored where it belongs, and nowhere else");
}

Sound Instance::render(int frames) {
    EventList none;
    return render(frames, none);
}

Sound Instance::render(int frames, EventList& events) {
    Sound sound;
    sound.left.assign(frames, kUntouched);
    sound.right.assign(frames, kUntouched);
    dispatch(effProcessEvents, 0, 0, events.list());
    float* outputs[] = {sound.left.data(), sound.right.data()};
    record_->processReplacing(record_, nullptr, outputs, frames);
    for (const auto& channel : {sound.left, sound.right}) {
        for (const float x : channel) {
            require(std::isfinite(x), "a sample is finite");
            require(x != kUntouched, "a sample is written");
        }
    }
    return sound;
}

void Instance::requireBank(const std::string& expected) {
    require(chunk(false) == expected, "a chunk is kept as it came");
    const auto& bank = *reinterpret_cast<const state::BankChunk*>(expected.data());
    const auto program = static_cast<int>(dispatch(effGetProgram));
    for (int i = 0; i < state::kNumParams; ++i) {
        require(sameBits(record_->getParameter(record_, i), storedValue(bank, program, i)),
                "a parameter reads as the chunk has it");
        require(textFrom(state::kNameSize,
                         [&](char* text) { dispatch(effGetParamName, i, 0, text); }) ==
                    fieldText(bank.parameters[i].name),
                "a parameter is named as in the chunk");
        require(!textFrom(kVstMaxParamStrLen,
                          [&](char* text) { dispatch(effGetParamDisplay, i, 0, text); })
                     .empty(),
                "a parameter's value is shown");
    }
    require(std::isfinite(record_->getParameter(record_, state::kNumParams)),
            "what lies behind the table is finite");
    for (int i = 0; i < state::kNumPrograms; ++i) {
        require(textFrom(kVstMaxProgNameLen,
                         [&](char* text) { dispatch(effGetProgramNameIndexed, i, 0, text); }) ==
                    fieldText(bank.programs[i].name),
                "a program is named as in the chunk");
    }
}

std::vector<Sound> playChord(Instance& instance) {
    std::vector<Sound> sounds;
    EventList events;
    for (const unsigned char key : {36, 64, 71}) {
        events.clear();
        events.add(3, kVstMidiType, {0x90, key, 100});
        sounds.push_back(instance.render(50, events));
    }
    return sounds;
}

bool sameBits(const std::vector<Sound>& a, const std::vector<Sound>& b) {
    const auto same = [](const std::vector<float>& x, const std::vector<float>& y) {
        return x.size() == y.size() &&
               std::memcmp(x.data(), y.data(), x.size() * sizeof(float)) == 0;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](const Sound& x, const Sound& y) {
        return same(x.left, y.left) && same(x.right, y.right);
    });
}

}  // namespace fuzz
