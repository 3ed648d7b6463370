// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include <cstdint>
#include <filesystem>
#include <istream>
#include <stdexcept>
#include <string>
#include <vector>

namespace InputLab {

/// One line of an input script, understood.
struct ScriptEvent {
    enum class Kind {
        KeyDown,
        KeyUp,
        Motion,
        ButtonDown,
        ButtonUp,
        Wheel,
        Text,
        WindowClose,
        WindowMinimize,
        WindowMaximize,
    };

    Kind kind = Kind::KeyDown;
    SDL_Keycode key = SDLK_UNKNOWN; // KeyDown, KeyUp
    int x = 0;                      // Motion
    int y = 0;                      // Motion; Wheel: the wheel's steps, positive away from the user
    std::uint8_t button = 0;        // ButtonDown, ButtonUp: SDL_BUTTON_LEFT and so on
    std::string text;               // Text: UTF-8, 1 to 31 bytes
};

/// An event and the frame before whose input poll it is injected.
struct ScriptEntry {
    unsigned long long frame = 0;
    unsigned long long line = 0;
    ScriptEvent event;
};

/// A script that cannot be used; `what()` names the file and, for a bad line, the line.
class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Input read from a text file and injected into SDL's queue with `SDL_PushEvent`, so that a run
/// can be repeated exactly. Events reach the library as if the window system had sent them.
///
/// One event per line; blank lines and lines starting with '#' are skipped, a CR at the end of a
/// line is dropped (CRLF files) and a NUL anywhere is refused:
///   key down NAME | key up NAME        NAME as SDL names keys: a, 2, Escape, Left Shift, F2
///   motion X Y                         cursor position in window coordinates, each within Sint32
///   button down B | button up B        B: left, right or middle
///   wheel N                            N steps, positive away from the user, not 0, within Sint32
///   text TEXT                          the rest of the line, 1 to 31 bytes of valid UTF-8
///   window close|minimize|maximize
///   wait N                             the following lines come N frames later; all waits
///                                      together stay below the frame counter's last value
class InputScript {
public:
    /// Reads and checks the whole file before anything runs.
    /// Throws `ScriptError`: "Cannot read input script "<path>"", or "Input script "<path>",
    /// line <n>: <problem>" for the first line that is not understood, such as "expected an x
    /// coordinate from -2147483648 to 2147483647, found "4294967396"". Words quoted from the
    /// script have their control bytes and bad UTF-8 escaped ("\x1b").
    static InputScript Load(const std::filesystem::path& path);

    /// As `Load`, from a stream; `name` stands for the file in messages.
    static InputScript Parse(std::istream& input, const std::string& name);

    const std::vector<ScriptEntry>& Entries() const noexcept { return entries; }

    /// The frame after the last event's; frames before it still have input to come.
    unsigned long long Length() const noexcept { return length; }

    /// Pushes the events due by `frame` into SDL's queue. Call once per frame, with rising frame
    /// numbers, before polling. Engine main thread.
    /// From the first call until the last line is pushed, the window system's own input (keys,
    /// text, cursor, buttons, wheel) is held back where SDL queues it, so that a replay is not
    /// mixed with a real pointer or keyboard; window events still arrive. The first call drops
    /// what SDL's queue holds (SDL does so whenever an event filter is set).
    /// Throws `std::runtime_error` ("SDL refused a scripted event from line <n>: <reason>") when
    /// the queue is full.
    void InjectDue(unsigned long long frame);

    /// The event as the window system would deliver it; `cursorX`/`cursorY` give the position
    /// that button events carry. The window id stays 0: the library does not read it. Pure.
    static SDL_Event ToSdlEvent(const ScriptEvent& event, int cursorX, int cursorY);

private:
    std::vector<ScriptEntry> entries;
    unsigned long long length = 0;
    std::size_t next = 0;
    int cursorX = 0;
    int cursorY = 0;
};

} // namespace InputLab
