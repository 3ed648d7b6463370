// SPDX-License-Identifier: Zlib
#include "SdlEvents.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

namespace SdlEvents {

SDL_Event MakeKey(Uint32 type, SDL_Keycode sym, Uint8 repeat) {
    SDL_Event event = MakeOfType(type);
    event.key.keysym.sym = sym;
    event.key.repeat = repeat;
    event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
    return event;
}

SDL_Event MakeButton(Uint32 type, Uint8 button, Uint8 clicks) {
    SDL_Event event = MakeOfType(type);
    event.button.button = button;
    event.button.clicks = clicks;
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    return event;
}

SDL_Event MakeWheel(Sint32 y, Sint32 x, Uint32 direction) {
    SDL_Event event = MakeOfType(SDL_MOUSEWHEEL);
    event.wheel.y = y;
    event.wheel.x = x;
    event.wheel.direction = direction;
    return event;
}

SDL_Event MakeMotion(Sint32 x, Sint32 y) {
    SDL_Event event = MakeOfType(SDL_MOUSEMOTION);
    event.motion.x = x;
    event.motion.y = y;
    return event;
}

SDL_Event MakeText(std::string_view bytes, Uint32 type) {
    SDL_Event event = MakeOfType(type);
    // Both kinds of text event keep their bytes at the same place; the last byte stays NUL.
    static_assert(sizeof event.text.text == sizeof event.edit.text);
    std::memcpy(event.text.text, bytes.data(), std::min(bytes.size(), sizeof event.text.text - 1));
    return event;
}

SDL_Event MakeWindow(Uint8 windowEvent) {
    SDL_Event event = MakeOfType(SDL_WINDOWEVENT);
    event.window.event = windowEvent;
    return event;
}

SDL_Event MakeOfType(Uint32 type) {
    SDL_Event event{};
    event.type = type;
    return event;
}

void Push(SDL_Event event) {
    if (SDL_PushEvent(&event) != 1)
        throw std::runtime_error(std::string("SDL refused an event: ") + SDL_GetError());
}

void PushKey(Uint32 type, SDL_Keycode sym, Uint8 repeat) {
    Push(MakeKey(type, sym, repeat));
}

void Press(SDL_Keycode sym) {
    PushKey(SDL_KEYDOWN, sym);
}

void Release(SDL_Keycode sym) {
    PushKey(SDL_KEYUP, sym);
}

void PushButton(Uint32 type, Uint8 button, Uint8 clicks) {
    Push(MakeButton(type, button, clicks));
}

void PushWheel(Sint32 y, Sint32 x) {
    Push(MakeWheel(y, x));
}

void PushMotion(Sint32 x, Sint32 y) {
    Push(MakeMotion(x, y));
}

void PushText(std::string_view bytes, Uint32 type) {
    Push(MakeText(bytes, type));
}

void PushWindow(Uint8 windowEvent) {
    Push(MakeWindow(windowEvent));
}

} // namespace SdlEvents
