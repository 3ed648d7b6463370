// SPDX-License-Identifier: Zlib
// Holds Wine's desktop for a whole test session:
//   desktop_keeper
// prints "ready" once the desktop window exists, then waits until it is killed.
//
// Wine's desktop window belongs to a process of its own (explorer.exe), started by the first
// program that needs the desktop, with that program's standard error, and ending a moment after
// the last program leaves the desktop. When a test starts it, the test's output pipe stays open
// for as long as later tests keep the desktop busy, and the test runner, which reads to the end
// of that pipe, sees a test that passed but never ends. Started by the session before any test,
// this program is the one that starts the desktop process, with the session's own output, and
// keeps it for every test after.

#include <iostream>
#include <windows.h>

int main() {
    if (GetDesktopWindow() == nullptr) {
        std::cerr << "desktop_keeper: no desktop window\n";
        return 1;
    }
    std::cout << "ready" << std::endl;
    Sleep(INFINITE);
    return 0;
}
