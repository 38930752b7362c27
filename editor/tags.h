// The numbers that tell the editor's controls apart. Those below are parameters.
#pragma once

namespace editor {

constexpr int kNoTag = -1;
constexpr int kSkinSelectorTag = 999;
constexpr int kFirstSwitchTag = 1000;
constexpr int kSwitchCount = 4;
constexpr int kLearnTagBase = 0x100000;  // a tag with this bit stands for its low 16 bits
constexpr int kLearnTagMask = 0xFFFF;

}  // namespace editor
