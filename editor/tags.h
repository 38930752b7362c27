// The tags that tell the editor's controls apart. A parameter's tag is its index.
#pragma once

namespace editor {

constexpr int kNoTag = -1;
constexpr int kSkinSelectorTag = 999;
constexpr int kFirstSwitchTag = 1000;
constexpr int kSwitchCount = 4;
constexpr bool isSwitch(int tag) {
    return tag >= kFirstSwitchTag && tag < kFirstSwitchTag + kSwitchCount;
}
constexpr int kLearnTagBase = 0x100000;  // a tag with this bit means its low 16 bits
constexpr int kLearnTagMask = 0xFFFF;

// Buttons that do something with the whole sound or the editor.
enum Command {
    kUndoCommand = 1100,
    kRedoCommand,
    kCompareCommand,      // its value is 1 while version B shows
    kCopyCommand,         // to the other version
    kVaryCommand,         // asks which panel
    kControllersCommand,  // lists the learnt controllers
    kSizeCommand,         // lists the sizes
    kHelpCommand,
    kToolsCommand,          // a menu of all these
    kSoundsCommand = 1110,  // the sound browser
    kCommandsEnd
};
constexpr bool isCommand(int tag) {
    return tag >= kUndoCommand && tag < kCommandsEnd;
}

}  // namespace editor
