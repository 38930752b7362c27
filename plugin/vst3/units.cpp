// The program list, and the unit that keeps the controllers out of the way.
#include "plugin/program_text.h"
#include "plugin/vst3/shell.h"
#include "plugin/vst3/text.h"

namespace vst3 {

namespace {

constexpr struct {
    UnitID id;
    UnitID parent;
    const char* name;
    ProgramListID programs;
} kUnits[] = {
    {kRootUnitId, kNoParentUnitId, "Quarzel Strings", kProgramListId},
    {kControllerUnitId, kRootUnitId, "MIDI", kNoProgramListId},
};
constexpr int32 kUnitCount = 2;

}  // namespace

int32 Shell::getUnitCount() {
    return kUnitCount;
}

tresult Shell::getUnitInfo(int32 unitIndex, UnitInfo& info) {
    if (unitIndex < 0 || unitIndex >= kUnitCount) return kResultFalse;
    const auto& unit = kUnits[unitIndex];
    info.id = unit.id;
    info.parentUnitId = unit.parent;
    copyText(unit.name, info.name);
    info.programListId = unit.programs;
    return kResultOk;
}

tresult Shell::getProgramListInfo(int32 listIndex, ProgramListInfo& info) {
    if (listIndex != 0) return kResultFalse;
    info.id = kProgramListId;
    copyText("Programs", info.name);
    info.programCount = state::kNumPrograms;
    return kResultOk;
}

tresult Shell::getProgramName(ProgramListID listId, int32 programIndex, String128 name) {
    if (listId != kProgramListId || !state::isProgram(programIndex)) return kResultFalse;
    copyText(plugin::programText(instrument_, programIndex), name,
             sizeof(String128) / sizeof(TChar));
    return kResultOk;
}

tresult Shell::getProgramInfo(ProgramListID, int32, FIDString, String128) {
    return kResultFalse;
}

tresult Shell::getProgramPitchName(ProgramListID, int32, int16, String128) {
    return kResultFalse;
}

tresult Shell::selectUnit(UnitID unitId) {
    return unitId == kRootUnitId || unitId == kControllerUnitId ? kResultOk : kResultFalse;
}

tresult Shell::getUnitByBus(MediaType type, BusDirection direction, int32 busIndex, int32,
                            UnitID& unitId) {
    if (busIndex < 0 || busIndex >= getBusCount(type, direction)) return kResultFalse;
    unitId = kRootUnitId;
    return kResultOk;
}

}  // namespace vst3
