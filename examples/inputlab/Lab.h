// SPDX-License-Identifier: Zlib
#pragma once

#include "CommandLine.h"
#include "EventEcho.h"
#include "GameControls.h"
#include "LabConfiguration.h"
#include "LabState.h"
#include "MenuControls.h"
#include "PointerControls.h"
#include "Renderer.h"
#include "WalkTrace.h"

#include <common/ITicker.h>
#include <host/Bootstrap.h>
#include <host/InputRecorder.h>
#include <host/InputScript.h>
#include <window/IWindow.h>

#include <atomic>
#include <memory>
#include <optional>
#include <ostream>

namespace InputLab {

/// The lab itself: one window, its renderer and the reactors, driven by a frame loop that polls
/// input, pumps the host's tickers and draws.
///
/// Everything it makes is dropped by its destructor, the window last, and must be dropped before
/// the host's bootstrap: the window writes its size and full-screen state to the configuration
/// when it closes.
class Lab {
public:
    /// Opens the window from the configuration, whose values `settings` holds as checked before
    /// the host started, and makes the renderer and the reactors. Engine main thread.
    /// Throws what the library, the host and the renderer throw.
    Lab(Host::Bootstrap& host, const LabOptions& options, const LabSettings& settings,
        std::optional<Host::InputScript> script, std::ostream& console);
    ~Lab();

    Lab(const Lab&) = delete;
    Lab& operator=(const Lab&) = delete;

    /// How the host's frame utility must be timed for `options`: a recorded or replayed run
    /// follows the frames, so that the same input gives the same course. Pure.
    static std::optional<Host::FramePace> Pace(const LabOptions& options);

    /// Runs frames until the window closes, Quit is chosen, `interrupted` turns true (a signal)
    /// or the number of frames asked for is reached; then writes the screenshot, when one was
    /// asked for. Throws what the library, the host and the renderer throw.
    void Run(const std::atomic<bool>& interrupted);

private:
    void RunFrame(unsigned long long frame);
    void BuildOverlay(Window::Resolution drawable, Clock::time_point previous);
    void ShowRates(Clock::time_point now);
    void SaveScreenshot();

    Host::Bootstrap& host;
    LabOptions options;
    std::optional<Host::InputScript> script;
    bool followsFrames;
    LabState state;
    EventEcho echo;
    WalkTrace walks{state.modalLevel};

    // Declared in the order of making; destruction runs backwards, so every reactor goes before
    // the renderer and the window.
    Zenk::IntrudablePointer<Window::IWindow> window;
    std::unique_ptr<Renderer> renderer;
    std::unique_ptr<Host::InputRecorder> recorder;
    std::unique_ptr<MenuControls> menu;
    std::unique_ptr<GameControls> game;
    std::unique_ptr<PointerControls> pointer;
    std::vector<Zenk::IntrudablePointer<Window::IWindowReactor>> windowReactors;

    // The title shows how often the host's tickers fire: this probe has the input ticker's period.
    Zenk::IntrudablePointer<Common::ITicker> rateProbe;
    unsigned long long ticks = 0;
    unsigned long long framesDrawn = 0;
    unsigned long long ticksAtLastShow = 0;
    unsigned long long framesAtLastShow = 0;
    Clock::time_point lastShow{};
    Window::Resolution lastDrawable{};
};

} // namespace InputLab
