// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <istream>
#include <stdexcept>
#include <string>
#include <vector>

union SDL_Event;

namespace Host {

/// One line of an input script, understood.
struct ScriptEvent {
    /// What the line does; each kind reads only the fields named beside them below.
    enum class Kind {
        KeyDown,        ///< `key down NAME`
        KeyUp,          ///< `key up NAME`
        Motion,         ///< `motion X Y`
        ButtonDown,     ///< `button down B`
        ButtonUp,       ///< `button up B`
        Wheel,          ///< `wheel N`
        Text,           ///< `text TEXT`
        WindowClose,    ///< `window close`
        WindowMinimize, ///< `window minimize`
        WindowMaximize, ///< `window maximize`
    };

    /// The line's kind.
    Kind kind = Kind::KeyDown;
    /// KeyDown, KeyUp: the key as SDL's keycode (an `SDL_Keycode`; 0 is `SDLK_UNKNOWN`).
    std::int32_t key = 0;
    /// Motion: the cursor's x in window coordinates.
    int x = 0;
    /// Motion: the cursor's y; Wheel: the wheel's steps, positive away from the user.
    int y = 0;
    /// ButtonDown, ButtonUp: SDL's button number (`SDL_BUTTON_LEFT` and so on).
    std::uint8_t button = 0;
    /// Text: UTF-8, 1 to 31 bytes.
    std::string text;
};

/// An event and the frame before whose input poll it is injected.
struct ScriptEntry {
    /// The frame whose poll takes the event: the sum of the waits above its line.
    unsigned long long frame = 0;
    /// The event's line in the script, counted from 1, for messages.
    unsigned long long line = 0;
    /// The event itself.
    ScriptEvent event;
};

/// A script that cannot be used; `what()` names the file and, for a bad line, the line.
class InputScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Input read from a text file and injected into SDL's queue with `SDL_PushEvent`, so that a run
/// can be repeated exactly: events reach the window library as if the window system had sent
/// them. `Host::InputRecorder` writes the same format from a live session.
///
/// One event per line; a wait moves the lines after it to a later frame:
///
/// ```
/// script     = { line } ;
/// line       = [ event | wait | comment ] , [ CR ] , LF ;   (* blank lines are skipped *)
/// comment    = "#" , { any byte but LF } ;
/// wait       = "wait" , number ;                (* later lines come that many frames later *)
/// event      = "key" , ( "down" | "up" ) , keyname
///            | "motion" , integer , integer
///            | "button" , ( "down" | "up" ) , ( "left" | "right" | "middle" )
///            | "wheel" , integer                (* not 0 *)
///            | "text" , " " , text              (* the rest of the line, blanks included *)
///            | "window" , ( "close" | "minimize" | "maximize" ) ;
/// number     = digit , { digit } ;
/// integer    = [ "-" ] , number ;
/// keyname    = the rest of the line, as SDL names keys ;
/// ```
///
/// Words are separated by blanks or tabs; a line may start with them. A CR at the end of a line
/// is dropped (CRLF files), and a NUL byte anywhere is refused: SDL reads key names and text only
/// up to it. Numbers are whole decimal numbers without a `+`, and each must fit what it feeds:
/// SDL's 32-bit event fields for positions and wheel steps, the frame counter for waits. A number
/// beyond is refused with its limit, never cut.
///
/// - `key down NAME`, `key up NAME`: a key, named as SDL names keys, in any case: `a`, `2`,
///   `Escape`, `Left Shift`, `F2`, `Backspace`.
/// - `motion X Y`: the cursor moves to X, Y (window coordinates, each from -2147483648 to
///   2147483647).
/// - `button down B`, `button up B`: `left`, `right` or `middle`, at the last motion's position.
/// - `wheel N`: N wheel steps, positive away from the user: not 0, from -2147483648 to
///   2147483647.
/// - `text TEXT`: typed text, the rest of the line: 1 to 31 bytes of valid UTF-8 (SDL's text
///   event holds 32 bytes with its NUL).
/// - `window close`, `window minimize`, `window maximize`: a window event.
/// - `wait N`: the following lines come N frames later; all waits together stay at most
///   18446744073709551614, so that the frame after the last event can still be counted.
///
/// Events of one frame are pushed before that frame's input poll, in the order of their lines.
/// A recording leaves out what the format cannot say: the system's key repeats (the window
/// library tells holding by its own tick), the side buttons, the horizontal wheel, text that
/// holds a line break.
///
/// Made and used on the engine's main thread, while SDL's video subsystem runs (SDL sets up the
/// keymap that gives keys their scancodes with it).
class InputScript {
public:
    /// Reads and checks the whole file before anything runs. Engine main thread.
    /// Throws `InputScriptError`: `Cannot read input script "PATH"`, or
    /// `Input script "PATH", line N: PROBLEM` for the first line that is not understood, such as
    /// `expected an x coordinate from -2147483648 to 2147483647, found "4294967396"`. Words quoted
    /// from the script, and the path, have their control bytes and bad UTF-8 escaped (`\x1b`), as
    /// `Host::Printable` does.
    static InputScript Load(const std::filesystem::path& path);

    /// As `Load`, from a stream; `name` stands for the file in messages.
    static InputScript Parse(std::istream& input, const std::string& name);

    /// The events in the order of their lines; the script owns them.
    const std::vector<ScriptEntry>& Entries() const noexcept { return entries; }

    /// The frame after the last event's; frames before it still have input to come.
    unsigned long long Length() const noexcept { return length; }

    /// Pushes the events due by `frame` into SDL's queue. Call once per frame, with rising frame
    /// numbers, before polling. Engine main thread.
    /// From the first call until the last line is pushed, the window system's own input (keys,
    /// text, cursor, buttons, wheel) is held back where SDL queues it, so that a replay is not
    /// mixed with a real pointer or keyboard; window events still arrive. The first call drops
    /// what SDL's queue holds (SDL does so whenever an event filter is set), and the filter that
    /// holds input back replaces any other for the rest of the process.
    /// Throws `std::runtime_error` (`SDL refused a scripted event from line N: REASON`) when the
    /// queue is full.
    void InjectDue(unsigned long long frame);

    /// The event as the window system would deliver it; `cursorX`/`cursorY` give the position
    /// that button events carry. The window id stays 0: the window library does not read it.
    /// Pure but for reading SDL's keymap, for the scancode. Engine main thread.
    static SDL_Event ToSdlEvent(const ScriptEvent& event, int cursorX, int cursorY);

private:
    std::vector<ScriptEntry> entries;
    unsigned long long length = 0;
    std::size_t next = 0;
    int cursorX = 0;
    int cursorY = 0;
};

} // namespace Host
