// SPDX-License-Identifier: Zlib
// Asks an X window to close, as a window manager's close button does: a WM_DELETE_WINDOW client
// message. The program decides what to do with it; nothing is destroyed by force.
//   x_close WINDOW_ID

#include <X11/Xlib.h>

#include <cstdlib>
#include <iostream>
#include <string>

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "usage: x_close WINDOW_ID\n";
        return 2;
    }
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::cerr << "x_close: cannot open the X display\n";
        return 1;
    }
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = std::stoul(argv[1], nullptr, 0);
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    const Status sent = XSendEvent(display, event.xclient.window, False, NoEventMask, &event);
    XSync(display, False);
    XCloseDisplay(display);
    return sent != 0 ? 0 : 1;
}
