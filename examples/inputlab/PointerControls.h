// SPDX-License-Identifier: Zlib
#pragma once

#include "LabContext.h"

#include <window/Reactors.h>
#include <zenkbase/intrudable_pointer.h>

#include <vector>

namespace InputLab {

/// The mouse's reactors: a cursor tracer that moves the square, the three buttons, which light
/// their cells while held, and the wheel, which makes the border glow. Button reactors and cursor
/// tracers answer at every modal level, so all of this goes on working while the menu is open.
class PointerControls {
public:
    static constexpr unsigned short Priority = 0;

    /// Engine main thread.
    explicit PointerControls(LabContext context);

private:
    void MakeTracer();
    void MakeButton(Window::Button button, Cell cell);
    void MakeWheel(Window::Button direction);

    LabContext context;
    Zenk::IntrudablePointer<Window::ICursorTracer> tracer;
    std::vector<Zenk::IntrudablePointer<Window::IButtonReactor>> buttons;
};

} // namespace InputLab
