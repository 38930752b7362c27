// The shell in a host's hands, with the bank that is delivered.
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "tests/host/midi_bytes.h"
#include "tests/plugin/shell_kit.h"
#include "tests/plugin/vst3/driver.h"

namespace {

using namespace driver;

constexpr ParamID kPedal = kFirstControllerId + 64;

class Vst3 : public ShellTest {
  protected:
    Instance make(FUnknown* context = nullptr) { return Instance(factory_.get(), context); }

    Ref<IPluginFactory> factory_{factory()};
    Instance instance_ = make();
};

double program(int number) {
    return number / 127.0;
}

TEST_F(Vst3, StartsWithTheValuesThatItDeclares) {
    ASSERT_EQ(instance_.controller->getParameterCount(), 174);
    for (int32 i = 0; i < 174; ++i) {
        ParameterInfo info;
        ASSERT_EQ(instance_.controller->getParameterInfo(i, info), kResultOk);
        EXPECT_EQ(instance_.value(info.id), info.defaultNormalizedValue) << i;
        EXPECT_TRUE(i >= state::kNumParams || info.id == static_cast<ParamID>(i));
    }
    const struct {
        ParamID controller;
        const char* title;
        double value;
    } rows[] = {
        {7, "CC 7", 0.0}, {11, "CC 11", 1.0}, {128, "Pressure", 0.0}, {129, "Pitch bend", 0.5}};
    for (const auto& row : rows) {
        ParameterInfo info;
        instance_.controller->getParameterInfo(static_cast<int32>(44 + row.controller), info);
        EXPECT_EQ(info.id, kFirstControllerId + row.controller);
        EXPECT_EQ(utf8Of(info.title), row.title);
        EXPECT_EQ(info.defaultNormalizedValue, row.value);
    }
    // Those of the bank, not those of the table.
    EXPECT_NE(instance_.value(state::kVolume), state::parameter(state::kVolume).defaultValue);
}

TEST_F(Vst3, ReadsItsTextsBack) {
    for (int32 i = 0; i < 174; ++i) {
        ParameterInfo info;
        instance_.controller->getParameterInfo(i, info);
        for (const double value : {0.0, 0.013, 0.25, 3.0 / 7, 0.5, 0.77, 1.0}) {
            const std::string text = instance_.text(info.id, value);
            String128 wide;
            copyText(text, wide);
            double back = -1;
            ASSERT_EQ(instance_.controller->getParamValueByString(info.id, wide, back), kResultOk)
                << text;
            EXPECT_EQ(instance_.text(info.id, back), text) << info.id;
        }
    }
    for (const std::string text :
         {"\xC3\xA9", "\xE5\xBC\xA6", "\xF0\x9F\x8E\xBB and", "\xF0\x90\x80\x80"}) {
        String128 wide;
        copyText(text, wide);
        EXPECT_EQ(utf8Of(wide), text);
    }
    EXPECT_EQ(instance_.text(state::kWaveform, 0.5), "Bowed");
    EXPECT_EQ(instance_.text(state::kKSplit, 3.0 / 7), "A2");  // a float below its step
    EXPECT_EQ(instance_.text(99, 0.5), "?");
    String128 nonsense = u"\xD800 ?";
    double value = 0.25;
    EXPECT_EQ(instance_.controller->getParamValueByString(0, nonsense, value), kResultFalse);
    EXPECT_EQ(value, 0.25);
}

TEST_F(Vst3, KeepsItsStateInPiecesOfAnySize) {
    for (const int32 piece : {1, 7, 4096, 1 << 20}) {
        for (const bool bypassed : {false, true}) {
            SCOPED_TRACE(piece);
            auto first = make();
            first.controller->setParamNormalized(kProgramId, program(7));
            first.controller->setParamNormalized(state::kSize, 0.625);
            first.controller->setParamNormalized(kBypassId, bypassed);
            const std::string bytes = first.saved(piece);
            EXPECT_EQ(bytes.size(), bypassed ? 26100u : 26096u);
            EXPECT_EQ(bytes.substr(0, 8), std::string("QZS1\x07\0\0\0", 8));
            auto second = make();
            ASSERT_EQ(second.load(bytes, piece), kResultOk);
            EXPECT_EQ(second.value(kProgramId), program(7));
            EXPECT_EQ(second.value(state::kSize), 0.625);
            EXPECT_EQ(second.value(kBypassId), bypassed);
            EXPECT_EQ(second.saved(), bytes);
        }
    }
}

std::string bankFile(const std::string& chunk, const std::string& id, unsigned version) {
    return "CcnK" + bigEndian(0, 4) + "FBCh" + bigEndian(version, 4) + id + bigEndian(1, 4) +
           bigEndian(128, 4) + bigEndian(version > 1 ? 9 : 0, 4) + std::string(124, '\0') +
           bigEndian(static_cast<unsigned>(chunk.size()), 4) + chunk;
}

TEST_F(Vst3, TakesTheStateOfTheVst2InstrumentThatItReplaces) {
    auto source = make();
    source.controller->setParamNormalized(kProgramId, program(9));
    source.controller->setParamNormalized(state::kSize, 0.625);
    const std::string own = source.saved();
    const std::string chunk = own.substr(8);
    const std::string wrapper = "VstW" + bigEndian(8, 4) + bigEndian(1, 4);
    const std::string file = bankFile(chunk, "seni", 2);
    const struct {
        const char* what;
        std::string bytes;
        int program;  // -1: refused
        bool bypassed = false;
    } rows[] = {
        {"wrapped", wrapper + bigEndian(0, 4) + file, 9},
        {"wrapped, in bypass", wrapper + bigEndian(1, 4) + file, 9, true},
        {"a bank file", file, 9},
        {"one of the first version", bankFile(chunk, "seni", 1), 0},
        {"the bare chunk", chunk, 0},
        {"of another instrument", bankFile(chunk, "abcd", 2), -1},
        {"with a short chunk", bankFile(chunk.substr(1), "seni", 2), -1},
        {"cut off", file.substr(0, file.size() - 1), -1},
        {"a long wrapper", "VstW" + bigEndian(255, 4) + bigEndian(1, 4), -1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        auto instance = make();
        const std::string before = instance.saved();
        EXPECT_EQ(instance.load(row.bytes) == kResultOk, row.program >= 0);
        if (row.program < 0) {
            EXPECT_EQ(instance.saved(), before);
        } else {
            EXPECT_EQ(instance.value(kProgramId), program(row.program));
            EXPECT_EQ(instance.value(kBypassId), row.bypassed);
            EXPECT_EQ(instance.saved().substr(8, chunk.size()), chunk);
        }
    }
}

// What a fault would bring up is a window, which the fixture sees.
TEST_F(Vst3, RefusesEveryOtherStateAndChangesNothing) {
    instance_.controller->setParamNormalized(kProgramId, program(3));
    const std::string good = instance_.saved();
    for (const std::string& bytes :
         {std::string(), std::string("Q"), std::string("QZS1"), std::string("VstW"),
          std::string("CcnK"), good.substr(0, 26095), good + '\0',
          good + std::string("\x02\0\0\0", 4), std::string(26088, 'Q'), std::string(1 << 20, 'Q'),
          "QZS1\x80" + good.substr(5), "QZS1" + std::string(4, '\xFF') + good.substr(8)}) {
        EXPECT_EQ(instance_.load(bytes), kResultFalse) << bytes.size();
        EXPECT_EQ(instance_.saved(), good);
    }
    EXPECT_NE(instance_.component->setState(nullptr), kResultOk);
}

TEST_F(Vst3, ProcessesWhateverBuffersThereAre) {
    instance_.start();
    float samples[8] = {};
    float* missing[] = {samples, nullptr};
    float* both[] = {samples, samples};
    AudioBusBuffers none{0, 0, {nullptr}};
    AudioBusBuffers mono{1, 0, {both}};
    AudioBusBuffers half{2, 0, {missing}};
    const struct {
        int32 frames;
        int32 outputs;
        AudioBusBuffers* buses;
    } rows[] = {{0, 0, nullptr}, {8, 0, nullptr}, {8, 1, nullptr}, {8, 1, &none},
                {8, 1, &mono},   {8, 1, &half},   {0, 0, &mono},   {-8, 1, &half}};
    double value = 0.0;
    for (const auto& row : rows) {
        value += 0.1;
        instance_.changes.add(state::kSize, 0, value);
        ProcessData data = instance_.block(row.frames);
        data.numOutputs = row.outputs;
        data.outputs = row.buses;
        EXPECT_EQ(instance_.processor->process(data), kResultOk);
        EXPECT_NEAR(instance_.value(state::kSize), value, 1e-6);
        instance_.changes = Changes();
        data.inputEvents = nullptr;
        data.inputParameterChanges = nullptr;
        EXPECT_EQ(instance_.processor->process(data), kResultOk);
    }
    ProcessSetup setup{kRealtime, kSample64, 64, 44100.0};
    EXPECT_EQ(instance_.processor->canProcessSampleSize(kSample64), kResultFalse);
    EXPECT_EQ(instance_.processor->setupProcessing(setup), kResultFalse);
    ProcessData data = instance_.block(8);
    data.symbolicSampleSize = kSample64;
    EXPECT_EQ(instance_.processor->process(data), kResultFalse);
    EXPECT_GT(instance_.playedPeak(), 0.01f);
}

TEST_F(Vst3, LosesNoPointAndNoEventOutsideTheBlock) {
    instance_.start();
    for (const int32 offset : {-1000, 0, 63, 64, 65, 100000}) {
        const double value = 0.5 + offset % 7 * 0.01;
        instance_.changes.add(state::kSize, offset, 0.1);
        instance_.changes.add(state::kSize, offset, value);
        instance_.changes.add(424242, offset, 0.9);  // unknown
        instance_.changes.add(state::kMix, offset, NAN);
        const double mix = instance_.value(state::kMix);
        instance_.render(64);
        EXPECT_NEAR(instance_.value(state::kSize), value, 1e-6) << offset;
        EXPECT_EQ(instance_.value(state::kMix), mix);
        instance_.events.note(true, 60, 100, offset);
        instance_.render(64);
        EXPECT_GT(instance_.render(4410).peak(), 0.001f) << offset;
        instance_.events.note(false, 60, 0, offset);
        instance_.render(64);
    }
    // A program comes before the parameters of its frame.
    instance_.changes.add(state::kSize, 8, 0.987);
    instance_.changes.add(kProgramId, 8, program(40));
    instance_.render(64);
    EXPECT_EQ(instance_.value(kProgramId), program(40));
    EXPECT_NEAR(instance_.value(state::kSize), 0.987, 1e-6);
}

// "HP" moves half way with each push, so what is applied twice can be heard.
TEST_F(Vst3, AppliesNothingTwice) {
    auto once = make();
    auto twice = make();
    Sound sounds[2];
    for (Instance* const instance : {&once, &twice}) {
        instance->start();
        instance->controller->setParamNormalized(state::kHP, 0.75);
        if (instance == &twice) {
            instance->controller->setParamNormalized(state::kHP, 0.75);
            instance->changes.add(state::kHP, 0, 0.75);
            instance->changes.add(kProgramId, 5, program(0));
        }
        instance->events.note(true, 48, 100, 10);
        sounds[instance == &twice] = instance->render(4410);
    }
    EXPECT_GT(sounds[0].peak(), 0.001f);
    EXPECT_EQ(sounds[0], sounds[1]);
}

TEST_F(Vst3, GoesOnThroughEveryOrderOfStates) {
    const std::map<char, std::function<void()>> calls = {
        {'A', [&] { instance_.component->setActive(1); }},
        {'a', [&] { instance_.component->setActive(0); }},
        {'P', [&] { instance_.processor->setProcessing(1); }},
        {'p', [&] { instance_.processor->setProcessing(0); }},
        {'r', [&] { instance_.render(333); }},
        {'f', [&] { instance_.flush(); }},
        {'t', [&] { instance_.component->terminate(); }},
        {'i', [&] { instance_.component->initialize(nullptr); }},
        {'b', [&] { instance_.component->activateBus(kAudio, kOutput, 0, 0); }},
        {'s', [&] { instance_.load(instance_.saved()); }},
    };
    for (const std::string order : {"r", "Ar", "PAr", "AAPPr", "pparA", "aAtir", "ifAfar", "bAPr",
                                    "APrsrapsAP", "titiAPftiAP", "APrpraPr"}) {
        for (const char call : order) calls.at(call)();
        EXPECT_GT(instance_.playedPeak(), 0.01f) << order;
    }
}

TEST_F(Vst3, PlaysAndKnowsItsTailAtAnyRate) {
    for (const double rate : {1234.5678, double{NAN}, 0.0, 48000.0}) {
        instance_.start(rate, rate > 10000 ? 16 : 8192);
        EXPECT_GT(instance_.playedPeak(), 0.001f) << rate;
        EXPECT_EQ(instance_.processor->getTailSamples(), rate > 0 ? unsigned(30 * rate) : 0u);
        instance_.component->setActive(0);
    }
    EXPECT_EQ(instance_.processor->getLatencySamples(), 0u);
}

TEST_F(Vst3, IsSilentInBypassAndSaysSo) {
    instance_.start();
    instance_.events.note(true, 60, 100, 0);
    EXPECT_GT(instance_.render(44100).peak(), 0.01f);
    instance_.changes.add(kBypassId, 32, 1.0);
    instance_.events.note(true, 64, 100, 40);
    const Sound bypassed = instance_.render(512);
    EXPECT_EQ(bypassed.peak(), 0.0f);
    EXPECT_EQ(bypassed.silent, 3u);
    instance_.changes.add(kBypassId, 0, 0.0);
    instance_.render(64);
    EXPECT_LT(instance_.render(4096).peak(), 1e-4f);  // no note hangs
    EXPECT_GT(instance_.playedPeak(), 0.01f);
}

TEST_F(Vst3, FlagsSilenceWhileItSleeps) {
    instance_.start();
    instance_.events.note(true, 60, 100, 0);
    EXPECT_EQ(instance_.render(4410).silent, 0u);
    instance_.events.note(false, 60, 0, 0);
    uint64 silent = 0;
    for (int second = 0; second < 60 && silent == 0; ++second) {
        const Sound sound = instance_.render(44100);
        silent = sound.silent;
        EXPECT_TRUE(silent == 0 || sound.peak() == 0.0f);
    }
    EXPECT_EQ(silent, 3u);
    EXPECT_GT(instance_.playedPeak(), 0.01f);
}

TEST_F(Vst3, PlaysEveryControllerOfEveryChannel) {
    const auto mapping = query<IMidiMapping>(instance_.component.get());
    ParamID id = kNoParamId;
    EXPECT_EQ(mapping->getMidiControllerAssignment(0, 15, kPitchBend, id), kResultTrue);
    EXPECT_EQ(id, kFirstControllerId + 129);
    for (const auto& [bus, channel, controller] :
         {std::tuple{1, 0, 7}, {0, 16, 7}, {0, -1, 7}, {0, 0, 130}, {0, 0, -1}}) {
        EXPECT_NE(mapping->getMidiControllerAssignment(bus, static_cast<int16>(channel),
                                                       static_cast<int16>(controller), id),
                  kResultTrue);
    }
    instance_.start();
    instance_.changes.add(kPedal, 0, 1.0);
    instance_.events.note(true, 60, 100, 0);
    instance_.events.note(false, 60, 0, 2000);
    instance_.render(44100);
    instance_.render(88200);
    EXPECT_GT(instance_.render(44100).peak(), 0.01f);  // the pedal holds it
    EXPECT_EQ(instance_.value(kPedal), 1.0);
}

TEST_F(Vst3, TellsTheHostWhatItDoesNotKnow) {
    RunLoop loop;
    Handler handler;
    auto instance = make(&loop);
    instance.controller->setComponentHandler(&handler);
    auto& body = static_cast<Shell*>(instance.component.get())->instrument();
    instance.start();
    const auto told = [&] {
        // Windows has a timer of its own.
        if (loop.timers.empty()) static_cast<Shell*>(instance.component.get())->tellHost();
        loop.run();
        return handler.take();
    };
    EXPECT_EQ(told(), "");
    body.beginEdit(3);
    body.setParameterAutomated(3, 0.5f);
    body.endEdit(3);
    EXPECT_EQ(told(), "begin 3; edit 3; end 3");
    instance.changes.add(3, 0, 0.5);
    instance.changes.add(state::kSize, 9, 0.111);
    instance.render(64);
    EXPECT_EQ(told(), "");
    body.setParameter(state::kSize, 0.4f);  // as a learnt controller does
    EXPECT_EQ(told(), "restart 4");
    body.setProgram(5);
    EXPECT_EQ(told(), "begin 100; edit 100; end 100; restart 4");
    EXPECT_EQ(handler.last, program(5));
    instance.changes.add(kProgramId, 9, program(6));  // the host knows of it, not of its values
    instance.render(64);
    EXPECT_EQ(told(), "restart 4");
    instance.controller->setParamNormalized(kProgramId, program(7));
    EXPECT_EQ(handler.take(), "restart 4");
    instance.component->terminate();
    EXPECT_TRUE(loop.timers.empty());
    EXPECT_EQ(handler.references, 0);
}

TEST_F(Vst3, LivesAHundredTimesAtOnce) {
    std::vector<std::unique_ptr<Instance>> all;
    for (int i = 0; i < 100; ++i) {
        all.push_back(std::make_unique<Instance>(factory_.get()));
        all.back()->start();
        all.back()->changes.add(kProgramId, 0, program(i));
        all.back()->render(64);
    }
    for (int i = 0; i < 100; i += 2) all[i].reset();
    for (int i = 1; i < 100; i += 2) EXPECT_EQ(all[i]->value(kProgramId), program(i));
}

TEST_F(Vst3, DescribesItsModuleBusesAndUnits) {
    const auto wide = query<IPluginFactory3>(factory_.get());
    PFactoryInfo maker{};
    PClassInfo narrowClass{};
    PClassInfoW wideClass{};
    EXPECT_EQ(factory_->getFactoryInfo(&maker), kResultOk);
    EXPECT_STREQ(maker.vendor, "Tembrilon");
    EXPECT_EQ(factory_->countClasses(), 1);
    EXPECT_EQ(factory_->getClassInfo(0, &narrowClass), kResultOk);
    EXPECT_EQ(wide->getClassInfoUnicode(0, &wideClass), kResultOk);
    EXPECT_TRUE(std::equal(kClassId.begin(), kClassId.end(), narrowClass.cid));
    EXPECT_STREQ(narrowClass.category, "Audio Module Class");
    EXPECT_EQ(utf8Of(wideClass.name) + ", " + wideClass.subCategories,
              "Quarzel Strings, Instrument|Synth");
    EXPECT_NE(factory_->getClassInfo(1, &narrowClass), kResultOk);

    const struct {
        MediaType type;
        BusDirection direction;
        int32 count;
        int32 channels;
    } buses[] = {{kAudio, kOutput, 1, 2},
                 {kEvent, kInput, 1, 16},
                 {kAudio, kInput, 0, 0},
                 {kEvent, kOutput, 0, 0}};
    const auto units = query<IUnitInfo>(instance_.component.get());
    for (const auto& row : buses) {
        for (const int32 index : {-1, 0, 1}) {
            const bool exists = index == 0 && row.count == 1;
            BusInfo bus{};
            UnitID unit = -1;
            EXPECT_EQ(instance_.component->getBusCount(row.type, row.direction), row.count);
            EXPECT_EQ(
                instance_.component->getBusInfo(row.type, row.direction, index, bus) == kResultOk,
                exists);
            EXPECT_EQ(
                instance_.component->activateBus(row.type, row.direction, index, 1) == kResultOk,
                exists);
            EXPECT_EQ(units->getUnitByBus(row.type, row.direction, index, 0, unit) == kResultOk,
                      exists);
            RoutingInfo from{row.type, index, 0}, to{};
            EXPECT_EQ(instance_.component->getRoutingInfo(from, to) == kResultOk,
                      row.type == kEvent && index == 0);
            EXPECT_EQ(bus.channelCount, exists ? row.channels : 0);
        }
    }
    SpeakerArrangement stereo = kSpeakerL | kSpeakerR, mono = kSpeakerM, found = 0;
    const struct {
        SpeakerArrangement* outputs;
        int32 inputs;
        int32 count;
    } arrangements[] = {
        {&stereo, 0, 1}, {&stereo, 1, 1}, {&mono, 0, 1}, {&stereo, 0, 0}, {nullptr, 0, 1}};
    for (const auto& row : arrangements) {
        EXPECT_EQ(instance_.processor->setBusArrangements(&stereo, row.inputs, row.outputs,
                                                          row.count) == kResultTrue,
                  &row == arrangements);
    }
    EXPECT_EQ(instance_.processor->getBusArrangement(kOutput, 0, found), kResultOk);
    EXPECT_EQ(found, stereo);
    EXPECT_NE(instance_.processor->getBusArrangement(kInput, 0, found), kResultOk);

    UnitInfo unit{};
    ProgramListInfo programs{};
    String128 name{};
    EXPECT_EQ(units->getUnitCount(), 2);
    EXPECT_EQ(units->getUnitInfo(1, unit), kResultOk);
    EXPECT_EQ(unit.id, kControllerUnitId);
    EXPECT_EQ(unit.parentUnitId, kRootUnitId);
    EXPECT_NE(units->getUnitInfo(2, unit), kResultOk);
    EXPECT_EQ(units->getProgramListInfo(0, programs), kResultOk);
    EXPECT_EQ(programs.programCount, 128);
    EXPECT_EQ(units->getProgramName(programs.id, 127, name), kResultOk);
    EXPECT_EQ(utf8Of(name), instance_.text(kProgramId, 1.0));
    EXPECT_NE(units->getProgramName(programs.id, 128, name), kResultOk);
}

TEST_F(Vst3, AnswersForTheInterfacesItHasOnly) {
    EXPECT_TRUE(query<IUnitInfo>(instance_.component.get()));
    EXPECT_FALSE(query<IPlugView>(instance_.component.get()));
    void* object = &instance_;
    const auto wrong = reinterpret_cast<FIDString>(IPlugView::kIid.data());
    const auto right = reinterpret_cast<FIDString>(kClassId.data());
    EXPECT_NE(factory_->createInstance(wrong, wrong, &object), kResultOk);
    EXPECT_NE(factory_->createInstance(right, wrong, &object), kResultOk);
    EXPECT_EQ(object, nullptr);
    EXPECT_NE(instance_.component->initialize(nullptr), kResultOk);  // it is already
}

}  // namespace
