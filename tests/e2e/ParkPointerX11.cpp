// SPDX-License-Identifier: Zlib
// Moves the X pointer to a place of the screen; the test asks the X server when it is there, and
// lets go of the buttons itself (with xdotool: XTEST is not needed here for anything else).

#include "ParkPointer.h"

#include <X11/Xlib.h>

bool ParkPointer(int x, int y, std::string& problem) {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        problem = "cannot open the X display";
        return false;
    }
    XWarpPointer(display, 0, DefaultRootWindow(display), 0, 0, 0, 0, x, y);
    XSync(display, False);
    XCloseDisplay(display);
    return true;
}
