// The terminal in which a program runs, and the ways in which the user ends it.
#pragma once

#include <atomic>

namespace platform {

// Lets a Windows console show UTF-8 within a scope. Other terminals expect it anyway.
class Utf8Console {
  public:
    Utf8Console();
    ~Utf8Console();
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

  private:
    unsigned codePageBefore_ = 0;
};

// Whether somebody watches standard error.
bool isErrorOutputWatched();

// Sets the flag, instead of ending the program, when the user interrupts it or closes its terminal.
void setWhenInterrupted(std::atomic<bool>& flag);

// Messages go to standard error from now on, those of a loaded instrument too.
void printMessages();

}  // namespace platform
