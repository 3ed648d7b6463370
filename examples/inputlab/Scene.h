// SPDX-License-Identifier: Zlib
#pragma once

#include "LabState.h"

#include <window/Resolution.h>

#include <chrono>
#include <cstdint>
#include <vector>

namespace InputLab {

/// An opaque colour, 8 bits a channel: the swapchain's UNORM format stores these values exactly.
struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Colour& a, const Colour& b) noexcept {
        return a.red == b.red && a.green == b.green && a.blue == b.blue;
    }
};

/// A filled rectangle in drawable pixels, always inside the drawable and never empty.
struct Rectangle {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    Colour colour;
};

/// One frame's picture: a background and rectangles painted over it in order.
struct Scene {
    Colour background;
    std::vector<Rectangle> rectangles;
};

/// How long a cell stays lit after its last hold callback: a few ticks of the default 60/s, so a
/// held key shows steadily while a released one goes dark at once to the eye.
inline constexpr std::chrono::milliseconds HoldGlow{100};

/// How long the border glows after a wheel event.
inline constexpr std::chrono::milliseconds WheelGlow{300};

/// The background colours that the digit keys choose: index 0 is the start colour.
Colour BackgroundColour(int index);

/// The colour of the square that follows the cursor.
inline constexpr Colour SquareColour{240, 240, 240};

/// The square's side in drawable pixels.
inline constexpr std::uint32_t SquareSide = 32;

/// A place in drawable pixels; it may reach beyond the drawable.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// Where a cell of the bottom row lies in a drawable of `drawable` pixels. Pure.
Area CellArea(Cell cell, Window::Resolution drawable);

/// The name a cell shows: "W", "LShift", "Left". Pure.
const char* CellName(Cell cell);

/// Where a menu item lies while the menu is open. Pure.
Area MenuItemArea(MenuItem item, Window::Resolution drawable);

/// Where the bar of typed text lies. Pure.
Area TextBarArea(Window::Resolution drawable);

/// Lays out `state` for a drawable of `drawable` pixels in a window of `window` screen units
/// (they differ on high-density displays; the cursor comes in screen units). Pure.
Scene BuildScene(const LabState& state, Window::Resolution drawable, Window::Resolution window,
                 Clock::time_point now);

} // namespace InputLab
