// SPDX-License-Identifier: Zlib
#include "GameControls.h"

#include "VocabularyNames.h"

#include <host/PrintableText.h>

#include <algorithm>
#include <array>

namespace InputLab {

namespace {

using Window::Key;
using Window::Mode;
using Modes = std::set<Mode>;

struct CellKey {
    Key key;
    Cell cell;
};

constexpr std::array<CellKey, 6> cellKeys{{{Key::W, Cell::W},
                                           {Key::A, Cell::A},
                                           {Key::S, Cell::S},
                                           {Key::D, Cell::D},
                                           {Key::Q, Cell::Q},
                                           {Key::E, Cell::E}}};

Cell ModeCell(Mode mode) {
    switch (mode) {
    case Mode::LeftShift:
        return Cell::LeftShift;
    case Mode::LeftCtrl:
        return Cell::LeftCtrl;
    case Mode::LeftAlt:
        return Cell::LeftAlt;
    case Mode::RightShift:
        return Cell::RightShift;
    case Mode::RightCtrl:
        return Cell::RightCtrl;
    case Mode::RightAlt:
        return Cell::RightAlt;
    }
    return Cell::LeftShift;
}

} // namespace

GameControls::GameControls(LabContext context, unsigned char level, std::function<void()> openMenu)
    : context(context)
    , level(level)
    , openMenu(std::move(openMenu)) {
    MakeEchoLayer();
    MakeBackgroundKeys();
    MakeCommandKeys();
    MakeCellKeys();
    MakeModes();
    MakeText();
}

void GameControls::MakeEchoLayer() {
    for (const Key key : AllKeys()) {
        auto reactor = context.collector.CreateKeyReactor(key, EchoPriority);
        const auto id =
            context.walks.Register("key", KeyName(key), "echo layer", EchoPriority, level);
        const auto echo = [this, key, id](const char* action) {
            return [this, key, id, action](const Modes& held) {
                context.walks.Called(id, action, false);
                context.echo.Callback(EventEcho::KeyText(action, key, EchoPriority, level, held));
                return false;
            };
        };
        reactor->SetPressCallback(echo("press"));
        reactor->SetReleaseCallback(echo("release"));
        keys.push_back(std::move(reactor));
    }
}

void GameControls::Command(Key key, const std::string& owner, std::function<void()> action) {
    auto reactor = context.collector.CreateKeyReactor(key, GamePriority);
    const auto id = context.walks.Register("key", KeyName(key), owner, GamePriority, level);
    reactor->SetPressCallback([this, key, id, action = std::move(action)](const Modes& held) {
        context.walks.Called(id, "press", true);
        context.echo.Callback(EventEcho::KeyText("press", key, GamePriority, level, held));
        action();
        return true;
    });
    reactor->SetReleaseCallback([this, key, id](const Modes& held) {
        context.walks.Called(id, "release", true);
        context.echo.Callback(EventEcho::KeyText("release", key, GamePriority, level, held));
        return true;
    });
    keys.push_back(std::move(reactor));
}

void GameControls::MakeBackgroundKeys() {
    const std::array<Key, 3> digits{Key::Digit1, Key::Digit2, Key::Digit3};
    for (std::size_t index = 0; index < digits.size(); ++index)
        Command(digits[index], "game: background " + std::to_string(index + 1),
                [this, index] { context.state.background = static_cast<int>(index) + 1; });
}

void GameControls::MakeCommandKeys() {
    // Escape consumes its press, and the menu's Escape reactor has a later priority: the walk
    // over Escape's reactors therefore ends before it reaches the menu's reactor, which would
    // otherwise answer at the level this very press has just entered and close the menu again.
    Command(Key::Escape, "game: open menu", [this] { openMenu(); });
    Command(Key::Return, "game: full screen", [this] { ToggleFullScreen(context); });
    Command(Key::F3, "game: window size", [this] { NextWindowSize(); });
    Command(Key::F2, "game: text input", [this] {
        if (context.state.textInput)
            return;
        context.state.textInput = true;
        context.state.typed.clear();
        context.collector.StartTextInput();
        context.echo.Note("text input on: type, Backspace on an empty line ends it");
    });

    // While text input is on, Backspace is the one key the library still delivers as a key, so
    // it edits the typed line and, on an empty line, ends text input.
    auto backspace = context.collector.CreateKeyReactor(Key::Backspace, GamePriority);
    const auto id = context.walks.Register("key", KeyName(Key::Backspace), "game: edit text",
                                           GamePriority, level);
    backspace->SetPressCallback([this, id](const Modes& held) {
        context.walks.Called(id, "press", context.state.textInput);
        if (!context.state.textInput)
            return false; // an ordinary key now: leave it to the echo layer
        context.echo.Callback(
            EventEcho::KeyText("press", Key::Backspace, GamePriority, level, held));
        if (context.state.typed.empty())
            StopTextInput();
        else
            context.state.typed.pop_back();
        return true;
    });
    backspace->SetReleaseCallback([this, id](const Modes& held) {
        context.walks.Called(id, "release", context.state.textInput);
        if (!context.state.textInput)
            return false;
        context.echo.Callback(
            EventEcho::KeyText("release", Key::Backspace, GamePriority, level, held));
        return true;
    });
    keys.push_back(std::move(backspace));
}

void GameControls::MakeCellKeys() {
    for (const CellKey& entry : cellKeys) {
        const Key key = entry.key;
        const Cell cell = entry.cell;
        const std::string subject = "key " + KeyName(key);
        auto reactor = context.collector.CreateKeyReactor(key, GamePriority);
        const auto id =
            context.walks.Register("key", KeyName(key), "game: cell", GamePriority, level);
        // These do not consume, so the echo layer hears the press and release too.
        reactor->SetPressCallback([this, key, id, subject](const Modes& held) {
            context.walks.Called(id, "press", false);
            context.echo.EndHold(subject);
            context.echo.Callback(EventEcho::KeyText("press", key, GamePriority, level, held));
            return false;
        });
        reactor->SetHoldCallback([this, key, cell, subject](const Modes& held) {
            StampHold(context.state, cell);
            context.echo.Hold(subject, EventEcho::KeyText("hold", key, GamePriority, level, held));
            return false;
        });
        reactor->SetReleaseCallback([this, key, id, subject](const Modes& held) {
            context.walks.Called(id, "release", false);
            context.echo.EndHold(subject);
            context.echo.Callback(EventEcho::KeyText("release", key, GamePriority, level, held));
            return false;
        });
        keys.push_back(std::move(reactor));
    }
}

void GameControls::MakeModes() {
    for (const Mode mode : AllModes()) {
        const std::string subject = "mode " + ModeName(mode);
        auto reactor = context.collector.CreateModeReactor(mode);
        reactor->SetPressCallback([this, mode, subject] {
            context.state.heldModes.push_back(ModeName(mode));
            context.echo.EndHold(subject);
            context.echo.Callback(EventEcho::ModeText("press", mode, level));
        });
        reactor->SetHoldCallback([this, mode, subject] {
            StampHold(context.state, ModeCell(mode));
            context.echo.Hold(subject, EventEcho::ModeText("hold", mode, level));
        });
        reactor->SetReleaseCallback([this, mode, subject] {
            auto& held = context.state.heldModes;
            held.erase(std::remove(held.begin(), held.end(), ModeName(mode)), held.end());
            context.echo.EndHold(subject);
            context.echo.Callback(EventEcho::ModeText("release", mode, level));
        });
        modes.push_back(std::move(reactor));
    }
}

void GameControls::MakeText() {
    text = context.collector.CreateTextReactor();
    text->SetCallback([this](const std::wstring& typed) {
        context.echo.Callback(EventEcho::TextText(typed, level));
        context.state.typed += typed;
        context.log.LogInfo("Typed: " + Host::Printable(ToUtf8(typed)));
    });
}

void GameControls::NextWindowSize() {
    // Sizes at and above the library's 700 x 700 floor; the window keeps the one chosen last and
    // saves it at exit.
    constexpr std::array<Window::Resolution, 3> sizes{{{1000, 1000}, {1280, 800}, {800, 700}}};
    const Window::Resolution current = context.window.GetResolution();
    std::size_t next = 0;
    for (std::size_t index = 0; index < sizes.size(); ++index)
        if (sizes[index] == current)
            next = (index + 1) % sizes.size();
    context.window.SetResolution(sizes[next]);
    context.echo.Note("window size " + std::to_string(sizes[next].width) + "x" +
                      std::to_string(sizes[next].height) + " asked for");
}

void GameControls::StopTextInput() {
    context.collector.StopTextInput();
    context.state.textInput = false;
    context.log.LogInfo("Typed line: " + Host::Printable(ToUtf8(context.state.typed)));
    context.echo.Note("text input off");
}

} // namespace InputLab
