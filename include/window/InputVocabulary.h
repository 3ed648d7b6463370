#pragma once

#include <cstdint>
#include <functional>

// The four enumerations through which the engine names input. Each enumerator has an index (its
// stored value, counting from 0 in declaration order) and a numeric code (from the functions
// below). Every std::set and std::map keyed by one of them is ordered by the code: the
// std::less specialisations at the end of this header make that the default.

namespace Window {

/// A key of the keyboard, as the layout names it (keycodes, not scancodes).
enum class Key : std::uint32_t {
    Escape,
    F1,
    F2,
    F3,
    F4,
    F5,
    F6,
    F7,
    F8,
    F9,
    F10,
    F11,
    F12,
    Pause,
    A,
    B,
    C,
    D,
    E,
    F,
    G,
    H,
    I,
    J,
    K,
    L,
    M,
    N,
    O,
    P,
    Q,
    R,
    S,
    T,
    U,
    V,
    W,
    X,
    Y,
    Z,
    Return,
    Backquote,
    Digit1,
    Digit2,
    Digit3,
    Digit4,
    Digit5,
    Digit6,
    Digit7,
    Digit8,
    Digit9,
    Digit0,
    Minus,
    Equals,
    LeftBracket,
    RightBracket,
    Semicolon,
    Quote, // both ' and "
    Period,
    Comma,
    Slash,
    Backslash,
    Backspace,
    Tab,
    CapsLock,
    ScrollLock,
    NumLock,
    Home,
    End,
    PageDown,
    PageUp,
    Left,
    Right,
    Up,
    Down,
    Delete,
    None, // every key without an enumerator: space, keypad, GUI keys, Print Screen, Insert...
};

/// A modifier key. Modifiers never reach key reactors; they have reactors of their own.
/// Shift, alt, ctrl on each side: not the order of the platform's keycodes.
enum class Mode : std::uint32_t { LeftShift, LeftAlt, LeftCtrl, RightShift, RightAlt, RightCtrl };

/// A mouse button or a direction of the wheel. Wheel values are pulses: never held.
/// Right comes before Middle although the platform numbers Middle lower.
enum class Button : std::uint32_t { Left, Right, Middle, WheelUp, WheelDown };

/// What can happen to the window that reactors can hear of. `Reserved` is produced by no event:
/// it is the shared place of every value outside the table, so a reactor on it is never called.
enum class WindowEvent : std::uint32_t { Close, Minimize, Maximize, Reserved };

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

template <> struct less<Window::Key> {
    constexpr bool operator()(Window::Key a, Window::Key b) const noexcept {
        return Window::KeyCode(a) < Window::KeyCode(b);
    }
};

template <> struct less<Window::Mode> {
    constexpr bool operator()(Window::Mode a, Window::Mode b) const noexcept {
        return Window::ModeCode(a) < Window::ModeCode(b);
    }
};

template <> struct less<Window::Button> {
    constexpr bool operator()(Window::Button a, Window::Button b) const noexcept {
        return Window::ButtonCode(a) < Window::ButtonCode(b);
    }
};

template <> struct less<Window::WindowEvent> {
    constexpr bool operator()(Window::WindowEvent a, Window::WindowEvent b) const noexcept {
        return Window::WindowEventCode(a) < Window::WindowEventCode(b);
    }
};

} // namespace std
