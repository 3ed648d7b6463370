// SPDX-License-Identifier: Zlib
// Keys and modifiers: the key walk, the mode call, and the hold tick.

#include "input/InputCollectorImpl.h"
#include "input/PriorityWalk.h"
#include "input/Translation.h"
#include "reactors/ButtonReactorImpl.h"
#include "reactors/KeyReactorImpl.h"
#include "reactors/LentCallback.h"
#include "reactors/ModeReactorImpl.h"

namespace Window {

void InputCollectorImpl::DrainKeyQueue() {
    std::vector<SDL_Event> events;
    events.swap(keyEvents); // keyEvents is left empty and without storage
    for (const SDL_Event& event : events) {
        DispatchKeyUp(event);
        DispatchKeyDown(event);
    }
    // Events that a callback caused to be queued meanwhile wait for the next tick.
}

// A key's set changes before its callbacks; a modifier's after them, in both directions.
void InputCollectorImpl::DispatchKeyUp(const SDL_Event& event) {
    if (event.type != SDL_KEYUP)
        return;
    if (const auto mode = TranslateMode(event.key.keysym.sym)) {
        ModeCall(*mode, &ModeReactorImpl::releaseCallback);
        heldModes.erase(*mode);
        return;
    }
    const Key key = TranslateKey(event.key.keysym);
    if (key == Key::None)
        return;
    heldKeys.erase(key);
    KeyWalk(key, &KeyReactorImpl::releaseCallback);
}

void InputCollectorImpl::DispatchKeyDown(const SDL_Event& event) {
    // Holding is told by the hold tick, not by the system's repeats.
    if (event.type != SDL_KEYDOWN || event.key.repeat != 0)
        return;
    if (const auto mode = TranslateMode(event.key.keysym.sym)) {
        ModeCall(*mode, &ModeReactorImpl::pressCallback);
        heldModes.insert(*mode);
        return;
    }
    const Key key = TranslateKey(event.key.keysym);
    if (key == Key::None)
        return;
    heldKeys.insert(key);
    KeyWalk(key, &KeyReactorImpl::pressCallback);
}

// Reactors of other modal levels do not take part at all: they neither run nor stop the walk.
bool InputCollectorImpl::KeyWalk(Key key, KeyCallback KeyReactorImpl::*callback) {
    WalkScope walk(*this);
    return PriorityWalk(
        keyReactors[key],
        [this](const KeyReactorImpl& reactor) { return reactor.modalLevel != modalLevel; },
        [this, callback](KeyReactorImpl* reactor) {
            LentCallback call(reactor->*callback);
            return call(heldModes); // each callback gets a copy of its own
        });
}

void InputCollectorImpl::ModeCall(Mode mode, ModeCallback ModeReactorImpl::*callback) {
    const auto found = modeReactors.find(mode);
    if (found == modeReactors.end())
        return;
    WalkScope walk(*this);
    const auto& reactors = found->second;
    for (std::size_t i = 0; i < reactors.size(); ++i) {
        ModeReactorImpl* reactor = reactors[i];
        if (reactor == nullptr || reactor->modalLevel != modalLevel)
            continue;
        LentCallback call(reactor->*callback);
        call();
    }
}

// Buttons, then keys, then modifiers. A walk ended by the stop rule ends the whole hold tick:
// a consuming hold on a button takes this tick's hold calls from keys and modifiers.
void InputCollectorImpl::HoldTick() {
    for (const Button button : heldButtons)
        if (ButtonWalk(button, &ButtonReactorImpl::holdCallback))
            return;
    for (const Key key : heldKeys)
        if (KeyWalk(key, &KeyReactorImpl::holdCallback))
            return;
    for (const Mode mode : heldModes)
        ModeCall(mode, &ModeReactorImpl::holdCallback);
}

} // namespace Window
