// SPDX-License-Identifier: Zlib
#pragma once

#include <window/InputVocabulary.h>

#include <cstddef>
#include <deque>
#include <map>
#include <ostream>
#include <set>
#include <string>

namespace InputLab {

/// Prints one numbered line for every callback the library makes, so that a person (or a test)
/// sees exactly what was delivered, in which order, at which priority and level:
///   #12 key press A (priority 0, level 0) modes {LeftShift}
/// Notes about the lab's own doings are not callbacks and carry no number ("-- menu opened").
/// Every line is flushed at once, so a reader of a pipe sees it before the next input.
class EventEcho {
public:
    /// Hold callbacks run on every tick; the echo prints the first of a hold and then every
    /// `HoldEchoPeriod`-th, or a held key would flood the console at the tick rate.
    static constexpr unsigned long long HoldEchoPeriod = 60;

    explicit EventEcho(std::ostream& out) : out(out) {}

    /// Prints "#<n> <text>", control bytes and bad UTF-8 in `text` escaped ("\x1b").
    void Callback(const std::string& text);

    /// Prints "-- <text>", escaped as `Callback` does.
    void Note(const std::string& text);

    /// A hold callback of `subject` (a reactor's own name): prints "#<n> <text> x<count>" for
    /// the first hold since `EndHold` and for every `HoldEchoPeriod`-th after it.
    void Hold(const std::string& subject, const std::string& text);

    /// Starts the count of `subject`'s holds anew: call it on press and on release.
    void EndHold(const std::string& subject);

    /// How many numbered lines were printed.
    unsigned long long Count() const noexcept { return count; }

    /// How many of the last lines `Recent` keeps.
    static constexpr std::size_t RecentLines = 20;

    /// The last `RecentLines` lines printed, oldest first, as printed (escaped).
    const std::deque<std::string>& Recent() const noexcept { return recent; }

    /// "key press A (priority 0, level 0) modes {LeftShift}"
    static std::string KeyText(const char* action, Window::Key key, unsigned short priority,
                               unsigned char level, const std::set<Window::Mode>& modes);
    /// "mode press LeftShift (level 0)"
    static std::string ModeText(const char* action, Window::Mode mode, unsigned char level);
    /// "button press Left (priority 0) number 1 modes {}"
    static std::string ButtonText(const char* action, Window::Button button,
                                  unsigned short priority, unsigned int number,
                                  const std::set<Window::Mode>& modes);
    /// "cursor 100,200 (priority 0) modes {}"
    static std::string CursorText(short x, short y, unsigned short priority,
                                  const std::set<Window::Mode>& modes);
    /// "text "é" U+00E9 (level 0)": the text in UTF-8, control characters escaped ("\x1b"), and
    /// each character's code point.
    static std::string TextText(const std::wstring& text, unsigned char level);
    /// "window Close"
    static std::string WindowText(Window::WindowEvent event);

private:
    void Print(std::string line);

    std::ostream& out;
    std::deque<std::string> recent;
    unsigned long long count = 0;
    std::map<std::string, unsigned long long> holds;
};

/// UTF-8 of a wide string (UTF-32 on Linux, UTF-16 on Windows); bad units become U+FFFD.
std::string ToUtf8(const std::wstring& text);

} // namespace InputLab
