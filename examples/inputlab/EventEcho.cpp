// SPDX-License-Identifier: Zlib
#include "EventEcho.h"

#include "VocabularyNames.h"

#include <host/PrintableText.h>

#include <boost/locale/encoding_utf.hpp>

#include <cstdio>

namespace InputLab {

// Lines may quote what came from outside (typed text, a path from the command line); raw control
// bytes in them would steer the terminal, so every line is escaped on its way out.

void EventEcho::Callback(const std::string& text) {
    Print('#' + std::to_string(++count) + ' ' + Host::Printable(text));
}

void EventEcho::Note(const std::string& text) {
    Print("-- " + Host::Printable(text));
}

void EventEcho::Print(std::string line) {
    out << line << std::endl;
    recent.push_back(std::move(line));
    if (recent.size() > RecentLines)
        recent.pop_front();
}

void EventEcho::Hold(const std::string& subject, const std::string& text) {
    const unsigned long long held = ++holds[subject];
    if (held == 1 || held % HoldEchoPeriod == 0)
        Callback(text + " x" + std::to_string(held));
}

void EventEcho::EndHold(const std::string& subject) {
    holds.erase(subject);
}

std::string EventEcho::KeyText(const char* action, Window::Key key, unsigned short priority,
                               unsigned char level, const std::set<Window::Mode>& modes) {
    return std::string("key ") + action + ' ' + KeyName(key) + " (priority " +
           std::to_string(priority) + ", level " + std::to_string(level) + ") modes " +
           ModesText(modes);
}

std::string EventEcho::ModeText(const char* action, Window::Mode mode, unsigned char level) {
    return std::string("mode ") + action + ' ' + ModeName(mode) + " (level " +
           std::to_string(level) + ')';
}

std::string EventEcho::ButtonText(const char* action, Window::Button button,
                                  unsigned short priority, unsigned int number,
                                  const std::set<Window::Mode>& modes) {
    return std::string("button ") + action + ' ' + ButtonName(button) + " (priority " +
           std::to_string(priority) + ") number " + std::to_string(number) + " modes " +
           ModesText(modes);
}

std::string EventEcho::CursorText(short x, short y, unsigned short priority,
                                  const std::set<Window::Mode>& modes) {
    return "cursor " + std::to_string(x) + ',' + std::to_string(y) + " (priority " +
           std::to_string(priority) + ") modes " + ModesText(modes);
}

std::string EventEcho::TextText(const std::wstring& text, unsigned char level) {
    std::string line = "text \"" + Host::Printable(ToUtf8(text)) + "\"";
    // Code points make visible what the library decoded, whatever the terminal shows.
    const std::u32string points = boost::locale::conv::utf_to_utf<char32_t>(text);
    for (const char32_t point : points) {
        char code[16];
        std::snprintf(code, sizeof(code), " U+%04X", static_cast<unsigned int>(point));
        line += code;
    }
    return line + " (level " + std::to_string(level) + ')';
}

std::string EventEcho::WindowText(Window::WindowEvent event) {
    return "window " + WindowEventName(event);
}

std::string ToUtf8(const std::wstring& text) {
    return boost::locale::conv::utf_to_utf<char>(text);
}

} // namespace InputLab
