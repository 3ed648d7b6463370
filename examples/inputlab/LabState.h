// SPDX-License-Identifier: Zlib
#pragma once

#include <zenkbase/two_dimensional_coordinate.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace InputLab {

using Clock = std::chrono::steady_clock;

/// The cells of the bottom row, each lit while the hold callbacks of its input keep coming.
enum class Cell : std::size_t {
    W,
    A,
    S,
    D,
    Q,
    E,
    LeftShift,
    LeftCtrl,
    LeftAlt,
    RightShift,
    RightCtrl,
    RightAlt,
    LeftButton,
    MiddleButton,
    RightButton,
    Count,
};

inline constexpr std::size_t CellCount = static_cast<std::size_t>(Cell::Count);

/// The items of the menu, top to bottom.
enum class MenuItem { Resume, FullScreen, Quit, Count };

/// What the reactors have made of the input so far; the scene is drawn from it alone.
/// Written by callbacks and read by the frame loop, both on the engine's main thread.
struct LabState {
    /// The time of the frame being run: the wall clock, or, when input is recorded or replayed,
    /// a time that follows the frames, so that what the picture shows depends on frames alone.
    Clock::time_point now{};

    /// Index into the background palette (0 until a digit key chose another).
    int background = 0;

    bool cursorSeen = false;
    Zenk::two_dimensional_coordinate<short> cursor;

    /// When each cell's hold callback last ran; a cell stays lit briefly after it.
    std::array<Clock::time_point, CellCount> lastHold{};

    /// The last wheel pulse, and its direction.
    Clock::time_point lastWheel{};
    bool wheelUp = true;

    /// The modifiers pressed and not yet released, by name, in the order they were pressed.
    std::vector<std::string> heldModes;

    /// The collector's modal level as the lab last set it.
    unsigned char modalLevel = 0;
    bool menuOpen = false;
    MenuItem menuSelection = MenuItem::Resume;

    bool fullScreen = false;
    bool textInput = false;
    /// The line typed since text input started.
    std::wstring typed;

    /// Set when the window was closed or Quit chosen: the frame loop ends.
    bool quit = false;
};

} // namespace InputLab
