// SPDX-License-Identifier: Zlib
#include "MenuControls.h"

#include "VocabularyNames.h"

namespace InputLab {

const char* MenuItemName(MenuItem item) {
    switch (item) {
    case MenuItem::Resume:
        return "Resume";
    case MenuItem::FullScreen:
        return "Full screen";
    case MenuItem::Quit:
        return "Quit";
    case MenuItem::Count:
        break;
    }
    return "?";
}

MenuControls::MenuControls(LabContext context) : context(context) {
    // Key reactors answer only at the level current when they are made, so the menu's are made
    // on its own level, once, and wait there until the menu opens.
    level = context.collector.PushModalLevel();
    MakeKey(Window::Key::Escape, "menu: close", [this] { Close(); });
    MakeKey(Window::Key::Up, "menu: item up", [this] { Move(-1); });
    MakeKey(Window::Key::Down, "menu: item down", [this] { Move(1); });
    MakeKey(Window::Key::Return, "menu: run item", [this] { Activate(); });
    context.collector.PopModalLevel();
}

void MenuControls::MakeKey(Window::Key key, const char* owner, std::function<void()> action) {
    auto reactor = context.collector.CreateKeyReactor(key, MenuPriority);
    const auto id = context.walks.Register("key", KeyName(key), owner, MenuPriority, level);
    reactor->SetPressCallback(
        [this, key, id, action = std::move(action)](const std::set<Window::Mode>& held) {
            context.walks.Called(id, "press", true);
            context.echo.Callback(EventEcho::KeyText("press", key, MenuPriority, level, held));
            action();
            return true;
        });
    reactor->SetReleaseCallback([this, key, id](const std::set<Window::Mode>& held) {
        context.walks.Called(id, "release", true);
        context.echo.Callback(EventEcho::KeyText("release", key, MenuPriority, level, held));
        return true;
    });
    keys.push_back(std::move(reactor));
}

void MenuControls::Open() {
    if (context.state.menuOpen)
        return;
    context.state.modalLevel = context.collector.PushModalLevel();
    context.state.menuOpen = true;
    context.state.menuSelection = MenuItem::Resume;
    context.echo.Note("menu opened: modal level " + std::to_string(context.state.modalLevel));
}

void MenuControls::Close() {
    if (!context.state.menuOpen)
        return;
    context.state.modalLevel = context.collector.PopModalLevel();
    context.state.menuOpen = false;
    context.echo.Note("menu closed: modal level " + std::to_string(context.state.modalLevel));
}

void MenuControls::Move(int step) {
    constexpr int count = static_cast<int>(MenuItem::Count);
    const int index = (static_cast<int>(context.state.menuSelection) + step + count) % count;
    context.state.menuSelection = static_cast<MenuItem>(index);
    context.echo.Note(std::string("menu item ") + MenuItemName(context.state.menuSelection));
}

void MenuControls::Activate() {
    switch (context.state.menuSelection) {
    case MenuItem::Resume:
        Close();
        break;
    case MenuItem::FullScreen:
        ToggleFullScreen(context);
        break;
    case MenuItem::Quit:
        context.echo.Note("quit chosen in the menu");
        context.state.quit = true;
        break;
    case MenuItem::Count:
        break;
    }
}

} // namespace InputLab
