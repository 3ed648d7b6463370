// SPDX-License-Identifier: Zlib
#include "ScriptWords.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <type_traits>

namespace Host::ScriptWords {

namespace {

using Kind = ScriptEvent::Kind;

struct ButtonRow {
    std::string_view word;
    std::uint8_t number;
};

struct WindowRow {
    std::string_view word;
    Kind kind;
    std::uint8_t event;
};

// In the order that messages offer them.
constexpr std::array<ButtonRow, 3> buttons{{
    {"left", SDL_BUTTON_LEFT},
    {"right", SDL_BUTTON_RIGHT},
    {"middle", SDL_BUTTON_MIDDLE},
}};

constexpr std::array<WindowRow, 3> windowEvents{{
    {"close", Kind::WindowClose, SDL_WINDOWEVENT_CLOSE},
    {"minimize", Kind::WindowMinimize, SDL_WINDOWEVENT_MINIMIZED},
    {"maximize", Kind::WindowMaximize, SDL_WINDOWEVENT_MAXIMIZED},
}};

constexpr std::array<std::string_view, 7> verbs{keyVerb,  motionVerb, buttonVerb, wheelVerb,
                                                textVerb, windowVerb, waitVerb};

/// The row of `rows` whose `field` is `value`, or null.
template <class Row, std::size_t count, class Field, class Value>
const Row* Find(const std::array<Row, count>& rows, Field Row::*field, const Value& value) {
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.*field == value; });
    return found == rows.end() ? nullptr : &*found;
}

/// The rows' words, each but the first after ", ", or after `last` for the last one.
template <class Row, std::size_t count>
std::string Listed(const std::array<Row, count>& rows, std::string_view last) {
    std::string text;
    for (std::size_t index = 0; index < count; ++index) {
        if (index > 0)
            text += index + 1 == count ? last : ", ";
        if constexpr (std::is_same_v<Row, std::string_view>)
            text += rows[index];
        else
            text += rows[index].word;
    }
    return text;
}

} // namespace

std::string Verbs() {
    return Listed(verbs, ", ");
}

std::string_view Direction(bool isDown) {
    return isDown ? down : up;
}

std::optional<bool> IsDown(std::string_view word) {
    if (word == down)
        return true;
    if (word == up)
        return false;
    return std::nullopt;
}

std::optional<std::string_view> ButtonWord(std::uint8_t button) {
    const ButtonRow* const found = Find(buttons, &ButtonRow::number, button);
    return found ? std::optional<std::string_view>(found->word) : std::nullopt;
}

std::optional<std::uint8_t> ButtonNumber(std::string_view word) {
    const ButtonRow* const found = Find(buttons, &ButtonRow::word, word);
    return found ? std::optional<std::uint8_t>(found->number) : std::nullopt;
}

std::string ButtonChoices() {
    return Listed(buttons, " or ");
}

std::optional<std::string_view> WindowWord(std::uint8_t event) {
    const WindowRow* const found = Find(windowEvents, &WindowRow::event, event);
    return found ? std::optional<std::string_view>(found->word) : std::nullopt;
}

std::optional<ScriptEvent::Kind> WindowKind(std::string_view word) {
    const WindowRow* const found = Find(windowEvents, &WindowRow::word, word);
    return found ? std::optional<Kind>(found->kind) : std::nullopt;
}

std::uint8_t WindowEvent(ScriptEvent::Kind kind) {
    const WindowRow* const found = Find(windowEvents, &WindowRow::kind, kind);
    assert(found != nullptr && "not a window event's kind");
    return found->event;
}

std::string WindowChoices() {
    return Listed(windowEvents, " or ");
}

std::string Line(std::initializer_list<std::string_view> words) {
    std::string line;
    bool first = true;
    for (const std::string_view word : words) {
        if (!first)
            line += ' ';
        line += word;
        first = false;
    }
    return line;
}

} // namespace Host::ScriptWords
