// SPDX-License-Identifier: Zlib
#include "input/Translation.h"

namespace Window {
namespace {

// Keycodes that run in step with the enumeration: `first` gives `key`, `first + 1` the next...
struct KeyRun {
    SDL_Keycode first;
    SDL_Keycode last;
    Key key;
};

constexpr KeyRun keyRuns[] = {
    {SDLK_ESCAPE, SDLK_ESCAPE, Key::Escape},
    {SDLK_F1, SDLK_F12, Key::F1},
    {SDLK_PAUSE, SDLK_PAUSE, Key::Pause},
    {SDLK_a, SDLK_z, Key::A},
    {SDLK_RETURN, SDLK_RETURN, Key::Return},
    {SDLK_BACKQUOTE, SDLK_BACKQUOTE, Key::Backquote},
    {SDLK_1, SDLK_9, Key::Digit1},
    {SDLK_0, SDLK_0, Key::Digit0},
    {SDLK_MINUS, SDLK_MINUS, Key::Minus},
    {SDLK_EQUALS, SDLK_EQUALS, Key::Equals},
    {SDLK_LEFTBRACKET, SDLK_LEFTBRACKET, Key::LeftBracket},
    {SDLK_RIGHTBRACKET, SDLK_RIGHTBRACKET, Key::RightBracket},
    {SDLK_SEMICOLON, SDLK_SEMICOLON, Key::Semicolon},
    {SDLK_QUOTE, SDLK_QUOTE, Key::Quote},
    {SDLK_QUOTEDBL, SDLK_QUOTEDBL, Key::Quote}, // the one key with two keycodes
    {SDLK_PERIOD, SDLK_PERIOD, Key::Period},
    {SDLK_COMMA, SDLK_COMMA, Key::Comma},
    {SDLK_SLASH, SDLK_SLASH, Key::Slash},
    {SDLK_BACKSLASH, SDLK_BACKSLASH, Key::Backslash},
    {SDLK_BACKSPACE, SDLK_BACKSPACE, Key::Backspace},
    {SDLK_TAB, SDLK_TAB, Key::Tab},
    {SDLK_CAPSLOCK, SDLK_CAPSLOCK, Key::CapsLock},
    {SDLK_SCROLLLOCK, SDLK_SCROLLLOCK, Key::ScrollLock},
    {SDLK_NUMLOCKCLEAR, SDLK_NUMLOCKCLEAR, Key::NumLock},
    {SDLK_HOME, SDLK_HOME, Key::Home},
    {SDLK_END, SDLK_END, Key::End},
    {SDLK_PAGEDOWN, SDLK_PAGEDOWN, Key::PageDown},
    {SDLK_PAGEUP, SDLK_PAGEUP, Key::PageUp},
    {SDLK_LEFT, SDLK_LEFT, Key::Left},
    {SDLK_RIGHT, SDLK_RIGHT, Key::Right},
    {SDLK_UP, SDLK_UP, Key::Up},
    {SDLK_DOWN, SDLK_DOWN, Key::Down},
    {SDLK_DELETE, SDLK_DELETE, Key::Delete},
};

} // namespace

Key TranslateKey(const SDL_Keysym& keysym) noexcept {
    for (const KeyRun& run : keyRuns)
        if (keysym.sym >= run.first && keysym.sym <= run.last)
            return static_cast<Key>(static_cast<SDL_Keycode>(run.key) + (keysym.sym - run.first));
    return Key::None;
}

std::optional<Mode> TranslateMode(SDL_Keycode sym) noexcept {
    // One unsigned test covers the block from left ctrl to right alt; left GUI lies inside it
    // and is no modifier.
    switch (static_cast<unsigned int>(sym) - static_cast<unsigned int>(SDLK_LCTRL)) {
    case SDLK_LSHIFT - SDLK_LCTRL:
        return Mode::LeftShift;
    case SDLK_LALT - SDLK_LCTRL:
        return Mode::LeftAlt;
    case 0:
        return Mode::LeftCtrl;
    case SDLK_RSHIFT - SDLK_LCTRL:
        return Mode::RightShift;
    case SDLK_RALT - SDLK_LCTRL:
        return Mode::RightAlt;
    case SDLK_RCTRL - SDLK_LCTRL:
        return Mode::RightCtrl;
    default:
        return std::nullopt;
    }
}

std::optional<Button> TranslateButton(Uint8 button) noexcept {
    switch (button) {
    case SDL_BUTTON_LEFT:
        return Button::Left;
    case SDL_BUTTON_RIGHT:
        return Button::Right;
    case SDL_BUTTON_MIDDLE:
        return Button::Middle;
    default:
        return std::nullopt;
    }
}

std::optional<Button> TranslateWheel(Sint32 y) noexcept {
    if (y > 0)
        return Button::WheelUp;
    if (y < 0)
        return Button::WheelDown;
    return std::nullopt;
}

std::optional<WindowEvent> TranslateWindowEvent(Uint8 event) noexcept {
    switch (event) {
    case SDL_WINDOWEVENT_CLOSE:
        return WindowEvent::Close;
    case SDL_WINDOWEVENT_MINIMIZED:
        return WindowEvent::Minimize;
    case SDL_WINDOWEVENT_MAXIMIZED:
        return WindowEvent::Maximize;
    default:
        return std::nullopt;
    }
}

} // namespace Window
