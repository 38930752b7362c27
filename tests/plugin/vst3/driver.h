// A VST 3 host for tests: its own objects, and an instance in its hands.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "plugin/vst3/factory.h"
#include "plugin/vst3/parameter_list.h"
#include "plugin/vst3/reference.h"
#include "plugin/vst3/shell.h"
#include "plugin/vst3/text.h"
#include "tests/support/sound.h"

namespace driver {

using namespace vst3;

// Objects of the test's, which outlive what is done with them.
template <typename Interface>
class Local : public Interface {
  public:
    tresult VST3_CALL queryInterface(const TUID iid, void** object) override {
        *object = nullptr;
        const bool known =
            answers<Interface>(this, iid, object) || answers<FUnknown>(this, iid, object);
        return known ? kResultOk : kNoInterface;
    }
    uint32 VST3_CALL addRef() override { return ++references; }
    uint32 VST3_CALL release() override { return --references; }

    int references = 0;
};

// Moves so many bytes a call at most.
class Stream final : public Local<IBStream> {
  public:
    explicit Stream(std::string contents = "", int32 piece = 1 << 20)
        : bytes(std::move(contents)), piece_(piece) {}

    tresult VST3_CALL read(void* buffer, int32 size, int32* count) override {
        *count = std::min({size, piece_, static_cast<int32>(bytes.size() - position_)});
        std::memcpy(buffer, bytes.data() + position_, static_cast<size_t>(*count));
        position_ += static_cast<size_t>(*count);
        return kResultOk;
    }
    tresult VST3_CALL write(void* buffer, int32 size, int32* count) override {
        *count = std::min(size, piece_);
        bytes.append(static_cast<const char*>(buffer), static_cast<size_t>(*count));
        return kResultOk;
    }
    tresult VST3_CALL seek(int64, int32, int64*) override { return kNotImplemented; }
    tresult VST3_CALL tell(int64*) override { return kNotImplemented; }

    std::string bytes;

  private:
    int32 piece_;
    size_t position_ = 0;
};

class Queue final : public Local<IParamValueQueue> {
  public:
    explicit Queue(ParamID id) : id_(id) {}
    ParamID VST3_CALL getParameterId() override { return id_; }
    int32 VST3_CALL getPointCount() override { return static_cast<int32>(points.size()); }
    tresult VST3_CALL getPoint(int32 index, int32& offset, ParamValue& value) override {
        std::tie(offset, value) = points[index];
        return kResultOk;
    }
    tresult VST3_CALL addPoint(int32, ParamValue, int32&) override { return kNotImplemented; }

    std::vector<std::pair<int32, double>> points;

  private:
    ParamID id_;
};

class Changes final : public Local<IParameterChanges> {
  public:
    void add(ParamID id, int32 offset, double value) {
        const auto found = std::find_if(queues_.begin(), queues_.end(), [id](Queue& queue) {
            return queue.getParameterId() == id;
        });
        Queue& queue = found == queues_.end() ? queues_.emplace_back(id) : *found;
        queue.points.emplace_back(offset, value);
    }
    int32 VST3_CALL getParameterCount() override { return static_cast<int32>(queues_.size()); }
    IParamValueQueue* VST3_CALL getParameterData(int32 index) override { return &queues_[index]; }
    IParamValueQueue* VST3_CALL addParameterData(const ParamID&, int32&) override {
        return nullptr;
    }

  private:
    std::vector<Queue> queues_;
};

class Events final : public Local<IEventList> {
  public:
    void note(bool on, int key, int velocity, int32 offset) {
        Event event{};
        event.sampleOffset = offset;
        event.type = on ? Event::kNoteOnEvent : Event::kNoteOffEvent;
        if (on) {
            event.noteOn = {0, static_cast<int16>(key), 0, static_cast<float>(velocity) / 127, 0,
                            -1};
        } else {
            event.noteOff = {0, static_cast<int16>(key), 0, -1, 0};
        }
        list.push_back(event);
    }
    int32 VST3_CALL getEventCount() override { return static_cast<int32>(list.size()); }
    tresult VST3_CALL getEvent(int32 index, Event& event) override {
        event = list[index];
        return kResultOk;
    }
    tresult VST3_CALL addEvent(Event&) override { return kNotImplemented; }

    std::vector<Event> list;
};

// Writes down what it is told: "begin 3; edit 3 0.500; end 3; restart 4".
class Handler final : public Local<IComponentHandler> {
  public:
    tresult VST3_CALL beginEdit(ParamID id) override { return note("begin", id); }
    tresult VST3_CALL performEdit(ParamID id, ParamValue value) override {
        last = value;
        return note("edit", id);
    }
    tresult VST3_CALL endEdit(ParamID id) override { return note("end", id); }
    tresult VST3_CALL restartComponent(int32 flags) override {
        return note("restart", static_cast<ParamID>(flags));
    }
    std::string take() { return std::exchange(log_, std::string()); }

    ParamValue last = -1;

  private:
    tresult note(const char* what, ParamID id) {
        log_ += (log_.empty() ? "" : "; ") + std::string(what) + ' ' + std::to_string(id);
        return kResultOk;
    }
    std::string log_;
};

// A host's event loop, as its context or its frame offers it.
class RunLoop final : public Local<IRunLoop> {
  public:
    tresult VST3_CALL registerEventHandler(IEventHandler*, int) override { return kResultFalse; }
    tresult VST3_CALL unregisterEventHandler(IEventHandler*) override { return kResultFalse; }
    tresult VST3_CALL registerTimer(ITimerHandler* handler, uint64) override {
        handler->addRef();
        timers.push_back(handler);
        return kResultOk;
    }
    tresult VST3_CALL unregisterTimer(ITimerHandler* handler) override {
        const auto found = std::find(timers.begin(), timers.end(), handler);
        if (found == timers.end()) return kInvalidArgument;
        timers.erase(found);
        handler->release();
        return kResultOk;
    }
    void run() {
        for (ITimerHandler* const timer : std::vector(timers)) timer->onTimer();
    }

    std::vector<ITimerHandler*> timers;
};

using tests::Sound;

// One instance, from its creation to its last reference.
class Instance {
  public:
    explicit Instance(IPluginFactory* factory, FUnknown* context = nullptr) {
        void* object = nullptr;
        const auto id = reinterpret_cast<FIDString>(kClassId.data());
        factory->createInstance(id, reinterpret_cast<FIDString>(IComponent::kIid.data()), &object);
        component = Ref<IComponent>(static_cast<IComponent*>(object));
        processor = query<IAudioProcessor>(component.get());
        controller = query<IEditController>(component.get());
        component->initialize(context);
    }
    ~Instance() {
        if (component) component->terminate();
    }

    void start(double rate = 44100.0, int32 block = 1024) {
        ProcessSetup setup{kRealtime, kSample32, block, rate};
        processor->setupProcessing(setup);
        component->setActive(1);
        processor->setProcessing(1);
    }
    // One block with what has been put into `changes` and `events`.
    Sound render(int32 frames) {
        Sound sound{std::vector<float>(frames, NAN), std::vector<float>(frames, NAN)};
        float* channels[] = {sound.left.data(), sound.right.data()};
        AudioBusBuffers bus{2, 0, {channels}};
        ProcessData data = block(frames);
        data.numOutputs = 1;
        data.outputs = &bus;
        processor->process(data);
        changes = Changes();
        events = Events();
        sound.silent = bus.silenceFlags;
        return sound;
    }
    // The same without buffers.
    void flush() {
        ProcessData data = block(0);
        processor->process(data);
        changes = Changes();
        events = Events();
    }
    ProcessData block(int32 frames) {
        ProcessData data{};
        data.symbolicSampleSize = kSample32;
        data.numSamples = frames;
        data.inputParameterChanges = &changes;
        data.inputEvents = &events;
        return data;
    }
    // The peak of a second in which a key is played.
    float playedPeak() {
        events.note(true, 60, 100, 0);
        const float peak = render(44100).peak();
        events.note(false, 60, 0, 0);
        render(64);
        return peak;
    }

    double value(ParamID id) { return controller->getParamNormalized(id); }
    tresult load(const std::string& bytes, int32 piece = 1 << 20) {
        Stream stream(bytes, piece);
        return component->setState(&stream);
    }
    std::string saved(int32 piece = 1 << 20) {
        Stream stream("", piece);
        component->getState(&stream);
        return stream.bytes;
    }
    std::string text(ParamID id, double value) {
        String128 text;
        return controller->getParamStringByValue(id, value, text) == kResultOk ? utf8Of(text) : "?";
    }

    Ref<IComponent> component;
    Ref<IAudioProcessor> processor;
    Ref<IEditController> controller;
    Changes changes;
    Events events;
};

}  // namespace driver
