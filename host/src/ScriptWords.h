// SPDX-License-Identifier: Zlib
#pragma once

#include <host/InputScript.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

/// The words of the input script's lines, for the reader (`InputScript`) and the writer
/// (`InputRecorder`) alike: a word spelled one way by one and another way by the other would
/// make recordings that do not replay. Each word is paired here, once, with what SDL calls it.
/// Pure; any thread.
namespace Host::ScriptWords {

// The first word of each kind of line.
constexpr std::string_view keyVerb = "key";
constexpr std::string_view motionVerb = "motion";
constexpr std::string_view buttonVerb = "button";
constexpr std::string_view wheelVerb = "wheel";
constexpr std::string_view textVerb = "text";
constexpr std::string_view windowVerb = "window";
constexpr std::string_view waitVerb = "wait";

// Whether a key or a button goes down or comes up.
constexpr std::string_view down = "down";
constexpr std::string_view up = "up";

/// Every verb, as a message lists them: "key, motion, button, wheel, text, window, wait".
std::string Verbs();

/// `down` or `up`.
std::string_view Direction(bool isDown);

/// Whether `word` says down (true) or up (false); nothing for another word.
std::optional<bool> IsDown(std::string_view word);

/// The word of SDL's button number `button` (`SDL_BUTTON_LEFT` gives "left"); nothing for a
/// button that the format has no word for.
std::optional<std::string_view> ButtonWord(std::uint8_t button);

/// SDL's button number for `word`; nothing for a word that names no button.
std::optional<std::uint8_t> ButtonNumber(std::string_view word);

/// The button words, as a message offers them: "left, right or middle".
std::string ButtonChoices();

/// The word of SDL's window event `event` (`SDL_WINDOWEVENT_CLOSE` gives "close"); nothing for
/// an event that the format has no word for.
std::optional<std::string_view> WindowWord(std::uint8_t event);

/// The kind of the line `window WORD`; nothing for a word that names no window event.
std::optional<ScriptEvent::Kind> WindowKind(std::string_view word);

/// SDL's window event for `kind`, which must be one of the three window kinds.
std::uint8_t WindowEvent(ScriptEvent::Kind kind);

/// The window event words, as a message offers them: "close, minimize or maximize".
std::string WindowChoices();

/// `words` joined by single blanks: a line as the recorder writes it.
std::string Line(std::initializer_list<std::string_view> words);

} // namespace Host::ScriptWords
