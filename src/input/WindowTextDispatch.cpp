// SPDX-License-Identifier: Zlib
// Window events and text: nobody can consume them, so every qualifying reactor is called.

#include "input/InputCollectorImpl.h"
#include "input/Translation.h"
#include "input/Utf8ToWide.h"
#include "reactors/LentCallback.h"
#include "reactors/TextReactorImpl.h"
#include "reactors/WindowReactorImpl.h"

#include <cstring>

namespace Window {

void InputCollectorImpl::DrainWindowQueue() {
    std::vector<SDL_Event> events;
    events.swap(windowEvents);
    for (const SDL_Event& event : events) {
        if (event.type != SDL_WINDOWEVENT)
            continue;
        const auto windowEvent = TranslateWindowEvent(event.window.event);
        if (!windowEvent)
            continue;
        // Every window reactor hears it, whatever the modal level and whichever window it was.
        WalkScope walk(*this);
        const auto& reactors = windowReactors[*windowEvent];
        for (std::size_t i = 0; i < reactors.size(); ++i) {
            if (WindowReactorImpl* reactor = reactors[i]) {
                LentCallback call(reactor->callback);
                call();
            }
        }
    }
    std::vector<SDL_Event>().swap(windowEvents);
}

void InputCollectorImpl::DrainTextQueue() {
    // With nobody to read it, text is dropped unconverted and not kept for a later reactor.
    if (textReactors.empty()) {
        textEvents.clear();
        return;
    }
    std::vector<SDL_Event> events;
    events.swap(textEvents);
    for (const SDL_Event& event : events) {
        // Composition in progress (SDL_TEXTEDITING) is queued but never delivered.
        if (event.type != SDL_TEXTINPUT)
            continue;
        const std::string utf8(event.text.text, strnlen(event.text.text, sizeof event.text.text));
        const std::wstring text = Utf8ToWide(utf8);
        WalkScope walk(*this);
        for (auto entry = textReactors.begin(); entry != textReactors.end(); ++entry) {
            TextReactorImpl* reactor = entry->second;
            if (reactor == nullptr || reactor->modalLevel != modalLevel)
                continue;
            LentCallback call(reactor->callback);
            call(text);
        }
    }
    std::vector<SDL_Event>().swap(textEvents);
}

} // namespace Window
