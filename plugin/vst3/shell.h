// The instrument as a VST 3 host sees it: one object that is component, processor and controller.
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <optional>
#include <string>

#include "instrument/instrument.h"
#include "plugin/vst3/controller.h"
#include "plugin/vst3/idle_timer.h"
#include "plugin/vst3/parameter_list.h"
#include "plugin/vst3/reference.h"
#include "plugin/told_values.h"

namespace vst3 {

class View;

// By the rule under which hosts put this class in the place of the VST 2 instrument of an old song:
// "VST", the instrument's ID, and the start of its name in lower case.
inline constexpr Uid kClassId = uid(0x56535473, 0x656E6971, 0x7561727A, 0x656C2073);

// Threads: the audio thread calls setProcessing, process and getTailSamples, the user-interface
// thread the rest.
class Shell final : public IComponent,
                    public IAudioProcessor,
                    public IEditController,
                    public IEditController2,
                    public IMidiMapping,
                    public IUnitInfo,
                    public IProcessContextRequirements,
                    private instrument::Host {
  public:
    // The context of the module may be null.
    explicit Shell(FUnknown* moduleContext);

    // shell.cpp: references, life, buses.
    tresult VST3_CALL queryInterface(const TUID iid, void** object) override;
    uint32 VST3_CALL addRef() override { return references_.add(); }
    uint32 VST3_CALL release() override;
    tresult VST3_CALL initialize(FUnknown* context) override;
    tresult VST3_CALL terminate() override;
    tresult VST3_CALL getControllerClassId(TUID) override { return kNotImplemented; }
    tresult VST3_CALL setIoMode(IoMode) override { return kResultOk; }
    int32 VST3_CALL getBusCount(MediaType type, BusDirection direction) override;
    tresult VST3_CALL getBusInfo(MediaType type, BusDirection direction, int32 index,
                                 BusInfo& bus) override;
    tresult VST3_CALL getRoutingInfo(RoutingInfo& input, RoutingInfo& output) override;
    tresult VST3_CALL activateBus(MediaType type, BusDirection direction, int32 index,
                                  TBool state) override;
    tresult VST3_CALL setActive(TBool state) override;
    tresult VST3_CALL setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                         SpeakerArrangement* outputs, int32 numOuts) override;
    tresult VST3_CALL getBusArrangement(BusDirection direction, int32 index,
                                        SpeakerArrangement& arrangement) override;

    // saved_state.cpp: for component and controller in one.
    tresult VST3_CALL setState(IBStream* stream) override;
    tresult VST3_CALL getState(IBStream* stream) override;
    tresult VST3_CALL setComponentState(IBStream*) override { return kResultOk; }

    // processing.cpp
    tresult VST3_CALL canProcessSampleSize(int32 symbolicSampleSize) override;
    uint32 VST3_CALL getLatencySamples() override { return 0; }
    tresult VST3_CALL setupProcessing(ProcessSetup& setup) override;
    tresult VST3_CALL setProcessing(TBool) override { return kResultOk; }
    tresult VST3_CALL process(ProcessData& data) override;
    uint32 VST3_CALL getTailSamples() override;
    uint32 VST3_CALL getProcessContextRequirements() override { return 0; }

    // parameters.cpp
    int32 VST3_CALL getParameterCount() override { return kParameterCount; }
    tresult VST3_CALL getParameterInfo(int32 index, ParameterInfo& info) override;
    tresult VST3_CALL getParamStringByValue(ParamID id, ParamValue value, String128 text) override;
    tresult VST3_CALL getParamValueByString(ParamID id, TChar* text, ParamValue& value) override;
    ParamValue VST3_CALL normalizedParamToPlain(ParamID id, ParamValue value) override;
    ParamValue VST3_CALL plainParamToNormalized(ParamID id, ParamValue plain) override;
    ParamValue VST3_CALL getParamNormalized(ParamID id) override;
    tresult VST3_CALL setParamNormalized(ParamID id, ParamValue value) override;
    tresult VST3_CALL getMidiControllerAssignment(int32 busIndex, int16 channel,
                                                  CtrlNumber controller, ParamID& id) override;

    // controller.cpp: the host's ear, the editor.
    tresult VST3_CALL setComponentHandler(IComponentHandler* handler) override;
    IPlugView* VST3_CALL createView(FIDString name) override;
    tresult VST3_CALL setKnobMode(int32 mode) override;
    tresult VST3_CALL openHelp(TBool onlyCheck) override;
    tresult VST3_CALL openAboutBox(TBool) override { return kResultFalse; }

    // units.cpp
    int32 VST3_CALL getUnitCount() override;
    tresult VST3_CALL getUnitInfo(int32 unitIndex, UnitInfo& info) override;
    int32 VST3_CALL getProgramListCount() override { return 1; }
    tresult VST3_CALL getProgramListInfo(int32 listIndex, ProgramListInfo& info) override;
    tresult VST3_CALL getProgramName(ProgramListID listId, int32 programIndex,
                                     String128 name) override;
    tresult VST3_CALL getProgramInfo(ProgramListID, int32, FIDString, String128) override;
    tresult VST3_CALL hasProgramPitchNames(ProgramListID, int32) override { return kResultFalse; }
    tresult VST3_CALL getProgramPitchName(ProgramListID, int32, int16, String128) override;
    UnitID VST3_CALL getSelectedUnit() override { return kRootUnitId; }
    tresult VST3_CALL selectUnit(UnitID unitId) override;
    tresult VST3_CALL getUnitByBus(MediaType type, BusDirection direction, int32 busIndex,
                                   int32 channel, UnitID& unitId) override;
    tresult VST3_CALL setUnitProgramData(int32, int32, IBStream*) override { return kResultFalse; }

    // For views.
    instrument::Instrument& instrument() { return instrument_; }
    int knobMode() const { return knobMode_; }
    // Makes the view the one that shows the editor, null: none. False while another one does.
    bool show(View* view);
    // Tells the host what it does not know yet.
    void tellHost();

  private:
    ~Shell() = default;  // by release

    void gestureBegins(int parameter) override;
    void edited(int parameter, float value) override;
    void gestureEnds(int parameter) override;
    void displayChanged(instrument::DisplayChange change) override;
    bool resizeEditor(int width, int height) override;

    // processing.cpp
    void takeParameters(IParameterChanges* changes, int frames);
    void takeQueue(IParamValueQueue& queue, int frames);
    void takePoint(ParamID id, int frame, double value, int frames);
    void takeEvents(IEventList* events, int frames);
    void followBypass();
    void render(ProcessData& data, float* left, float* right);

    std::string textOf(ParamID id, double value) const;
    std::optional<double> valueIn(ParamID id, const std::string& text) const;

    ReferenceCount references_;
    instrument::Instrument instrument_;
    std::array<float, state::kNumParams> defaults_;

    plugin::ToldValues told_;
    std::atomic<bool> namesChanged_{false};

    std::array<std::atomic<float>, kCountCtrlNumber> controllers_;
    std::atomic<bool> bypassed_{false};
    bool silenced_ = false;  // audio thread: bypass has been followed
    double sampleRate_;

    bool initialized_ = false;
    Ref<FUnknown> moduleContext_;
    Ref<IComponentHandler> handler_;
    std::unique_ptr<IdleTimer> timer_;
    View* view_ = nullptr;
    int knobMode_ = IEditController2::kLinearMode;  // until the host says
};

}  // namespace vst3
