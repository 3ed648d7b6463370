// SPDX-License-Identifier: Zlib
#include "PointerControls.h"

#include "VocabularyNames.h"

namespace InputLab {

using Window::Button;
using Modes = std::set<Window::Mode>;

PointerControls::PointerControls(LabContext context) : context(context) {
    MakeTracer();
    MakeButton(Button::Left, Cell::LeftButton);
    MakeButton(Button::Middle, Cell::MiddleButton);
    MakeButton(Button::Right, Cell::RightButton);
    MakeWheel(Button::WheelUp);
    MakeWheel(Button::WheelDown);
}

void PointerControls::MakeTracer() {
    tracer = context.collector.CreateCursorTracer(Priority);
    // Called from QueryInputEvents itself, once per motion event, not on the ticker's beat.
    tracer->SetCallback(
        [this](Zenk::two_dimensional_coordinate<short> position, const Modes& held) {
            context.echo.Callback(EventEcho::CursorText(position.x, position.y, Priority, held));
            context.state.cursor = position;
            context.state.cursorSeen = true;
            return false;
        });
}

void PointerControls::MakeButton(Button button, Cell cell) {
    const std::string subject = "button " + ButtonName(button);
    auto reactor = context.collector.CreateButtonReactor(button, Priority);
    const auto id = context.walks.Register("button", ButtonName(button), "pointer: cell", Priority,
                                           std::nullopt);
    reactor->SetPressCallback([this, button, id, subject](unsigned int number, const Modes& held) {
        context.walks.Called(id, "press", false);
        context.echo.EndHold(subject);
        context.echo.Callback(EventEcho::ButtonText("press", button, Priority, number, held));
        return false;
    });
    reactor->SetHoldCallback([this, button, cell, subject](unsigned int number, const Modes& held) {
        StampHold(context.state, cell);
        context.echo.Hold(subject, EventEcho::ButtonText("hold", button, Priority, number, held));
        return false;
    });
    reactor->SetReleaseCallback(
        [this, button, id, subject](unsigned int number, const Modes& held) {
            context.walks.Called(id, "release", false);
            context.echo.EndHold(subject);
            context.echo.Callback(EventEcho::ButtonText("release", button, Priority, number, held));
            return false;
        });
    buttons.push_back(std::move(reactor));
}

void PointerControls::MakeWheel(Button direction) {
    auto reactor = context.collector.CreateButtonReactor(direction, Priority);
    const auto id = context.walks.Register("button", ButtonName(direction), "pointer: glow",
                                           Priority, std::nullopt);
    // A wheel event is a pulse: only the press callback is ever called.
    reactor->SetPressCallback([this, direction, id](unsigned int number, const Modes& held) {
        context.walks.Called(id, "pulse", false); // a pulse is never held
        context.echo.Callback(EventEcho::ButtonText("press", direction, Priority, number, held));
        context.state.lastWheel = context.state.now;
        context.state.wheelUp = direction == Button::WheelUp;
        return false;
    });
    buttons.push_back(std::move(reactor));
}

} // namespace InputLab
