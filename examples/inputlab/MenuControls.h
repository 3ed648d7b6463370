// SPDX-License-Identifier: Zlib
#pragma once

#include "LabContext.h"

#include <window/Reactors.h>
#include <zenkbase/intrudable_pointer.h>

#include <vector>

namespace InputLab {

/// The name of a menu item as the menu shows it: "Resume", "Full screen", "Quit".
const char* MenuItemName(MenuItem item);

/// The menu: a modal level of its own, above the game's. While it is open only its key
/// reactors answer (the game's keys fall silent), while buttons, the cursor and window events
/// still reach their reactors, which answer at every level.
///
/// Up and Down choose an item, Return runs it (Resume, Full screen, Quit), Escape closes the menu.
class MenuControls {
public:
    /// Priority of the menu's key reactors. It must differ from the game layer's: see `Open`.
    static constexpr unsigned short MenuPriority = 10;

    /// Makes the reactors at a level of their own, one above the current one, and returns to the
    /// current level. The menu starts closed. Engine main thread.
    explicit MenuControls(LabContext context);

    /// Enters the menu's level. Called from the game's Escape press: that walk must consume the
    /// press, so that it ends before it reaches the menu's own Escape reactor.
    void Open();

    /// Leaves the menu's level.
    void Close();

private:
    void MakeKey(Window::Key key, const char* owner, std::function<void()> action);
    void Move(int step);
    void Activate();

    LabContext context;
    unsigned char level = 0;
    std::vector<Zenk::IntrudablePointer<Window::IKeyReactor>> keys;
};

} // namespace InputLab
