// Host calls in any order on one to four instances in one process.
#include <memory>
#include <vector>

#include "fuzz/support/instance.h"
#include "fuzz/support/skin_folder.h"
#include "fuzz/support/target.h"
#include "fuzz/support/world.h"
#include "plugin/vst2/editor_adapter.h"

namespace {

namespace headless = VSTGUI::headless;

constexpr const char* kSkin = R"(<GUI><background filename="bg.png"/>
<knob x="0" y="0" w="40" h="40" id="1"/><onoff x="50" y="0" id="17" bitmap_handle="20x40.png"/>
<optionmenu x="80" y="0" w="80" h="20" id="6" style="0"/><vswitch x="170" y="0" id="35"
entries="3" bitmap_handle="20x40.png"/><display x="0" y="50" w="60" h="20" id="1" style="0"/>
<anydisp x="70" y="50" w="160" h="20" style="0"/><slider x="0" y="80" len="100" id="0" style="1"
bitmap_handle="10x10.png"/><skinselector x="120" y="80" w="80" h="20" style="0"/>
<NoteDisplay x="0" y="110" w="60" h="20" id="0"/><ViewTaps x="70" y="110" w="60" h="20"/>
<PresetsDisplay x="0" y="140" w="200" h="20" id="0"/><vumeter x="220" y="0" id="0" leds="9"
style="2" bitmap_on="20x40.png" bitmap_off="20x40.png"/></GUI>)";

// Size of the buffer that the opcode reads or fills; 0 if it takes no pointer.
std::size_t bufferSize(VstInt32 opcode) {
    switch (opcode) {
        case effGetProgramName:
        case effGetProgramNameIndexed:
        case effGetParamName:
        case effSetProgramName:
            return state::kNameSize;
        case effGetParamLabel:
        case effGetParamDisplay:
            return kVstMaxParamStrLen;
        case effEditGetRect:
        case effGetChunk:
            return sizeof(void*);
        case effGetEffectName:
            return kVstMaxEffectNameLen + 1;
        case effGetVendorString:
        case effGetProductString:
        case effCanDo:
        case effString2Parameter:
            return 64;
        case effGetInputProperties:
        case effGetOutputProperties:
            return sizeof(VstPinProperties);
        case effGetParameterProperties:
            return sizeof(VstParameterProperties);
        case effGetMidiProgramName:
        case effGetCurrentMidiProgram:
            return sizeof(MidiProgramName);
        case effGetMidiProgramCategory:
            return sizeof(MidiProgramCategory);
        case effGetMidiKeyName:
            return sizeof(MidiKeyName);
        case effBeginLoadBank:
        case effBeginLoadProgram:
            return sizeof(VstPatchChunkInfo);
        case effGetErrorText:
            return 256;
        case effShellGetNextPlugin:
            return kVstMaxProductStrLen;
        case effEditOpen:
        case effVendorSpecific:
        case effOfflineNotify:
        case effOfflinePrepare:
        case effOfflineRun:
        case effProcessVarIo:
            return 8;
        default:
            return 0;
    }
}

class Host {
  public:
    Host(fuzz::World& world, fuzz::Input& input) : world_(world), input_(input) {
        instances_.resize(1 + input.below(4));
        for (auto& instance : instances_) instance = std::make_unique<fuzz::Instance>();
    }

    // An action on one instance must not change another.
    void act() {
        const std::vector<std::string> before = chunks();
        const int action = input_.byte();
        const std::size_t which = (action >> 4) % instances_.size();
        taker_ = which;
        act(action & 15, which);
        const std::vector<std::string> after = chunks();
        for (std::size_t i = 0; i < after.size(); ++i) {
            const bool meant = i == which || i == taker_;
            fuzz::require(meant || before[i] == after[i], "instances are apart");
        }
    }

    void requireWhole() {
        for (auto& instance : instances_) instance->requireBank(instance->chunk(false));
    }

  private:
    std::vector<std::string> chunks() {
        std::vector<std::string> all;
        for (auto& instance : instances_) all.push_back(instance->chunk(false));
        return all;
    }

    void act(int action, std::size_t which) {
        auto& instance = *instances_[which];
        switch (action) {
            case 0:
            case 1:
            case 2:
                return play(instance);
            case 3:
                return instance.setParameter(input_.below(state::kNumParams), input_.share());
            case 4:
                return instance.setParameter(input_.integer(), input_.real());
            case 5:
                return passChunk(instance);
            case 6:
                return damageChunk(instance);
            case 7:
                return useEditor(instance);
            case 8:
                return changeRate(instance);
            case 9:
                instances_[which].reset();
                instances_[which] = std::make_unique<fuzz::Instance>();
                return;
            case 10:
                instance.synth().instrument().learnSlot().arm(input_.below(state::kNumParams + 1));
                return;
            case 11:
                return selectProgram(instance);
            case 12:
                instance.dispatch(effMainsChanged, 0, input_.byte() % 2);
                return;
            case 13:
                return callEntries(instance);
            default:
                return dispatchAny(instance);
        }
    }

    void play(fuzz::Instance& instance) {
        const int frames = 1 + input_.below(64);
        fuzz::EventList events;
        events.add(input_, frames);
        instance.render(frames, events);
    }

    // A chunk from one instance must come back unchanged from another.
    void passChunk(fuzz::Instance& from) {
        taker_ = input_.below(4) % instances_.size();
        fuzz::Instance& to = *instances_[taker_];
        const bool isPreset = input_.byte() % 2 != 0;
        const std::string chunk = from.chunk(isPreset);
        to.setChunk(chunk, isPreset);
        fuzz::require(to.chunk(isPreset) == chunk, "a chunk travels whole");
    }

    // Unsupported entry points must not write to the host's memory, nor must a block without frames
    // or outputs.
    void callEntries(fuzz::Instance& instance) {
        constexpr int kFrames = 4;
        float left[kFrames] = {1.0f, 2.0f, 3.0f, 4.0f};
        double wide[kFrames] = {1.0, 2.0, 3.0, 4.0};
        float* outputs[] = {left, input_.byte() % 2 ? left : nullptr};
        double* wideOutputs[] = {wide, wide};
        instance->process(instance.record(), nullptr, outputs, kFrames);
        instance->processDoubleReplacing(instance.record(), nullptr, wideOutputs, kFrames);
        const int frames = -input_.below(3);
        instance->processReplacing(instance.record(), nullptr, frames < 0 ? outputs : nullptr,
                                   frames < 0 ? frames : kFrames);
        fuzz::require(left[0] == 1.0f && left[3] == 4.0f && wide[3] == 4.0, "nothing is written");
    }

    void damageChunk(fuzz::Instance& instance) {
        const bool isPreset = input_.byte() % 2 != 0;
        std::string chunk = instance.chunk(isPreset);
        const std::size_t place = input_.word() % chunk.size();
        const std::string_view run = input_.take(input_.byte());
        chunk.replace(place, run.size(), run, 0, chunk.size() - place);
        instance.setChunk(chunk, isPreset);
    }

    void changeRate(fuzz::Instance& instance) {
        constexpr float kRates[] = {44100.0f,  48000.0f, 96000.0f, 1000.0f,
                                    768000.0f, 22050.0f, 0.0f,     -1.0f};
        const int rate = input_.byte();
        instance.dispatch(effSetSampleRate, 0, 0, nullptr,
                          rate < 0x80 ? kRates[rate % std::size(kRates)] : input_.real());
    }

    void selectProgram(fuzz::Instance& instance) {
        const int program = static_cast<signed char>(input_.byte());
        const VstIntPtr before = instance.dispatch(effGetProgram);
        instance.dispatch(effSetProgram, 0, program);
        fuzz::require(instance.dispatch(effGetProgram) == (program < 0 ? before : program),
                      "the program is the one chosen");
    }

    void useEditor(fuzz::Instance& instance) {
        const int step = input_.byte();
        const VSTGUI::CPoint where(input_.byte(), input_.byte());
        auto& editor = static_cast<vst2::EditorAdapter*>(instance.synth().getEditor())->editor();
        ERect* rect = nullptr;
        switch (step % 8) {
            case 0:
                fuzz::require(instance.dispatch(effEditOpen, 0, 0, &world_) == 1, "it opens");
                break;
            case 1:
                instance.dispatch(effEditClose);
                break;
            case 2:
                instance.dispatch(effEditGetRect, 0, 0, &rect);
                fuzz::require(rect && rect->right > 0 && rect->bottom > 0, "it has a size");
                break;
            case 3:
                world_.clock.skip(input_.byte());
                break;
            case 4:
            case 5:
                if (editor.isOpen()) headless::click(*editor.getFrame(), where);
                break;
            case 6:
                if (editor.isOpen()) headless::click(*editor.getFrame(), where, VSTGUI::kRButton);
                break;
            default:
                if (editor.isOpen()) headless::press(*editor.getFrame(), where);
                if (editor.isOpen()) headless::move(*editor.getFrame(), where + where);
        }
        instance.dispatch(effEditIdle);
    }

    void dispatchAny(fuzz::Instance& instance) {
        const VstInt32 opcode = input_.byte() < 0xF0 ? input_.byte() % 90 : input_.integer();
        // These take other kinds of pointers, or destroy the instance.
        if (opcode == effClose || opcode == effSetChunk || opcode == effProcessEvents) return;
        if (opcode == effSetSpeakerArrangement || opcode == effGetSpeakerArrangement) return;
        const int how = input_.byte();
        const VstInt32 index = how & 1 ? input_.integer() : input_.below(140);
        const VstIntPtr value = how & 2 ? VstIntPtr{input_.integer()} * (VstIntPtr{1} << (how >> 4))
                                        : VstIntPtr{input_.byte()};
        const float opt = how & 4 ? input_.real() : input_.share() * 100000.0f;
        const std::size_t size = bufferSize(opcode);
        const auto buffer = std::make_unique<char[]>(size);
        if (size > 0) input_.take(size - 1).copy(buffer.get(), size - 1);
        instance.dispatch(opcode, index, value, size > 0 && how & 8 ? buffer.get() : nullptr, opt);
    }

    fuzz::World& world_;
    fuzz::Input& input_;
    std::size_t taker_ = 0;  // of the last chunk
    std::vector<std::unique_ptr<fuzz::Instance>> instances_;
};

void run(std::string_view bytes) {
    fuzz::World world;
    fuzz::makeSkinFolder(world.module.path(), kSkin);
    fuzz::Input input(bytes);
    world.host.answers[audioMasterUpdateDisplay] = input.byte() % 2;
    Host host(world, input);
    for (int count = 0; count < 60 && !input.empty(); ++count) host.act();
    host.requireWhole();
}

const fuzz::Registered registered("host_calls", run);

}  // namespace
