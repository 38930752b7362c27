// Plays the user in front of a real Windows message box.
#pragma once

#include <string>

#include <windows.h>

// Presses the button of the message box with that title as soon as it appears. Returns its text and
// the button's label, or a sentence if there is no box or more than one button.
inline std::string dismissMessageBox(const char* title) {
    HWND box = nullptr;
    for (int i = 0; i < 500 && !box; ++i) {
        box = FindWindowA("#32770", title);
        Sleep(10);
    }
    if (!box) return "no box";
    Sleep(50);  // the box exists before its contents
    char text[256] = {};
    GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
    const HWND button = FindWindowExA(box, nullptr, "Button", nullptr);
    char label[16] = {};
    GetWindowTextA(button, label, sizeof label);
    const bool alone = FindWindowExA(box, button, "Button", nullptr) == nullptr;
    SendMessageA(button, BM_CLICK, 0, 0);
    return std::string(text) + (alone ? " [" : " [more than ") + label + "]";
}
