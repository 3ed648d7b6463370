// SPDX-License-Identifier: Zlib
// Under Wine the pointer has two keepers, the X server and Wine's own server, and Wine learns of
// X pointer motion and buttons only over its own windows. A pointer parked with X alone, over no
// window of Wine's, stays where Wine last saw it, and a later move back to that place is then no
// move at all to the program that should see it; a button released over no window of Wine's
// stays held for Wine, and the next click reaches SDL as a second press. So the pointer is parked
// the way a Windows program moves it, which tells Wine's server and warps the X pointer too, and
// every button is let go of through Wine's input queue.

#include "ParkPointer.h"

#include <windows.h>

bool ParkPointer(int x, int y, std::string& problem) {
    if (!SetCursorPos(x, y)) {
        problem = "SetCursorPos failed with error " + std::to_string(GetLastError());
        return false;
    }
    POINT where{};
    if (!GetCursorPos(&where) || where.x != x || where.y != y) {
        problem = "the pointer is not where it was put";
        return false;
    }
    INPUT releases[3]{};
    const DWORD ups[] = {MOUSEEVENTF_LEFTUP, MOUSEEVENTF_RIGHTUP, MOUSEEVENTF_MIDDLEUP};
    for (int i = 0; i < 3; ++i) {
        releases[i].type = INPUT_MOUSE;
        releases[i].mi.dwFlags = ups[i];
    }
    if (SendInput(3, releases, sizeof(INPUT)) != 3) {
        problem = "SendInput failed with error " + std::to_string(GetLastError());
        return false;
    }
    return true;
}
