// A CLAP host for tests, and an instance in its hands. It holds the plug-in to the threads that the
// interface states.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "plugin/clap/factory.h"
#include "plugin/clap/parameter_list.h"
#include "plugin/clap/shell.h"
#include "tests/support/sound.h"

namespace clap_driver {

using namespace clap;
using tests::Sound;

// Writes down what it is told: "rescan 1; flush; dirty". One instance at a time is on the audio
// thread.
class TestHost {
  public:
    enum Offer { kAll, kNoTimer, kEmptyExtensions, kNothing };

    explicit TestHost(Offer offer = kAll) : offer_(offer) {}

    std::string take() { return std::exchange(log_, std::string()); }
    // Whether the plug-in wants its on_main_thread().
    bool takeCallback() { return callback_.exchange(false); }

    const Host host{kVersion, this, "Test", "Test", "", "1", extension, request, request, callback};
    bool onAudioThread = false;
    bool grantsResize = true;
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<Id> timers;

  private:
    static TestHost& of(const Host* host) { return *static_cast<TestHost*>(host->host_data); }
    static TestHost& onMain(const Host* host) {
        EXPECT_FALSE(of(host).onAudioThread);
        return of(host);
    }
    void note(const std::string& what) { log_ += (log_.empty() ? "" : "; ") + what; }

    static void CLAP_CALL request(const Host*) {}
    static void CLAP_CALL callback(const Host* host) { of(host).callback_ = true; }

    static const void* CLAP_CALL extension(const Host* host, const char* id) {
        static const HostParams params = {
            [](const Host* host, uint32_t flags) {
                onMain(host).note("rescan " + std::to_string(flags));
            },
            [](const Host*, Id, uint32_t) {},
            [](const Host* host) { onMain(host).note("flush"); },
        };
        static const HostState state = {[](const Host* host) { onMain(host).note("dirty"); }};
        static const HostNoteName noteNames = {
            [](const Host* host) { onMain(host).note("names"); }};
        static const HostPresetLoad presets = {
            [](const Host* host, uint32_t, const char*, const char*, int32_t, const char* message) {
                onMain(host).note(message);
            },
            [](const Host* host, uint32_t, const char*, const char* key) {
                onMain(host).note(std::string("loaded ") + key);
            },
        };
        static const HostGui gui = {
            [](const Host*) {},
            [](const Host* host, uint32_t width, uint32_t height) {
                of(host).width = width;
                of(host).height = height;
                return of(host).grantsResize;
            },
            [](const Host*) { return false; },
            [](const Host*) { return false; },
            [](const Host*, bool) {},
        };
        static const HostTimerSupport timerSupport = {
            [](const Host* host, uint32_t, Id* id) {
                *id = static_cast<Id>(1000 + onMain(host).timers.size());
                of(host).timers.push_back(*id);
                return true;
            },
            [](const Host* host, Id id) {
                auto& timers = onMain(host).timers;
                const auto found = std::find(timers.begin(), timers.end(), id);
                if (found == timers.end()) return false;
                timers.erase(found);
                return true;
            },
        };
        const TestHost& self = of(host);
        const auto is = [id](const char* other) { return std::strcmp(id, other) == 0; };
        if (self.offer_ == kNothing) return nullptr;
        static constexpr void* kNulls[16] = {};
        if (self.offer_ == kEmptyExtensions) return kNulls;
        if (is(kExtParams)) return &params;
        if (is(kExtState)) return &state;
        if (is(kExtGui)) return &gui;
        if (is(kExtTimerSupport)) return self.offer_ == kNoTimer ? nullptr : &timerSupport;
        if (is(kExtPresetLoad)) return &presets;
        return is(kExtNoteName) ? &noteNames : nullptr;
    }

    const Offer offer_;
    std::string log_;
    std::atomic<bool> callback_{false};
};

// Events of a block, in or out.
class Events {
  public:
    void note(uint16_t type, const NoteTable::Note& to, double velocity, uint32_t time = 0) {
        EventNote event{
            header<EventNote>(type, time), to.id, to.port, to.channel, to.key, velocity};
        add(event);
    }
    void expression(int32_t expression, const NoteTable::Note& to, double value,
                    uint32_t time = 0) {
        EventNoteExpression event{header<EventNoteExpression>(kEventNoteExpression, time),
                                  expression,
                                  to.id,
                                  to.port,
                                  to.channel,
                                  to.key,
                                  value};
        add(event);
    }
    void midi(int status, int data1, int data2, uint32_t time = 0) {
        EventMidi event{header<EventMidi>(kEventMidi, time), 0, {}};
        event.data[0] = static_cast<uint8_t>(status);
        event.data[1] = static_cast<uint8_t>(data1);
        event.data[2] = static_cast<uint8_t>(data2);
        add(event);
    }
    EventParamValue& value(Id id, double value, uint32_t time = 0) {
        EventParamValue event{
            header<EventParamValue>(kEventParamValue, time), id, nullptr, -1, -1, -1, -1, value};
        return reinterpret_cast<EventParamValue&>(add(event));
    }
    template <typename Event>
    static EventHeader header(uint16_t type, uint32_t time) {
        return {sizeof(Event), time, kCoreEventSpaceId, type, 0};
    }
    template <typename Event>
    EventHeader& add(const Event& event) {
        const auto* const bytes = reinterpret_cast<const char*>(&event);
        auto& stored = list_.emplace_back();
        std::memcpy(stored.data(), bytes, sizeof event);
        return reinterpret_cast<EventHeader&>(stored);
    }

    const InputEvents in{
        this, [](const InputEvents* list) { return static_cast<uint32_t>(of(list).list_.size()); },
        [](const InputEvents* list, uint32_t index) {
            return reinterpret_cast<const EventHeader*>(&of(list).list_[index]);
        }};
    const OutputEvents out{this, [](const OutputEvents* list, const EventHeader* event) {
                               Events& self = *static_cast<Events*>(list->ctx);
                               if (self.refuses) return false;
                               auto& stored = self.list_.emplace_back();
                               std::memcpy(stored.data(), event, event->size);
                               return true;
                           }};
    bool refuses = false;

    // "begin 3; value 3 0.5; end 3", a star behind what shall not be recorded; "note 7 0 2 60" for
    // a note's end: id, port, channel, key. Times are within the block and never fall.
    std::string take(uint32_t frames) {
        std::string text;
        uint32_t last = 0;
        for (const auto& stored : std::exchange(list_, {})) {
            const auto& event = reinterpret_cast<const EventHeader&>(stored);
            EXPECT_GE(event.time, last);
            EXPECT_LT(event.time, std::max(frames, 1u));
            last = event.time;
            text += (text.empty() ? "" : "; ") + described(event);
        }
        return text;
    }
    void clear() { list_.clear(); }

  private:
    static const Events& of(const InputEvents* list) {
        return *static_cast<const Events*>(list->ctx);
    }
    static std::string described(const EventHeader& event) {
        std::string text;
        const auto add = [&text](double number) {
            text += (' ' + std::to_string(number)).substr(0, 4);
        };
        if (event.type == kEventParamValue) {
            const auto& value = reinterpret_cast<const EventParamValue&>(event);
            text = "value " + std::to_string(value.param_id);
            add(value.value);
            if (event.flags & kEventDontRecord) text += '*';
        } else if (event.type == kEventNoteEnd) {
            const auto& note = reinterpret_cast<const EventNote&>(event);
            text = "note";
            for (const int part : {+note.note_id, +note.port_index, +note.channel, +note.key}) {
                text += ' ' + std::to_string(part);
            }
        } else {
            const auto& gesture = reinterpret_cast<const EventParamGesture&>(event);
            text = event.type == kEventParamGestureBegin ? "begin " : "end ";
            text += std::to_string(gesture.param_id);
        }
        return text;
    }

    struct alignas(8) Stored : std::array<char, sizeof(EventParamValue)> {};  // the largest
    std::deque<Stored> list_;
};

// One instance, from create_plugin() to destroy().
class Instance {
  public:
    using GetFactory = const void*(CLAP_CALL*)(const char*);

    explicit Instance(TestHost& host, GetFactory get = factory) : host_(host) {
        const auto* const plugins = static_cast<const PluginFactory*>(get(kPluginFactoryId));
        plugin = plugins->create_plugin(plugins, &host.host, descriptor().id);
        EXPECT_TRUE(plugin->init(plugin));
        params = extension<PluginParams>(kExtParams);
    }
    ~Instance() {
        deactivate();
        plugin->destroy(plugin);
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    template <typename Extension>
    const Extension* extension(const char* id) const {
        return static_cast<const Extension*>(plugin->get_extension(plugin, id));
    }
    instrument::Instrument& instrument() {
        return static_cast<Shell*>(plugin->plugin_data)->instrument();
    }

    template <typename Call>
    void onAudio(Call call) {
        host_.onAudioThread = true;
        call();
        host_.onAudioThread = false;
    }
    bool activate(double rate = 44100.0, uint32_t frames = 1024) {
        active_ = plugin->activate(plugin, rate, 1, frames);
        if (active_) onAudio([this] { EXPECT_TRUE(plugin->start_processing(plugin)); });
        return active_;
    }
    void deactivate() {
        if (!std::exchange(active_, false)) return;
        onAudio([this] { plugin->stop_processing(plugin); });
        plugin->deactivate(plugin);
    }
    // One block with what has been put into `events`; what comes out is in `news`.
    Sound render(int frames) {
        constexpr int kGuard = 16;
        const auto size = static_cast<size_t>(frames + kGuard);
        Sound sound{std::vector<float>(size, NAN), std::vector<float>(size, NAN)};
        float* channels[] = {sound.left.data(), sound.right.data()};
        AudioBuffer buffer{channels, nullptr, 2, 0, 0};
        Process block{};
        block.steady_time = -1;
        block.frames_count = static_cast<uint32_t>(frames);
        block.audio_outputs = &buffer;
        block.audio_outputs_count = 1;
        block.in_events = &events.in;
        block.out_events = &out_.out;
        onAudio([&] { status = plugin->process(plugin, &block); });
        for (auto* side : {&sound.left, &sound.right}) {
            for (int i = 0; i < kGuard; ++i) EXPECT_TRUE(std::isnan((*side)[size - 1 - i]));
            side->resize(static_cast<size_t>(frames));
        }
        sound.silent = buffer.constant_mask;
        events.clear();
        news = out_.take(static_cast<uint32_t>(frames));
        return sound;
    }
    void flush() {
        const auto call = [this] { params->flush(plugin, &events.in, &out_.out); };
        active_ ? onAudio(call) : call();
        events.clear();
        news = out_.take(0);
    }
    void setRefusing(bool refuses) { out_.refuses = refuses; }
    // Runs the main thread, if the plug-in wants it to; answers what the host was told.
    std::string told() {
        if (host_.takeCallback()) plugin->on_main_thread(plugin);
        return host_.take();
    }

    double value(Id id) const {
        double value = NAN;
        EXPECT_TRUE(params->get_value(plugin, id, &value)) << id;
        return value;
    }
    std::vector<double> values() const {
        std::vector<double> all;
        for (uint32_t i = 0; i < kParameterCount; ++i) all.push_back(value(parameterInfo(i).id));
        return all;
    }
    std::string text(Id id, double value) const {
        char text[kNameSize] = "?";
        params->value_to_text(plugin, id, value, text, sizeof text);
        return text;
    }
    bool load(std::string bytes, size_t piece = 1 << 20) {
        struct Source {
            std::string bytes;
            size_t piece, position;
        } source{std::move(bytes), piece, 0};
        const InputStream stream{&source, [](const InputStream* in, void* buffer, uint64_t size) {
                                     auto& from = *static_cast<Source*>(in->ctx);
                                     const size_t count = from.bytes.copy(
                                         static_cast<char*>(buffer),
                                         std::min<size_t>(size, from.piece), from.position);
                                     from.position += count;
                                     return static_cast<int64_t>(count);
                                 }};
        const auto* const state = extension<PluginState>(kExtState);
        return state->load(plugin, &stream);
    }
    std::string saved(size_t piece = 1 << 20) const {
        std::pair<std::string, size_t> target{"", piece};
        const OutputStream stream{
            &target, [](const OutputStream* out, const void* bytes, uint64_t size) {
                auto& [all, most] = *static_cast<std::pair<std::string, size_t>*>(out->ctx);
                const size_t count = std::min<size_t>(size, most);
                all.append(static_cast<const char*>(bytes), count);
                return static_cast<int64_t>(count);
            }};
        const auto* const context = extension<PluginStateContext>(kExtStateContext);
        EXPECT_TRUE(context->save(plugin, &stream, kStateContextForProject));
        return target.first;
    }

    const Plugin* plugin = nullptr;
    const PluginParams* params = nullptr;
    Events events;
    std::string news;
    ProcessStatus status = kProcessError;

  private:
    TestHost& host_;
    Events out_;
    bool active_ = false;
};

}  // namespace clap_driver
