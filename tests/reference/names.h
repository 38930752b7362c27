// Makes the names of dsp and engine visible here, so that the reference reads like the shipped
// engine.
//
// Comments marked "intentional" name oddities that saved sessions depend on; both engines share
// them.
#pragma once

namespace dsp {}
namespace engine {}

namespace reference {
using namespace dsp;
using namespace engine;
}  // namespace reference
