// Tells movements of the control ports that parameters follow from those that are echoes.
#pragma once

#include <array>
#include <atomic>

#include "state/parameters.h"

namespace lv2 {

// A port shows what its host holds. The instrument also takes values from programs, controllers,
// the editor and saved states, of which the host may never hear. Hence the rule:
//
//  - A parameter follows its port when the port moves, and only then.
//  - It does not follow to where it already is ("HP" moves with each push).
//  - When the host has been told a value, or saved one with the state that it restores, the port
//    has a second to come there. Until it does, its movements are older, and nothing follows. So it
//    does not matter whether a host sets its ports before or after it restores a state, nor how
//    late it carries out what the editor writes.
class PortWatch {
  public:
    // Before the first block: where the port stands unless its host says otherwise.
    void start(int index, float port);

    // Audio thread: before the ports of a block.
    void beginBlock(int frames, double sampleRate);
    // Audio thread: whether the parameter is to follow its port, which is here now.
    bool moved(int index, float port);

    // Any thread. The host holds this value, and the port will come to it.
    void expect(int index, float port);
    // Any thread. The port will not come, after all.
    void refuse(int index) { framesLeft_[index] = kArrived; }
    // Any thread. What the host holds, as far as is known here.
    float known(int index) const { return known_[index]; }
    // Any thread. Whether the host should be told that the parameter has this value.
    bool isBehind(int index, float value) const;

  private:
    static constexpr int kArrived = 0;
    static constexpr int kJustTold = -1;

    std::array<std::atomic<float>, state::kNumParams> known_{};
    std::array<std::atomic<int>, state::kNumParams> framesLeft_{};  // or one of the above
    std::array<float, state::kNumParams> seen_{};                   // audio thread
    int frames_ = 0;
    int patience_ = 0;  // frames
};

}  // namespace lv2
