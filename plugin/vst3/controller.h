// The VST 3 interface, part three: parameters, units and programs, the editor's view, what the host
// hears of them and, on Linux, its event loop.
#pragma once

#include "plugin/vst3/component.h"

namespace vst3 {

struct IPlugView;

using CtrlNumber = int16;
using ProgramListID = int32;

struct ParameterInfo {
    enum Flags : int32 {
        kNoFlags = 0,
        kCanAutomate = 1 << 0,
        kIsList = 1 << 3,
        kIsHidden = 1 << 4,
        kIsProgramChange = 1 << 15,
        kIsBypass = 1 << 16
    };

    ParamID id;
    String128 title;
    String128 shortTitle;
    String128 units;
    int32 stepCount;  // 0: continuous; otherwise the number of values less one
    ParamValue defaultNormalizedValue;
    UnitID unitId;
    int32 flags;
};

enum RestartFlags : int32 { kParamValuesChanged = 1 << 2 };

// Host: hears of edits by the player. UI thread.
struct IComponentHandler : FUnknown {
    static constexpr Uid kIid = uid(0x93A0BEA3, 0x0BD045DB, 0x8E890B0C, 0xC1E46AC6);

    virtual tresult VST3_CALL beginEdit(ParamID id) = 0;
    virtual tresult VST3_CALL performEdit(ParamID id, ParamValue valueNormalized) = 0;
    virtual tresult VST3_CALL endEdit(ParamID id) = 0;
    virtual tresult VST3_CALL restartComponent(int32 flags) = 0;
};

inline constexpr char kViewTypeEditor[] = "editor";

struct IEditController : IPluginBase {
    static constexpr Uid kIid = uid(0xDCD7BBE3, 0x7742448D, 0xA874AACC, 0x979C759E);

    virtual tresult VST3_CALL setComponentState(IBStream* state) = 0;
    virtual tresult VST3_CALL setState(IBStream* state) = 0;
    virtual tresult VST3_CALL getState(IBStream* state) = 0;
    virtual int32 VST3_CALL getParameterCount() = 0;
    virtual tresult VST3_CALL getParameterInfo(int32 index, ParameterInfo& info) = 0;
    virtual tresult VST3_CALL getParamStringByValue(ParamID id, ParamValue valueNormalized,
                                                    String128 text) = 0;
    virtual tresult VST3_CALL getParamValueByString(ParamID id, TChar* text,
                                                    ParamValue& valueNormalized) = 0;
    virtual ParamValue VST3_CALL normalizedParamToPlain(ParamID id, ParamValue valueNormalized) = 0;
    virtual ParamValue VST3_CALL plainParamToNormalized(ParamID id, ParamValue plainValue) = 0;
    virtual ParamValue VST3_CALL getParamNormalized(ParamID id) = 0;
    virtual tresult VST3_CALL setParamNormalized(ParamID id, ParamValue value) = 0;
    virtual tresult VST3_CALL setComponentHandler(IComponentHandler* handler) = 0;
    virtual IPlugView* VST3_CALL createView(FIDString name) = 0;
};

struct IEditController2 : FUnknown {
    static constexpr Uid kIid = uid(0x7F4EFE59, 0xF3204967, 0xAC27A3AE, 0xAFB63038);

    enum KnobModes : int32 { kCircularMode = 0, kRelativCircularMode = 1, kLinearMode = 2 };

    virtual tresult VST3_CALL setKnobMode(int32 mode) = 0;
    virtual tresult VST3_CALL openHelp(TBool onlyCheck) = 0;
    virtual tresult VST3_CALL openAboutBox(TBool onlyCheck) = 0;
};

// Numbers above the MIDI controllers that IMidiMapping is asked for; the last three are events of
// the output only.
enum ControllerNumbers : CtrlNumber {
    kAfterTouch = 128,
    kPitchBend = 129,
    kCountCtrlNumber = 130,
    kCtrlProgramChange = 130,
    kCtrlPolyPressure = 131,
    kCtrlQuarterFrame = 132
};

// MIDI controllers reach a component as parameters, by this map.
struct IMidiMapping : FUnknown {
    static constexpr Uid kIid = uid(0xDF0FF9F7, 0x49B74669, 0xB63AB732, 0x7ADBF5E5);

    virtual tresult VST3_CALL getMidiControllerAssignment(int32 busIndex, int16 channel,
                                                          CtrlNumber controller, ParamID& id) = 0;
};

inline constexpr UnitID kRootUnitId = 0;
inline constexpr UnitID kNoParentUnitId = -1;
inline constexpr ProgramListID kNoProgramListId = -1;
inline constexpr int32 kAllProgramInvalid = -1;

struct UnitInfo {
    UnitID id;
    UnitID parentUnitId;
    String128 name;
    ProgramListID programListId;
};

struct ProgramListInfo {
    ProgramListID id;
    String128 name;
    int32 programCount;
};

// Attributes of a program that getProgramInfo() is asked for.
inline constexpr char kAttributeInstrument[] = "MusicalInstrument";
inline constexpr char kAttributeStyle[] = "MusicalStyle";
inline constexpr char kAttributeCharacter[] = "MusicalCharacter";

struct IUnitInfo : FUnknown {
    static constexpr Uid kIid = uid(0x3D4BD6B5, 0x913A4FD2, 0xA886E768, 0xA5EB92C1);

    virtual int32 VST3_CALL getUnitCount() = 0;
    virtual tresult VST3_CALL getUnitInfo(int32 unitIndex, UnitInfo& info) = 0;
    virtual int32 VST3_CALL getProgramListCount() = 0;
    virtual tresult VST3_CALL getProgramListInfo(int32 listIndex, ProgramListInfo& info) = 0;
    virtual tresult VST3_CALL getProgramName(ProgramListID listId, int32 programIndex,
                                             String128 name) = 0;
    virtual tresult VST3_CALL getProgramInfo(ProgramListID listId, int32 programIndex,
                                             FIDString attributeId, String128 attributeValue) = 0;
    virtual tresult VST3_CALL hasProgramPitchNames(ProgramListID listId, int32 programIndex) = 0;
    virtual tresult VST3_CALL getProgramPitchName(ProgramListID listId, int32 programIndex,
                                                  int16 midiPitch, String128 name) = 0;
    virtual UnitID VST3_CALL getSelectedUnit() = 0;
    virtual tresult VST3_CALL selectUnit(UnitID unitId) = 0;
    virtual tresult VST3_CALL getUnitByBus(MediaType type, BusDirection direction, int32 busIndex,
                                           int32 channel, UnitID& unitId) = 0;
    virtual tresult VST3_CALL setUnitProgramData(int32 listOrUnitId, int32 programIndex,
                                                 IBStream* data) = 0;
};

struct IProgramListData : FUnknown {
    static constexpr Uid kIid = uid(0x8683B01F, 0x7B354F70, 0xA2651DEC, 0x353AF4FF);

    virtual tresult VST3_CALL programDataSupported(ProgramListID listId) = 0;
    virtual tresult VST3_CALL getProgramData(ProgramListID listId, int32 programIndex,
                                             IBStream* data) = 0;
    virtual tresult VST3_CALL setProgramData(ProgramListID listId, int32 programIndex,
                                             IBStream* data) = 0;
};

// Host: hears of changed program names. Asked of the component handler.
struct IUnitHandler : FUnknown {
    static constexpr Uid kIid = uid(0x4B5147F8, 0x4654486B, 0x8DAB30BA, 0x163A3C56);

    virtual tresult VST3_CALL notifyUnitSelection(UnitID unitId) = 0;
    virtual tresult VST3_CALL notifyProgramListChange(ProgramListID listId, int32 programIndex) = 0;
};

inline constexpr char kPlatformTypeHwnd[] = "HWND";
inline constexpr char kPlatformTypeX11[] = "X11EmbedWindowID";

struct ViewRect {  // pixels
    int32 left;
    int32 top;
    int32 right;
    int32 bottom;
};

// Host: owns the window around a view.
struct IPlugFrame : FUnknown {
    static constexpr Uid kIid = uid(0x367FAF01, 0xAFA94693, 0x8D4DA2A0, 0xED0882A3);

    // The host answers with onSize(), during the call or never.
    virtual tresult VST3_CALL resizeView(IPlugView* view, ViewRect* newSize) = 0;
};

struct IPlugView : FUnknown {
    static constexpr Uid kIid = uid(0x5BC32507, 0xD06049EA, 0xA6151B52, 0x2B755B29);

    virtual tresult VST3_CALL isPlatformTypeSupported(FIDString type) = 0;
    virtual tresult VST3_CALL attached(void* parent, FIDString type) = 0;
    virtual tresult VST3_CALL removed() = 0;
    virtual tresult VST3_CALL onWheel(float distance) = 0;
    virtual tresult VST3_CALL onKeyDown(char16_t key, int16 keyCode, int16 modifiers) = 0;
    virtual tresult VST3_CALL onKeyUp(char16_t key, int16 keyCode, int16 modifiers) = 0;
    virtual tresult VST3_CALL getSize(ViewRect* size) = 0;
    virtual tresult VST3_CALL onSize(ViewRect* newSize) = 0;
    virtual tresult VST3_CALL onFocus(TBool state) = 0;
    virtual tresult VST3_CALL setFrame(IPlugFrame* frame) = 0;
    virtual tresult VST3_CALL canResize() = 0;
    virtual tresult VST3_CALL checkSizeConstraint(ViewRect* rect) = 0;
};

struct IPlugViewContentScaleSupport : FUnknown {
    static constexpr Uid kIid = uid(0x65ED9690, 0x8AC44525, 0x8AADEF7A, 0x72EA703F);

    virtual tresult VST3_CALL setContentScaleFactor(float factor) = 0;
};

struct IEventHandler : FUnknown {
    static constexpr Uid kIid = uid(0x561E65C9, 0x13A0496F, 0x813A2C35, 0x654D7983);

    virtual void VST3_CALL onFDIsSet(int fd) = 0;
};

struct ITimerHandler : FUnknown {
    static constexpr Uid kIid = uid(0x10BDD94F, 0x41424774, 0x821FAD8F, 0xECA72CA9);

    virtual void VST3_CALL onTimer() = 0;
};

// Host on Linux: asked of the frame, or of the context that setHostContext() gives.
struct IRunLoop : FUnknown {
    static constexpr Uid kIid = uid(0x18C35366, 0x97764F1A, 0x9C5B8385, 0x7A871389);

    virtual tresult VST3_CALL registerEventHandler(IEventHandler* handler, int fd) = 0;
    virtual tresult VST3_CALL unregisterEventHandler(IEventHandler* handler) = 0;
    virtual tresult VST3_CALL registerTimer(ITimerHandler* handler, uint64 milliseconds) = 0;
    virtual tresult VST3_CALL unregisterTimer(ITimerHandler* handler) = 0;
};

static_assert(sizeof(ViewRect) == 16);
static_assert(sizeof(ParameterInfo) == 792 && offsetof(ParameterInfo, stepCount) == 772 &&
              offsetof(ParameterInfo, defaultNormalizedValue) == 776 &&
              offsetof(ParameterInfo, flags) == 788);
static_assert(sizeof(UnitInfo) == 268 && offsetof(UnitInfo, programListId) == 264);
static_assert(sizeof(ProgramListInfo) == 264 && offsetof(ProgramListInfo, programCount) == 260);

}  // namespace vst3
