// SPDX-License-Identifier: Zlib
#include "EventStream.h"

#include "ManualFrameUtility.h"
#include "SdlEvents.h"

#include <common/ApplicationErrorException.h>

#include <SDL.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>

namespace Window {
namespace {

void Trace(const char* what, long number = -1) {
    static const bool tracing = std::getenv("INPUT_EVENTS_TRACE") != nullptr;
    if (tracing && number >= 0)
        std::fprintf(stderr, "input_events: %s %ld\n", what, number);
    else if (tracing)
        std::fprintf(stderr, "input_events: %s\n", what);
}

/// Keycodes worth choosing often: keys, the modifiers, Backspace (a key even while text input
/// is on) and a key the library does not name.
constexpr SDL_Keycode interestingKeys[] = {SDLK_a,      SDLK_b,        SDLK_BACKSPACE, SDLK_LSHIFT,
                                           SDLK_RSHIFT, SDLK_LCTRL,    SDLK_RALT,      SDLK_ESCAPE,
                                           SDLK_F12,    SDLK_QUOTEDBL, SDLK_SPACE,     SDLK_LGUI};

constexpr Uint8 interestingWindowEvents[] = {SDL_WINDOWEVENT_CLOSE, SDL_WINDOWEVENT_MINIMIZED,
                                             SDL_WINDOWEVENT_MAXIMIZED, SDL_WINDOWEVENT_RESTORED,
                                             SDL_WINDOWEVENT_MOVED};

// The three callbacks of key, mode and button reactors, set alike.
template <class Reactor, class Callback, class Callbacks>
void SetThree(Reactor& reactor, Callbacks callbacks, const Callback& callback) {
    if (callbacks == Callbacks::Defaults)
        return reactor.ClearAllCallbacks();
    const Callback chosen = callbacks == Callbacks::Acting ? callback : Callback();
    reactor.SetPressCallback(chosen);
    reactor.SetHoldCallback(chosen);
    reactor.SetReleaseCallback(chosen);
}

// The single callback of tracers, text and window reactors.
template <class Callback, class Reactor, class Callbacks, class Clear>
void SetOne(Reactor& reactor, Callbacks callbacks, const Callback& callback, Clear clear) {
    if (callbacks == Callbacks::Defaults)
        return (reactor.*clear)();
    reactor.SetCallback(callbacks == Callbacks::Acting ? callback : Callback());
}

} // namespace

EventStream::EventStream(FuzzedDataProvider& bytes, InputCollectorImpl& collector,
                         Fakes::ManualFrameUtility& frames)
    : bytes(bytes)
    , collector(collector)
    , frames(frames)
    , probe(collector) {}

void EventStream::Run() {
    while (bytes.remaining_bytes() > 0)
        Guarded([this] { Step(); });
    pool.clear();
    CheckRegistriesEmpty();
}

template <class Action> void EventStream::Guarded(Action action) {
    try {
        action();
    } catch (const Common::ApplicationErrorException&) {
    } catch (const std::bad_function_call&) {
        ++emptyCalls;
    }
}

void EventStream::Step() {
    static constexpr const char* steps[] = {
        "push a key",     "push a text",       "push a motion",
        "push a button",  "push a wheel",      "push a window event",
        "make a reactor", "drop a reactor",    "poll",
        "tick",           "switch text input", "change the modal level"};
    const int step = bytes.ConsumeIntegralInRange<int>(0, 11);
    Trace(steps[step]);
    switch (step) {
    case 0:
        return PushKey();
    case 1:
        return PushText();
    case 2:
        return PushMotion();
    case 3:
        return PushButton();
    case 4:
        return PushWheel();
    case 5:
        return PushWindowEvent();
    case 6:
        return MakeReactor();
    case 7:
        return DropChosen();
    case 8:
        return collector.QueryInputEvents();
    case 9:
        return Tick(bytes.ConsumeIntegralInRange<int>(1, 3));
    case 10:
        return SwitchTextInput();
    default:
        return ChangeModalLevel();
    }
}

// --- events: each field's bytes are read in the order written, which the corpus relies on ---

void EventStream::PushKey() {
    const Uint32 type = bytes.ConsumeBool() ? SDL_KEYDOWN : SDL_KEYUP;
    const auto repeat = bytes.ConsumeIntegralInRange<Uint8>(0, 1);
    const SDL_Keycode sym = bytes.ConsumeProbability<float>() < 0.8F
                                ? bytes.PickValueInArray(interestingKeys)
                                : bytes.ConsumeIntegral<SDL_Keycode>();
    SdlEvents::Push(SdlEvents::MakeKey(type, sym, repeat));
}

void EventStream::PushText() {
    const Uint32 type = bytes.ConsumeBool() ? SDL_TEXTINPUT : SDL_TEXTEDITING;
    // Any bytes, an empty text too; SDL's field holds 31 beside its NUL.
    SdlEvents::Push(SdlEvents::MakeText(bytes.ConsumeRandomLengthString(31), type));
}

void EventStream::PushMotion() {
    const auto x = bytes.ConsumeIntegral<Sint32>();
    const auto y = bytes.ConsumeIntegral<Sint32>();
    SdlEvents::Push(SdlEvents::MakeMotion(x, y));
}

void EventStream::PushButton() {
    const Uint32 type = bytes.ConsumeBool() ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    const auto button = bytes.ConsumeIntegralInRange<Uint8>(0, 7);
    const auto clicks = bytes.ConsumeIntegral<Uint8>();
    SdlEvents::Push(SdlEvents::MakeButton(type, button, clicks));
}

void EventStream::PushWheel() {
    const auto y = bytes.ConsumeIntegral<Sint32>();
    const auto x = bytes.ConsumeIntegral<Sint32>();
    const Uint32 direction = bytes.ConsumeBool() ? SDL_MOUSEWHEEL_FLIPPED : SDL_MOUSEWHEEL_NORMAL;
    SdlEvents::Push(SdlEvents::MakeWheel(y, x, direction));
}

void EventStream::PushWindowEvent() {
    SdlEvents::Push(SdlEvents::MakeWindow(bytes.ConsumeBool()
                                              ? bytes.PickValueInArray(interestingWindowEvents)
                                              : bytes.ConsumeIntegral<Uint8>()));
}

// --- the collector's switches ---

void EventStream::Tick(int count) {
    // The ticker exists from the first poll on, as with the real frame utility.
    if (!frames.tickers.empty())
        frames.Tick(count);
}

void EventStream::SwitchTextInput() {
    if (bytes.ConsumeBool())
        collector.StartTextInput();
    else
        collector.StopTextInput();
}

void EventStream::ChangeModalLevel() {
    if (bytes.ConsumeBool())
        collector.PushModalLevel();
    else
        collector.PopModalLevel();
}

// --- reactors ---

// What every callback does: check that it may run, then act as the next bytes say.
bool EventStream::Act(int token) {
    if (dead.count(token) != 0)
        throw Violation("a dropped reactor was called (reactor " + std::to_string(token) + ")");
    ++calls;
    if (bytes.remaining_bytes() == 0)
        return false;
    static constexpr const char* actions[] = {
        "makes a reactor",      "drops a reactor",
        "drops itself",         "replaces its callbacks",
        "clears its callbacks", "replaces another's callbacks",
        "clears another's",     "may empty its callbacks",
        "switches text input",  "changes the modal level",
        "polls again",          "drops every reactor"};
    const int action = bytes.ConsumeIntegralInRange<int>(0, 15);
    Trace(action < 12 ? actions[action] : "does nothing; reactor", token);
    Slot* slot = nullptr;
    switch (action) {
    case 0:
        MakeReactor();
        break;
    case 1:
        DropChosen();
        break;
    case 2:
        DropToken(token); // itself
        break;
    case 3: // replaces the running callback
    case 4:
        if ((slot = WithToken(token)) != nullptr)
            slot->set(action == 3 ? Callbacks::Acting : Callbacks::Defaults);
        break;
    case 5:
    case 6:
        if ((slot = Chosen()) != nullptr)
            slot->set(action == 5 ? Callbacks::Acting : Callbacks::Defaults);
        break;
    case 7:
        if (bytes.ConsumeProbability<float>() < 0.2F && (slot = WithToken(token)) != nullptr)
            slot->set(Callbacks::Empty);
        break;
    case 8:
        SwitchTextInput();
        break;
    case 9:
        ChangeModalLevel();
        break;
    case 10:
        PollAgain();
        break;
    case 11:
        pool.clear(); // every reactor at once, the running one included
        break;
    default:
        break;
    }
    return bytes.ConsumeBool(); // consumed
}

void EventStream::PollAgain() {
    // Each nested poll may reach a tracer that polls again: the nesting is bounded.
    if (pollDepth >= 3)
        return;
    ++pollDepth;
    struct Leave {
        int& depth;
        ~Leave() { --depth; }
    } leave{pollDepth};
    for (int events = bytes.ConsumeIntegralInRange<int>(0, 3); events > 0; --events) {
        switch (bytes.ConsumeIntegralInRange<int>(0, 4)) {
        case 0:
            PushKey();
            break;
        case 1:
            PushMotion();
            break;
        case 2:
            PushButton();
            break;
        case 3:
            PushText();
            break;
        default:
            PushWindowEvent();
            break;
        }
    }
    collector.QueryInputEvents();
}

EventStream::Slot* EventStream::WithToken(int token) {
    for (Slot& slot : pool)
        if (slot.token == token)
            return &slot;
    return nullptr;
}

EventStream::Slot* EventStream::Chosen() {
    if (pool.empty())
        return nullptr;
    return &pool[bytes.ConsumeIntegralInRange<std::size_t>(0, pool.size() - 1)];
}

void EventStream::Drop(std::size_t index) {
    Trace("dropped reactor", pool[index].token);
    dead.insert(pool[index].token);
    Slot slot = std::move(pool[index]);
    pool.erase(pool.begin() + static_cast<std::ptrdiff_t>(index));
    // `slot` dies here, and with it the reactor, unless a walk is calling it right now.
}

void EventStream::DropChosen() {
    if (!pool.empty())
        Drop(bytes.ConsumeIntegralInRange<std::size_t>(0, pool.size() - 1));
}

void EventStream::DropToken(int token) {
    for (std::size_t i = 0; i < pool.size(); ++i)
        if (pool[i].token == token)
            return Drop(i);
}

// Keeps the new reactor's only handle; `set` gives its callbacks, now and when asked again.
template <class Interface, class Set>
void EventStream::Keep(Zenk::IntrudablePointer<Interface> handle, Set set) {
    Interface* reactor = handle.Get();
    const int token = nextToken++;
    const auto act = [this, token] { return Act(token); };
    Slot slot{token, std::move(handle),
              [reactor, set, act](Callbacks callbacks) { set(*reactor, act, callbacks); }};
    slot.set(Callbacks::Acting);
    pool.push_back(std::move(slot));
    Trace("made reactor", token);
}

unsigned short EventStream::Priority() {
    return bytes.ConsumeBool() ? bytes.ConsumeIntegralInRange<unsigned short>(0, 3)
                               : bytes.ConsumeIntegral<unsigned short>();
}

// Enumerations also take values outside their tables, which the library must tolerate.
template <class Enumeration> Enumeration EventStream::Pick(std::uint32_t last) {
    return static_cast<Enumeration>(bytes.ConsumeIntegralInRange<std::uint32_t>(0, last));
}

void EventStream::MakeReactor() {
    if (pool.size() >= 64)
        return;
    // Arguments are read one statement at a time: compilers order a call's arguments as they
    // like, and an input must make the same reactors whichever compiled the stream.
    switch (bytes.ConsumeIntegralInRange<int>(0, 5)) {
    case 0: {
        const auto key = Pick<Key>(80);
        return Keep(collector.CreateKeyReactor(key, Priority()),
                    [](IKeyReactor& r, auto act, Callbacks callbacks) {
                        SetThree(r, callbacks, KeyCallback([act](auto) { return act(); }));
                    });
    }
    case 1:
        return Keep(collector.CreateModeReactor(Pick<Mode>(7)),
                    [](IModeReactor& r, auto act, Callbacks callbacks) {
                        SetThree(r, callbacks, ModeCallback([act] { act(); }));
                    });
    case 2: {
        const auto button = Pick<Button>(6);
        return Keep(collector.CreateButtonReactor(button, Priority()),
                    [](IButtonReactor& r, auto act, Callbacks callbacks) {
                        SetThree(r, callbacks,
                                 ButtonCallback([act](unsigned int, auto) { return act(); }));
                    });
    }
    case 3:
        return Keep(collector.CreateCursorTracer(Priority()),
                    [](ICursorTracer& r, auto act, Callbacks callbacks) {
                        SetOne(r, callbacks, CursorCallback([act](auto, auto) { return act(); }),
                               &ICursorTracer::ClearAllCallbacks);
                    });
    case 4:
        return Keep(collector.CreateTextReactor(),
                    [](ITextReactor& r, auto act, Callbacks callbacks) {
                        SetOne(r, callbacks, TextCallback([act](const std::wstring&) { act(); }),
                               &ITextReactor::ClearCallback);
                    });
    default:
        return Keep(collector.CreateWindowReactor(Pick<WindowEvent>(5)),
                    [](IWindowReactor& r, auto act, Callbacks callbacks) {
                        SetOne(r, callbacks, WindowEventCallback([act] { act(); }),
                               &IWindowReactor::ClearAllCallbacks);
                    });
    }
}

void EventStream::CheckRegistriesEmpty() {
    // Containers of an input may stay behind empty; no entry may.
    const auto emptyEach = [](const auto& registry) {
        for (const auto& entries : registry)
            if (!entries.second.empty())
                return false;
        return true;
    };
    if (!emptyEach(probe.keyReactors()))
        throw Violation("a key reactor outlived its handles");
    if (!emptyEach(probe.buttonReactors()))
        throw Violation("a button reactor outlived its handles");
    if (!emptyEach(probe.windowReactors()))
        throw Violation("a window reactor outlived its handles");
    if (!probe.modeReactors().empty() || !probe.textReactors().empty() ||
        !probe.cursorTracers().empty())
        throw Violation("a mode reactor, text reactor or cursor tracer outlived its handles");
}

} // namespace Window
