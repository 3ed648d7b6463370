// SPDX-License-Identifier: Zlib
// Mouse buttons, the wheel and the cursor. The modal level plays no part here.

#include "input/InputCollectorImpl.h"
#include "input/PriorityWalk.h"
#include "input/Translation.h"
#include "reactors/ButtonReactorImpl.h"
#include "reactors/CursorTracerImpl.h"
#include "reactors/LentCallback.h"

namespace Window {
namespace {

// The number given to every button callback; it is neither a click count nor a wheel distance.
constexpr unsigned int pulse = 1;

} // namespace

void InputCollectorImpl::DispatchButtonDown(const SDL_Event& event) {
    if (event.type != SDL_MOUSEBUTTONDOWN)
        return;
    const auto button = TranslateButton(event.button.button);
    if (!button)
        return;
    heldButtons.insert(*button);
    ButtonWalk(*button, &ButtonReactorImpl::pressCallback);
}

void InputCollectorImpl::DispatchButtonUp(const SDL_Event& event) {
    if (event.type != SDL_MOUSEBUTTONUP)
        return;
    const auto button = TranslateButton(event.button.button);
    if (!button)
        return;
    heldButtons.erase(*button);
    ButtonWalk(*button, &ButtonReactorImpl::releaseCallback);
}

void InputCollectorImpl::DrainButtonQueue() {
    std::vector<SDL_Event> events;
    events.swap(buttonEvents);
    for (const SDL_Event& event : events) {
        DispatchButtonDown(event);
        DispatchButtonUp(event);
        // A wheel event is a pulse: one press walk, no hold, no release.
        if (event.type == SDL_MOUSEWHEEL)
            if (const auto direction = TranslateWheel(event.wheel.y))
                ButtonWalk(*direction, &ButtonReactorImpl::pressCallback);
    }
    std::vector<SDL_Event>().swap(buttonEvents);
}

// The modal level plays no part: nothing is skipped.
bool InputCollectorImpl::ButtonWalk(Button button, ButtonCallback ButtonReactorImpl::*callback) {
    WalkScope walk(*this);
    return PriorityWalk(
        buttonReactors[button], [](const ButtonReactorImpl&) { return false; },
        [this, callback](ButtonReactorImpl* reactor) {
            LentCallback call(reactor->*callback);
            return call(pulse, heldModes);
        });
}

void InputCollectorImpl::DispatchCursor(const SDL_Event& event) {
    if (event.type != SDL_MOUSEMOTION)
        return;
    // The low 16 bits, read as signed: positions beyond the range of a short wrap.
    const Zenk::two_dimensional_coordinate<short> position{
        static_cast<short>(static_cast<Uint16>(event.motion.x)),
        static_cast<short>(static_cast<Uint16>(event.motion.y))};
    WalkScope walk(*this);
    PriorityWalk(
        cursorTracers, [](const CursorTracerImpl&) { return false; },
        [this, position](CursorTracerImpl* tracer) {
            tracer->position = position; // stored first: GetPosition inside the callback sees it
            LentCallback call(tracer->callback);
            return call(position, heldModes);
        });
}

} // namespace Window
