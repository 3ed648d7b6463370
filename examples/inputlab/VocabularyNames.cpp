// SPDX-License-Identifier: Zlib
#include "VocabularyNames.h"

#include <array>
#include <iterator>

namespace InputLab {

namespace {

// In declaration order, so that the index of an enumerator is its place here.
constexpr std::array<const char*, 77> keyNames{
    "Escape",    "F1",       "F2",         "F3",      "F4",     "F5",          "F6",
    "F7",        "F8",       "F9",         "F10",     "F11",    "F12",         "Pause",
    "A",         "B",        "C",          "D",       "E",      "F",           "G",
    "H",         "I",        "J",          "K",       "L",      "M",           "N",
    "O",         "P",        "Q",          "R",       "S",      "T",           "U",
    "V",         "W",        "X",          "Y",       "Z",      "Return",      "Backquote",
    "Digit1",    "Digit2",   "Digit3",     "Digit4",  "Digit5", "Digit6",      "Digit7",
    "Digit8",    "Digit9",   "Digit0",     "Minus",   "Equals", "LeftBracket", "RightBracket",
    "Semicolon", "Quote",    "Period",     "Comma",   "Slash",  "Backslash",   "Backspace",
    "Tab",       "CapsLock", "ScrollLock", "NumLock", "Home",   "End",         "PageDown",
    "PageUp",    "Left",     "Right",      "Up",      "Down",   "Delete",      "None"};

constexpr std::array<const char*, 6> modeNames{"LeftShift",  "LeftAlt",  "LeftCtrl",
                                               "RightShift", "RightAlt", "RightCtrl"};

constexpr std::array<const char*, 5> buttonNames{"Left", "Right", "Middle", "WheelUp", "WheelDown"};

constexpr std::array<const char*, 4> windowEventNames{"Close", "Minimize", "Maximize", "Reserved"};

template <class Enum, std::size_t size>
std::string NameOf(const std::array<const char*, size>& names, Enum value) {
    const auto index = static_cast<std::uint32_t>(value);
    if (index < names.size())
        return names[index];
    return "?" + std::to_string(index);
}

} // namespace

static_assert(std::size(keyNames) == static_cast<std::size_t>(Window::Key::None) + 1,
              "every Key needs a name");

std::string KeyName(Window::Key key) {
    return NameOf(keyNames, key);
}
std::string ModeName(Window::Mode mode) {
    return NameOf(modeNames, mode);
}
std::string ButtonName(Window::Button button) {
    return NameOf(buttonNames, button);
}
std::string WindowEventName(Window::WindowEvent event) {
    return NameOf(windowEventNames, event);
}

std::string ModesText(const std::set<Window::Mode>& modes) {
    std::string text = "{";
    for (const Window::Mode mode : modes) {
        if (text.size() > 1)
            text += ", ";
        text += ModeName(mode);
    }
    return text + "}";
}

std::vector<Window::Key> AllKeys() {
    std::vector<Window::Key> keys;
    for (std::uint32_t index = 0; index < static_cast<std::uint32_t>(Window::Key::None); ++index)
        keys.push_back(static_cast<Window::Key>(index));
    return keys;
}

std::vector<Window::Mode> AllModes() {
    std::vector<Window::Mode> modes;
    for (std::uint32_t index = 0; index < modeNames.size(); ++index)
        modes.push_back(static_cast<Window::Mode>(index));
    return modes;
}

} // namespace InputLab
