// The reference engine reads like the shipped one: both folders' names are its own.
#pragma once

namespace dsp {}
namespace engine {}

namespace reference {
using namespace dsp;
using namespace engine;
}  // namespace reference
