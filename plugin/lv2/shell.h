// The instrument as an LV2 host sees it.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>

#include "instrument/instrument.h"
#include "lv2/atom/atom.h"
#include "lv2/state/state.h"
#include "plugin/lv2/change_request.h"
#include "plugin/lv2/features.h"
#include "plugin/lv2/port_watch.h"
#include "plugin/lv2/ports.h"

namespace lv2 {

class Ui;

// Threads: the audio thread calls connect and run. A state may be saved and restored, and the
// editor shown, while it does.
class Shell final : public std::enable_shared_from_this<Shell>, private instrument::Host {
  public:
    Shell(double sampleRate, const LV2_URID_Map& map, const ChangeRequest* changeRequest);

    // An instance that lives until end(), and as long as a window shows it.
    static Shell* begin(double sampleRate, Features features);
    void end() { self_.reset(); }

    void connect(std::uint32_t port, void* data);
    void activate() { instrument_.resume(); }
    void deactivate() { instrument_.suspend(); }
    void run(std::uint32_t frames);  // run.cpp

    // saved_state.cpp
    LV2_State_Status save(LV2_State_Store_Function store, LV2_State_Handle handle);
    LV2_State_Status restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle);

    // options.cpp: a status, LV2_Options_Status.
    std::uint32_t getOptions(LV2_Options_Option* options);
    std::uint32_t setOptions(const LV2_Options_Option* options);

    // For the window.
    instrument::Instrument& instrument() { return instrument_; }
    // Makes the window the one that shows the editor, null: none. False while another one does.
    bool show(Ui* ui);
    // Writes the ports that do not show what the instrument has.
    void writePorts();

  private:
    struct Urids {
        explicit Urids(const LV2_URID_Map& map);
        LV2_URID atomChunk, atomFloat, atomInt, atomSequence, atomVector, midiEvent;
        LV2_URID state, ports, program, sampleRate, blockLength;
    };

    void gestureBegins(int parameter) override;
    void edited(int parameter, float value) override;
    void gestureEnds(int parameter) override;
    bool resizeEditor(int width, int height) override;

    void setSampleRate(double rate);
    void followPorts(int frames);
    void followEnabled();
    void takeMidi(int frames);
    void requestPorts();

    const LV2_URID_Map map_;
    const Urids urids_;
    const ChangeRequest* const changeRequest_;  // null if the host has none
    instrument::Instrument instrument_;
    PortWatch watch_;
    std::shared_ptr<Shell> self_;
    Ui* ui_ = nullptr;
    std::atomic<double> sampleRate_;
    float rateOption_ = 0.0f;

    std::array<const float*, state::kNumParams> controls_{};
    const float* enabled_ = nullptr;
    const LV2_Atom_Sequence* midi_ = nullptr;
    float* left_ = nullptr;
    float* right_ = nullptr;
    bool silenced_ = false;  // audio thread: not being enabled has been followed
};

}  // namespace lv2
