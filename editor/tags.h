// The tags that tell the editor's controls apart. A parameter's tag is its index.
#pragma once

namespace editor {

constexpr int kNoTag = -1;
constexpr int kSkinSelectorTag = 999;
constexpr int kFirstSwitchTag = 1000;
constexpr int kSwitchCount = 4;
constexpr int kLearnTagBase = 0x100000;  // a tag with this bit means its low 16 bits
constexpr int kLearnTagMask = 0xFFFF;

}  // namespace editor
