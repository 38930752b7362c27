// How a program asks the libraries that it loads to print their messages.
#pragma once

namespace platform {

constexpr const char* kPrintedMessages = "QUARZEL_PRINTED_MESSAGES";  // variable of the environment

}  // namespace platform
