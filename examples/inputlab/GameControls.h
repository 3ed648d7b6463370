// SPDX-License-Identifier: Zlib
#pragma once

#include "LabContext.h"

#include <window/Reactors.h>
#include <zenkbase/intrudable_pointer.h>

#include <functional>
#include <string>
#include <vector>

namespace InputLab {

/// The reactors of the game's modal level (the level current when they are made). They show
/// how priorities work: the game layer (priority 0) owns a few keys and consumes them, and the
/// echo layer (priority 1) hears every key that the game layer leaves.
///
/// Game layer: Digit1-Digit3 choose the background, Escape opens the menu (a modal level of its
/// own), Return toggles full screen, F3 steps through window sizes, F2 starts text input, Backspace
/// edits or ends the typed line; W A S D Q E and the modifiers light their cells while held. Typed
/// text goes to the log.
class GameControls {
public:
    /// Priority of the game layer; the echo layer comes after it.
    static constexpr unsigned short GamePriority = 0;
    static constexpr unsigned short EchoPriority = 1;

    /// Makes the reactors at the collector's current modal level, `level`. Escape calls
    /// `openMenu`. Engine main thread.
    GameControls(LabContext context, unsigned char level, std::function<void()> openMenu);

    /// The level the reactors answer at.
    unsigned char Level() const noexcept { return level; }

private:
    void MakeEchoLayer();
    void MakeBackgroundKeys();
    void MakeCommandKeys();
    void MakeCellKeys();
    void MakeModes();
    void MakeText();

    /// A game-layer key reactor whose press runs `action`; press and release are echoed and
    /// consumed, so the echo layer never hears the key.
    void Command(Window::Key key, const std::string& owner, std::function<void()> action);

    void NextWindowSize();
    void StopTextInput();

    LabContext context;
    unsigned char level;
    std::function<void()> openMenu;
    std::vector<Zenk::IntrudablePointer<Window::IKeyReactor>> keys;
    std::vector<Zenk::IntrudablePointer<Window::IModeReactor>> modes;
    Zenk::IntrudablePointer<Window::ITextReactor> text;
};

} // namespace InputLab
