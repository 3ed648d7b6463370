// SPDX-License-Identifier: Zlib
#pragma once

#include <window/InputVocabulary.h>

#include <SDL.h>

#include <optional>

// From SDL's numbers to the library's vocabulary. Everything here is pure and runs on any thread.

namespace Window {

/// The `Key` of a keysym: an exact match on `sym` (the layout's keycode); scancode and modifier
/// bits are not read. Unknown keycodes, modifiers among them, give `Key::None`.
Key TranslateKey(const SDL_Keysym& keysym) noexcept;

/// The modifier a keycode stands for, if any. The GUI keys are no modifier.
std::optional<Mode> TranslateMode(SDL_Keycode sym) noexcept;

/// The `Button` of a mouse button number; the side buttons (4, 5) and others give nothing.
std::optional<Button> TranslateButton(Uint8 button) noexcept;

/// The wheel direction of a wheel event's `y`; 0 (a purely horizontal move) gives nothing.
std::optional<Button> TranslateWheel(Sint32 y) noexcept;

/// The `WindowEvent` of a window event's `event` member; all others (restore, move...) give
/// nothing.
std::optional<WindowEvent> TranslateWindowEvent(Uint8 event) noexcept;

} // namespace Window
