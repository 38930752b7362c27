// Consoles and their control events.
#include "platform/console.h"
#include "platform/printed_messages_win32.h"

#include <cstdlib>

#include <windows.h>

namespace platform {
namespace {

std::atomic<std::atomic<bool>*> interrupted{nullptr};

// Runs on a thread of the system, which ends the program of a closed console when this returns.
BOOL WINAPI interrupt(DWORD event) {
    constexpr DWORD kLongest = 4000;  // ms; the system waits for five seconds
    *interrupted.load() = true;
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(kLongest);
    return TRUE;
}

}  // namespace

void useUtf8Console() {
    static const UINT before = GetConsoleOutputCP();
    if (before == 0 || !SetConsoleOutputCP(CP_UTF8)) return;
    std::atexit([] { SetConsoleOutputCP(before); });
}

bool isErrorOutputWatched() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

void setWhenInterrupted(std::atomic<bool>& flag) {
    interrupted = &flag;
    SetConsoleCtrlHandler(interrupt, TRUE);
}

void printMessages() {
    SetEnvironmentVariableA(kPrintedMessages, "1");
}

}  // namespace platform
