// SPDX-License-Identifier: Zlib
#pragma once

#include "EventEcho.h"
#include "LabState.h"
#include "WalkTrace.h"

#include <common/SMessageLog.h>
#include <window/IWindow.h>
#include <window/SInputCollector.h>

namespace InputLab {

/// What the reactors' callbacks reach: the library's objects, the host's log, the lab's state,
/// the console echo and the record of priority walks. Everything here outlives every reactor that
/// refers to it.
struct LabContext {
    Window::SInputCollector& collector;
    Window::IWindow& window;
    Common::Log::SMessageLog& log;
    LabState& state;
    EventEcho& echo;
    WalkTrace& walks;
};

/// Marks a cell as held in this frame; the scene lights it for a short while.
inline void StampHold(LabState& state, Cell cell) {
    state.lastHold[static_cast<std::size_t>(cell)] = state.now;
}

/// Switches full screen on or off; the window saves the state at its end.
inline void ToggleFullScreen(LabContext& context) {
    context.state.fullScreen = !context.state.fullScreen;
    context.window.SetFullScreen(context.state.fullScreen);
    context.echo.Note(context.state.fullScreen ? "full screen on" : "full screen off");
}

} // namespace InputLab
