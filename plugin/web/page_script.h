// What the page's script does for its module; see page_script.js.
#pragma once

namespace web {

enum Sent : int { kSendName, kSendParameter, kSendProgram, kSendBinding, kSendState, kSendKey };

}  // namespace web

extern "C" {
// Tells about a change: of a program's name, which the worklet need not know; of parameter `index`
// to `value`, to program `index`, of the controller `value` (or -1) bound to parameter `index`, or
// of everything. Or tells about key `index`, played with the velocity `value`. All but keys mean
// that there is something to store.
void quarzelSend(int what, int index, float value);
}
