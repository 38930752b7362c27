// The terminal in which a program runs, and the ways in which the user ends it.
#pragma once

#include <atomic>

namespace platform {

// Lets a Windows console show UTF-8 until the program ends. Other terminals expect it anyway.
void useUtf8Console();

// Whether somebody watches standard error.
bool isErrorOutputWatched();

// Sets the flag, instead of ending the program, when the user interrupts it or closes its terminal.
void setWhenInterrupted(std::atomic<bool>& flag);

// Messages go to standard error from now on, those of a loaded instrument too.
void printMessages();

}  // namespace platform
