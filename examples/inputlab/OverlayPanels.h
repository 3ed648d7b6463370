// SPDX-License-Identifier: Zlib
#pragma once

#include "EventEcho.h"
#include "LabState.h"
#include "WalkTrace.h"

#include <window/Resolution.h>

namespace InputLab {

/// The overlay's content, drawn with Dear ImGui between `Overlay::Begin` and `Overlay::End`:
/// the names of the cells and menu items and the typed text over the scene; the last lines of
/// the echo; the modal level, what is held and the typed line; and the priority walk of the
/// last key or button event. Everything comes from what the lab's reactors heard, laid out for
/// `drawable` pixels as the scene is. Engine main thread.
void DrawPanels(const LabState& state, const EventEcho& echo, const WalkTrace& walks,
                Window::Resolution drawable);

} // namespace InputLab
