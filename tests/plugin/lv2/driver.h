// An LV2 host for tests: its features, and an instance in its hands.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "lv2/atom/util.h"
#include "lv2/instance-access/instance-access.h"
#include "lv2/midi/midi.h"
#include "lv2/options/options.h"
#include "lv2/parameters/parameters.h"
#include "lv2/state/state.h"
#include "lv2/ui/ui.h"
#include "lv2/urid/urid.h"
#include "plugin/lv2/change_request.h"
#include "plugin/lv2/ports.h"
#include "tests/support/sound.h"
#include "plugin/lv2/uris.h"
#include "state/bank.h"

namespace lv2_driver {

using tests::Sound;

// Numbers for URIs, from 1. Any thread.
class UridMap {
  public:
    LV2_URID operator()(const char* uri) {
        const std::lock_guard<std::mutex> lock(mutex_);
        return ids_.emplace(uri, static_cast<LV2_URID>(ids_.size() + 1)).first->second;
    }
    LV2_URID_Map* data() { return &map_; }

  private:
    std::mutex mutex_;
    std::map<std::string, LV2_URID> ids_;
    LV2_URID_Map map_{
        this, [](void* self, const char* uri) { return (*static_cast<UridMap*>(self))(uri); }};
};

// What a host stores of a state.
struct SavedProperty {
    std::string bytes;
    LV2_URID type;
};
using Saved = std::map<LV2_URID, SavedProperty>;

// The host's side. Change requests are carried out in the next block, unless they are refused.
struct Host {
    std::vector<const LV2_Feature*> features() const {
        std::vector<const LV2_Feature*> all{&mapFeature, &optionsFeature};
        if (takesRequests) all.push_back(&requestFeature);
        all.push_back(nullptr);
        return all;
    }

    UridMap urids;
    bool takesRequests = false;
    bool refusesRequests = false;
    std::vector<std::pair<std::uint32_t, float>> requests;

    std::vector<LV2_Options_Option> options{1};
    lv2::ChangeRequest request{this, [](void* self, std::uint32_t port, float value) {
                                   auto& host = *static_cast<Host*>(self);
                                   host.requests.emplace_back(port, value);
                                   return host.refusesRequests ? 1 : 0;
                               }};
    LV2_Feature mapFeature{LV2_URID__map, urids.data()};
    LV2_Feature optionsFeature{LV2_OPTIONS__options, options.data()};
    LV2_Feature requestFeature{lv2::kChangeRequestUri, &request};
};

// One instance, with all ports connected.
class Instance {
  public:
    Instance(const LV2_Descriptor* descriptor, Host& host, double rate = 44100.0)
        : host(host), descriptor_(descriptor) {
        const auto features = host.features();
        handle = descriptor->instantiate(descriptor, rate, "/", features.data());
        for (std::uint32_t i = 0; i < controls.size(); ++i) connect(i, &controls[i]);
        controls[lv2::kEnabledPort] = 1.0f;
        connect(lv2::kMidiPort, midi_.data());
        clearMidi();
        // A host sets the ports to their defaults: the values of program 0.
        for (int i = 0; i < state::kNumParams; ++i) controls[i] = lv2::portValue(i, value(i, 0));
        descriptor_->activate(handle);
    }
    ~Instance() { close(); }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    void close() {
        if (handle) descriptor_->cleanup(std::exchange(handle, nullptr));
    }
    void connect(std::uint32_t port, void* data) { descriptor_->connect_port(handle, port, data); }
    void activate() { descriptor_->activate(handle); }
    void deactivate() { descriptor_->deactivate(handle); }
    template <typename Interface>
    const Interface* extension(const char* uri) const {
        return static_cast<const Interface*>(descriptor_->extension_data(uri));
    }

    // Puts an event into the next block.
    void send(std::int64_t frame, const std::vector<std::uint8_t>& bytes) {
        auto* const list = reinterpret_cast<LV2_Atom_Sequence*>(midi_.data());
        std::uint64_t room[8] = {};
        auto* const event = reinterpret_cast<LV2_Atom_Event*>(room);
        event->time.frames = frame;
        event->body = {static_cast<std::uint32_t>(bytes.size()), host.urids(LV2_MIDI__MidiEvent)};
        std::copy(bytes.begin(), bytes.end(), reinterpret_cast<std::uint8_t*>(event + 1));
        lv2_atom_sequence_append_event(list, sizeof midi_ - sizeof(LV2_Atom), event);
    }
    void clearMidi() {
        midi() = {{sizeof(LV2_Atom_Sequence_Body), host.urids(LV2_ATOM__Sequence)}, {0, 0}};
    }
    LV2_Atom_Sequence& midi() { return *reinterpret_cast<LV2_Atom_Sequence*>(midi_.data()); }

    Sound run(std::uint32_t frames) {
        for (const auto& [port, value] : std::exchange(host.requests, {})) {
            if (!host.refusesRequests) controls[port] = value;
        }
        Sound sound{std::vector<float>(frames, NAN), std::vector<float>(frames, NAN)};
        connect(lv2::kLeftPort, sound.left.data());
        connect(lv2::kRightPort, sound.right.data());
        descriptor_->run(handle, frames);
        clearMidi();
        return sound;
    }
    // The peak of a second in which a key is played.
    float playedPeak() {
        send(0, {0x90, 60, 100});
        const float peak = run(44100).peak();
        send(0, {0x80, 60, 0});
        run(64);
        return peak;
    }

    Saved saved() const {
        const auto store = [](LV2_State_Handle to, LV2_URID key, const void* value,
                              std::size_t size, LV2_URID type, std::uint32_t) {
            (*static_cast<Saved*>(to))[key] = {{static_cast<const char*>(value), size}, type};
            return LV2_STATE_SUCCESS;
        };
        Saved saved;
        extension<LV2_State_Interface>(LV2_STATE__interface)
            ->save(handle, store, &saved, LV2_STATE_IS_POD, nullptr);
        return saved;
    }
    LV2_State_Status restore(const Saved& saved) const {
        const auto retrieve = [](LV2_State_Handle from, LV2_URID key, std::size_t* size,
                                 LV2_URID* type, std::uint32_t*) -> const void* {
            const auto& all = *static_cast<const Saved*>(from);
            const auto found = all.find(key);
            if (found == all.end()) return nullptr;
            *size = found->second.bytes.size();
            *type = found->second.type;
            return found->second.bytes.data();
        };
        return extension<LV2_State_Interface>(LV2_STATE__interface)
            ->restore(handle, retrieve, const_cast<Saved*>(&saved), 0, nullptr);
    }
    std::string state() const { return saved()[host.urids(lv2::kStateKey)].bytes; }
    int program() const { return static_cast<unsigned char>(state()[4]); }
    // Of the instrument, not of its port.
    float value(int parameter, int program) const {
        state::BankChunk bank;
        std::memcpy(&bank, state().data() + 8, sizeof bank);
        return bank.programs[program].values[parameter];
    }
    float value(int parameter) const { return value(parameter, program()); }
    // Whether every port shows what the instrument has.
    bool portsAgree() const {
        for (int i = 0; i < state::kNumParams; ++i) {
            if (controls[i] != lv2::portValue(i, value(i))) return false;
        }
        return true;
    }
    Saved preset(int program) const {
        const std::int32_t number = program;
        return {
            {host.urids(lv2::kProgramKey),
             {{reinterpret_cast<const char*>(&number), sizeof number}, host.urids(LV2_ATOM__Int)}}};
    }

    Host& host;
    LV2_Handle handle = nullptr;
    std::array<float, lv2::kEnabledPort + 1> controls{};

  private:
    const LV2_Descriptor* descriptor_;
    std::array<std::uint64_t, 1024> midi_{};
};

}  // namespace lv2_driver
