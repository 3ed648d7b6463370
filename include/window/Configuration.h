// SPDX-License-Identifier: Zlib
#pragma once

// The configuration contract: the keys the library reads from the engine's configuration file,
// their defaults, and the rules it reads them by. The library, the host kit and the input lab
// all take them from here, so that a program can check a configuration exactly as the library
// will read it. Header-only constants; the two text functions are compiled into the library
// (hidden there) and into a small static library that every user links through window::window.

#include <window/Resolution.h>

#include <optional>
#include <string>

namespace Window::Configuration {

/// Ticks per second of the input collector's ticker, read once when it is made.
inline constexpr char PollRateKey[] = "Window/Input/PollRate";
/// The poll rate without the key, or with a value of 0 or below.
inline constexpr int DefaultPollRate = 60;
/// The fastest poll rate: one tick per microsecond, the finest period a ticker has.
inline constexpr int MaximumPollRate = 1000000;

/// The window's size as text (see `ResolutionToText`), read at creation and written at the end.
/// A size below `Window::MinimumResolution` is raised to it.
inline constexpr char ResolutionKey[] = "Window/Resolution";
/// The size without the key.
inline constexpr Resolution DefaultResolution{1000, 1000};

/// Above 0 means full screen; written back as "1" or "0".
inline constexpr char FullScreenKey[] = "Window/FullScreen";
/// Full screen without the key: off.
inline constexpr int DefaultFullScreen = 0;

/// Declared for the engine's own use; the library reads neither.
inline constexpr char LookSensitivityKey[] = "Mouse/LookSensitivity";
/// The look sensitivity without the key, in the resolution's text form.
inline constexpr Resolution DefaultLookSensitivity{2500, 2500};
/// Declared for the engine's own use; the library reads neither.
inline constexpr char InvertedVerticalKey[] = "Mouse/InvertedVertical";
/// Inverted vertical look without the key: off.
inline constexpr int DefaultInvertedVertical = 0;

/// The ticker's period in microseconds for `pollRate` ticks per second: 1000000 / the rate,
/// rounded down, the default rate for 0 or below and the maximum for more. Pure; any thread.
constexpr unsigned long long TickPeriod(int pollRate) noexcept {
    if (pollRate <= 0)
        pollRate = DefaultPollRate;
    else if (pollRate > MaximumPollRate)
        pollRate = MaximumPollRate;
    return 1000000ULL / static_cast<unsigned long long>(pollRate);
}

/// The stored form of a size: "{", width, ",", height, "}" with no blanks, as "{1000,1000}".
/// The numbers are plain decimal digits whatever the global locale, so a file written under one
/// locale reads back under any other. Pure; any thread. It touches no namespace-scope object, so
/// code that runs while a library loads may call it.
std::string ResolutionToText(const Resolution& resolution);

/// Reads a size written by `ResolutionToText`, and more: blanks around each number, empty
/// fields, "{" or "}" as separators inside the braces, a sign and leading zeros are accepted
/// ("{ 800 , 600 }", "{800,,600}", "{-1,600}" is 65535 x 600). Empty when the text is not a
/// braced list of exactly two numbers that fit in 16 bits; it never throws for a malformed
/// text, and the caller words the failure. The global locale has no say: "{1,000,600}" is three
/// numbers under every locale. Pure; any thread.
std::optional<Resolution> ResolutionFromText(const std::string& text);

} // namespace Window::Configuration
