// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <functional>

// The four enumerations through which the engine names input. Each enumerator has an index (its
// stored value, counting from 0 in declaration order) and a numeric code (from the functions
// below). Every std::set and std::map keyed by one of them is ordered by the code: the
// std::less specialisations at the end of this header make that the default.

// Xlib's headers define None as 0L, which would turn the enumerator `Key::None` into a number.
// Kept aside for these declarations and given back after them, so a file that includes Xlib keeps
// its None (docs/platform-headers.md).
#pragma push_macro("None")
#undef None

namespace Window {

/// A key of the keyboard, as the layout names it (keycodes, not scancodes).
enum class Key : std::uint32_t {
    Escape,       ///< Esc; code 1.
    F1,           ///< Code 2.
    F2,           ///< Code 3.
    F3,           ///< Code 4.
    F4,           ///< Code 5.
    F5,           ///< Code 6.
    F6,           ///< Code 7.
    F7,           ///< Code 8.
    F8,           ///< Code 9.
    F9,           ///< Code 10.
    F10,          ///< Code 11.
    F11,          ///< Code 12.
    F12,          ///< Code 13.
    Pause,        ///< Code 14.
    A,            ///< Code 15.
    B,            ///< Code 16.
    C,            ///< Code 17.
    D,            ///< Code 18.
    E,            ///< Code 19.
    F,            ///< Code 20.
    G,            ///< Code 21.
    H,            ///< Code 22.
    I,            ///< Code 23.
    J,            ///< Code 24.
    K,            ///< Code 25.
    L,            ///< Code 26.
    M,            ///< Code 27.
    N,            ///< Code 28.
    O,            ///< Code 29.
    P,            ///< Code 30.
    Q,            ///< Code 31.
    R,            ///< Code 32.
    S,            ///< Code 33.
    T,            ///< Code 34.
    U,            ///< Code 35.
    V,            ///< Code 36.
    W,            ///< Code 37.
    X,            ///< Code 38.
    Y,            ///< Code 39.
    Z,            ///< Code 40.
    Return,       ///< The main Enter key; code 47.
    Backquote,    ///< The key left of 1 on a US layout; code 48.
    Digit1,       ///< Code 49.
    Digit2,       ///< Code 50.
    Digit3,       ///< Code 51.
    Digit4,       ///< Code 52.
    Digit5,       ///< Code 53.
    Digit6,       ///< Code 54.
    Digit7,       ///< Code 55.
    Digit8,       ///< Code 56.
    Digit9,       ///< Code 57.
    Digit0,       ///< Code 58.
    Minus,        ///< Code 59.
    Equals,       ///< Code 60.
    LeftBracket,  ///< Code 61.
    RightBracket, ///< Code 62.
    Semicolon,    ///< Code 63.
    Quote,        ///< Both ' and "; code 64.
    Period,       ///< Code 65.
    Comma,        ///< Code 66.
    Slash,        ///< Code 67.
    Backslash,    ///< Code 68.
    Backspace,    ///< The one key that still arrives while text input is on; code 69.
    Tab,          ///< Code 70.
    CapsLock,     ///< Code 71.
    ScrollLock,   ///< Code 72.
    NumLock,      ///< Code 73.
    Home,         ///< Code 74.
    End,          ///< Code 75.
    PageDown,     ///< Code 76.
    PageUp,       ///< Code 77.
    Left,         ///< Code 78.
    Right,        ///< Code 79.
    Up,           ///< Code 80.
    Down,         ///< Code 81.
    Delete,       ///< Code 82.
    None,         ///< Every key without an enumerator (space, the keypad, GUI keys, Print Screen,
                  ///< Insert...); code 0.
};

/// A modifier key. Modifiers never reach key reactors; they have reactors of their own.
/// Shift, alt, ctrl on each side: not the order of the platform's keycodes.
enum class Mode : std::uint32_t {
    LeftShift,  ///< Code 41.
    LeftAlt,    ///< Code 42.
    LeftCtrl,   ///< Code 43.
    RightShift, ///< Code 44.
    RightAlt,   ///< Code 45.
    RightCtrl,  ///< Code 46.
};

/// A mouse button or a direction of the wheel. Wheel values are pulses: never held.
/// Right comes before Middle although the platform numbers Middle lower.
enum class Button : std::uint32_t {
    Left,      ///< Code 4000.
    Right,     ///< Code 4010.
    Middle,    ///< Code 4020.
    WheelUp,   ///< The wheel turned away from the user, any distance; code 4030.
    WheelDown, ///< The wheel turned towards the user, any distance; code 4040.
};

/// What can happen to the window that reactors can hear of. `Reserved` is produced by no event:
/// it is the shared place of every value outside the table, so a reactor on it is never called.
enum class WindowEvent : std::uint32_t {
    Close,    ///< The window system asks to close the window (its close button); code 100000.
    Minimize, ///< The window was minimised; code 100001.
    Maximize, ///< The window was maximised; code 100002.
    Reserved, ///< Produced by no event; code 100003.
};

/// Numeric code of a key: 1-40 and 47-82; `None` and unknown values 0. Pure.
constexpr std::uint32_t KeyCode(Key key) noexcept {
    const auto index = static_cast<std::uint32_t>(key);
    if (index <= 39)
        return index + 1;
    if (index <= 75)
        return index + 7; // 41-46 are the modifiers' codes
    return 0;
}

/// Numeric code of a modifier: 41-46, between Z and Return; unknown values 0. Pure.
constexpr std::uint32_t ModeCode(Mode mode) noexcept {
    const auto index = static_cast<std::uint32_t>(mode);
    return index <= 5 ? index + 41 : 0;
}

/// Numeric code of a button: 4000 to 4040 in steps of 10; unknown values 0. Pure.
constexpr std::uint32_t ButtonCode(Button button) noexcept {
    const auto index = static_cast<std::uint32_t>(button);
    return index <= 4 ? 4000 + 10 * index : 0;
}

/// Numeric code of a window event: 100000-100002; every other value 100003, never 0. Pure.
constexpr std::uint32_t WindowEventCode(WindowEvent event) noexcept {
    const auto index = static_cast<std::uint32_t>(event);
    return index <= 2 ? 100000 + index : 100003;
}

} // namespace Window

namespace std {

/// Orders keys by `Window::KeyCode`, so that sets and maps of them run in code order.
template <> struct less<Window::Key> {
    /// Whether `a`'s code is below `b`'s. Pure.
    constexpr bool operator()(Window::Key a, Window::Key b) const noexcept {
        return Window::KeyCode(a) < Window::KeyCode(b);
    }
};

/// Orders modifiers by `Window::ModeCode`, so that sets and maps of them run in code order.
template <> struct less<Window::Mode> {
    /// Whether `a`'s code is below `b`'s. Pure.
    constexpr bool operator()(Window::Mode a, Window::Mode b) const noexcept {
        return Window::ModeCode(a) < Window::ModeCode(b);
    }
};

/// Orders buttons by `Window::ButtonCode`, so that sets and maps of them run in code order.
template <> struct less<Window::Button> {
    /// Whether `a`'s code is below `b`'s. Pure.
    constexpr bool operator()(Window::Button a, Window::Button b) const noexcept {
        return Window::ButtonCode(a) < Window::ButtonCode(b);
    }
};

/// Orders window events by `Window::WindowEventCode`, so that sets and maps of them run in code
/// order.
template <> struct less<Window::WindowEvent> {
    /// Whether `a`'s code is below `b`'s. Pure.
    constexpr bool operator()(Window::WindowEvent a, Window::WindowEvent b) const noexcept {
        return Window::WindowEventCode(a) < Window::WindowEventCode(b);
    }
};

} // namespace std

#pragma pop_macro("None")
