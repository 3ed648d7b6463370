// SPDX-License-Identifier: Zlib
#pragma once

// SDL events as the tests, the fuzz harnesses and the benchmarks make them: one builder per kind
// of event, each giving a value with every other field zero, and pushers that put such a value
// into SDL's real queue. The collector polls them from there exactly as it polls a device's.

#include <SDL.h>

#include <string_view>

namespace SdlEvents {

/// A key event of `type` (SDL_KEYDOWN or SDL_KEYUP) for `sym`, its state matching the type.
/// Pure; any thread.
SDL_Event MakeKey(Uint32 type, SDL_Keycode sym, Uint8 repeat = 0);

/// A mouse button event of `type` (SDL_MOUSEBUTTONDOWN or SDL_MOUSEBUTTONUP). Pure; any thread.
SDL_Event MakeButton(Uint32 type, Uint8 button, Uint8 clicks = 1);

/// A wheel event of `y` notches up (negative: down) and `x` to the right. Pure; any thread.
SDL_Event MakeWheel(Sint32 y, Sint32 x = 0, Uint32 direction = SDL_MOUSEWHEEL_NORMAL);

/// A cursor motion to (`x`, `y`). Pure; any thread.
SDL_Event MakeMotion(Sint32 x, Sint32 y);

/// A text event of `type` (SDL_TEXTINPUT or SDL_TEXTEDITING) holding `bytes`, any bytes, cut to
/// the 31 that fit beside SDL's terminating NUL. Pure; any thread.
SDL_Event MakeText(std::string_view bytes, Uint32 type = SDL_TEXTINPUT);

/// A window event (SDL_WINDOWEVENT) of the kind `windowEvent` (SDL_WINDOWEVENT_CLOSE, ...).
/// Pure; any thread.
SDL_Event MakeWindow(Uint8 windowEvent);

/// An event of `type` with every field zero. Pure; any thread.
SDL_Event MakeOfType(Uint32 type);

/// Puts `event` at the end of SDL's queue. SDL's thread (the one that initialised its video).
/// Throws std::runtime_error "SDL refused an event: " and SDL's reason when the queue does not
/// take it (SDL not initialised, the queue full, or the type filtered out).
void Push(SDL_Event event);

/// The builders above, each pushed at once; same thread and exception as Push.
void PushKey(Uint32 type, SDL_Keycode sym, Uint8 repeat = 0);
void Press(SDL_Keycode sym);
void Release(SDL_Keycode sym);
void PushButton(Uint32 type, Uint8 button, Uint8 clicks = 1);
void PushWheel(Sint32 y, Sint32 x = 0);
void PushMotion(Sint32 x, Sint32 y);
void PushText(std::string_view bytes, Uint32 type = SDL_TEXTINPUT);
void PushWindow(Uint8 windowEvent);

} // namespace SdlEvents
