// SPDX-License-Identifier: Zlib
// A stream of SDL events, made from the input, pushed into SDL's real queue and polled by a real
// collector, whose ticker is fired by hand between pushes. The reactors' callbacks, chosen by the
// input too, create and drop reactors (themselves included), replace or clear callbacks, switch
// text input, push and pop modal levels, and poll again. Besides the sanitizers, two checks: a
// dropped reactor is never called again, and once every reactor is gone no registry holds one.
//
// The input is read as a program: each step takes a few bytes (libFuzzer's FuzzedDataProvider),
// and each callback that runs takes the next bytes for its own action.

#include "CollectorProbe.h"
#include "input/InputCollectorImpl.h"

#include <common/ApplicationErrorException.h>

#include <SDL.h>

#include <InputServices.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <fuzzer/FuzzedDataProvider.h>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace Window;

/// With INPUT_EVENTS_TRACE set, each step and each callback's action is told on stderr: the way
/// to read a reproducer.
void Trace(const char* what, long number = -1) {
    static const bool tracing = std::getenv("INPUT_EVENTS_TRACE") != nullptr;
    if (tracing && number >= 0)
        std::fprintf(stderr, "input_events: %s %ld\n", what, number);
    else if (tracing)
        std::fprintf(stderr, "input_events: %s\n", what);
}

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "input_events: %s\n", what);
    std::abort();
}

/// Keycodes worth choosing often: keys, the modifiers, Backspace (a key even while text input
/// is on) and a key the library does not name.
constexpr SDL_Keycode interestingKeys[] = {SDLK_a,      SDLK_b,        SDLK_BACKSPACE, SDLK_LSHIFT,
                                           SDLK_RSHIFT, SDLK_LCTRL,    SDLK_RALT,      SDLK_ESCAPE,
                                           SDLK_F12,    SDLK_QUOTEDBL, SDLK_SPACE,     SDLK_LGUI};

constexpr Uint8 interestingWindowEvents[] = {SDL_WINDOWEVENT_CLOSE, SDL_WINDOWEVENT_MINIMIZED,
                                             SDL_WINDOWEVENT_MAXIMIZED, SDL_WINDOWEVENT_RESTORED,
                                             SDL_WINDOWEVENT_MOVED};

class Session {
public:
    explicit Session(FuzzedDataProvider& bytes) : bytes(bytes) {}

    ~Session() {
        // Reactors go first: the collector must outlive them.
        pool.clear();
    }

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void Run() {
        while (bytes.remaining_bytes() > 0)
            Guarded([this] { Step(); });
        pool.clear();
        CheckRegistriesEmpty();
    }

private:
    // What a reactor's callbacks are set to: acting ones, the defaults (cleared), or empty
    // functions, which throw when a dispatch reaches them.
    enum class Callbacks { Acting, Defaults, Empty };

    // A reactor of the pool: the pool holds its only handle, so erasing the slot kills it.
    struct Slot {
        int token;
        Zenk::IntrudablePointer<Zenk::Intrudable> handle;
        std::function<void(Callbacks)> set;
    };

    // The collector's documented failures end the step, not the run: an empty text fails to
    // decode, a 256th modal level is refused, an empty callback throws when it is reached.
    template <class Action> static void Guarded(Action action) {
        try {
            action();
        } catch (const Common::ApplicationErrorException&) {
        } catch (const std::bad_function_call&) {
        }
    }

    void Step() {
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

    // --- events ---

    static void Push(SDL_Event& event) {
        if (SDL_PushEvent(&event) != 1)
            Fail("SDL refused an event");
    }

    void PushKey() {
        SDL_Event event{};
        event.type = bytes.ConsumeBool() ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.state = event.type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
        event.key.repeat = bytes.ConsumeIntegralInRange<Uint8>(0, 1);
        event.key.keysym.sym = bytes.ConsumeProbability<float>() < 0.8F
                                   ? bytes.PickValueInArray(interestingKeys)
                                   : bytes.ConsumeIntegral<SDL_Keycode>();
        Push(event);
    }

    void PushText() {
        SDL_Event event{};
        event.type = bytes.ConsumeBool() ? SDL_TEXTINPUT : SDL_TEXTEDITING;
        // SDL's text field holds 32 bytes with its NUL; the bytes may be any, an empty text too.
        const std::string text = bytes.ConsumeRandomLengthString(sizeof event.text.text - 1);
        std::memcpy(event.text.text, text.data(), text.size());
        Push(event);
    }

    void PushMotion() {
        SDL_Event event{};
        event.type = SDL_MOUSEMOTION;
        event.motion.x = bytes.ConsumeIntegral<Sint32>();
        event.motion.y = bytes.ConsumeIntegral<Sint32>();
        Push(event);
    }

    void PushButton() {
        SDL_Event event{};
        event.type = bytes.ConsumeBool() ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.button = bytes.ConsumeIntegralInRange<Uint8>(0, 7);
        event.button.clicks = bytes.ConsumeIntegral<Uint8>();
        Push(event);
    }

    void PushWheel() {
        SDL_Event event{};
        event.type = SDL_MOUSEWHEEL;
        event.wheel.y = bytes.ConsumeIntegral<Sint32>();
        event.wheel.x = bytes.ConsumeIntegral<Sint32>();
        event.wheel.direction =
            bytes.ConsumeBool() ? SDL_MOUSEWHEEL_FLIPPED : SDL_MOUSEWHEEL_NORMAL;
        Push(event);
    }

    void PushWindowEvent() {
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.event = bytes.ConsumeBool() ? bytes.PickValueInArray(interestingWindowEvents)
                                                 : bytes.ConsumeIntegral<Uint8>();
        Push(event);
    }

    // --- the collector's switches ---

    void Tick(int count) {
        // The ticker exists from the first poll on, as with the real frame utility.
        if (!services.frames.tickers.empty())
            services.frames.Tick(count);
    }

    void SwitchTextInput() {
        if (bytes.ConsumeBool())
            collector.StartTextInput();
        else
            collector.StopTextInput();
    }

    void ChangeModalLevel() {
        if (bytes.ConsumeBool())
            collector.PushModalLevel();
        else
            collector.PopModalLevel();
    }

    // --- reactors ---

    // What every callback does: check that it may run, then act as the next bytes say.
    bool Act(int token) {
        if (dead.count(token) != 0)
            Fail("a dropped reactor was called");
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
        case 3:
            // Replaces the running callback.
            WithSlot(token, [](Slot& slot) { slot.set(Callbacks::Acting); });
            break;
        case 4:
            WithSlot(token, [](Slot& slot) { slot.set(Callbacks::Defaults); });
            break;
        case 5:
            if (Slot* other = Chosen())
                other->set(Callbacks::Acting);
            break;
        case 6:
            if (Slot* other = Chosen())
                other->set(Callbacks::Defaults);
            break;
        case 7:
            if (bytes.ConsumeProbability<float>() < 0.2F)
                WithSlot(token, [](Slot& slot) { slot.set(Callbacks::Empty); });
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

    void PollAgain() {
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

    template <class Action> void WithSlot(int token, Action action) {
        for (Slot& slot : pool)
            if (slot.token == token)
                return action(slot);
    }

    Slot* Chosen() {
        if (pool.empty())
            return nullptr;
        return &pool[bytes.ConsumeIntegralInRange<std::size_t>(0, pool.size() - 1)];
    }

    void Drop(std::size_t index) {
        Trace("dropped reactor", pool[index].token);
        dead.insert(pool[index].token);
        Slot slot = std::move(pool[index]);
        pool.erase(pool.begin() + static_cast<std::ptrdiff_t>(index));
        // `slot` dies here, and with it the reactor, unless a walk is calling it right now.
    }

    void DropChosen() {
        if (!pool.empty())
            Drop(bytes.ConsumeIntegralInRange<std::size_t>(0, pool.size() - 1));
    }

    void DropToken(int token) {
        for (std::size_t i = 0; i < pool.size(); ++i)
            if (pool[i].token == token)
                return Drop(i);
    }

    // Keeps the new reactor's only handle; `set` gives its callbacks, now and when asked again.
    template <class Interface, class Set>
    void Keep(Zenk::IntrudablePointer<Interface> handle, Set set) {
        Interface* reactor = handle.Get();
        const int token = nextToken++;
        const auto act = [this, token] { return Act(token); };
        Slot slot{token, std::move(handle),
                  [reactor, set, act](Callbacks callbacks) { set(*reactor, act, callbacks); }};
        slot.set(Callbacks::Acting);
        pool.push_back(std::move(slot));
        Trace("made reactor", token);
    }

    unsigned short Priority() {
        return bytes.ConsumeBool() ? bytes.ConsumeIntegralInRange<unsigned short>(0, 3)
                                   : bytes.ConsumeIntegral<unsigned short>();
    }

    // Enumerations also take values outside their tables, which the library must tolerate.
    template <class Enumeration> Enumeration Pick(std::uint32_t last) {
        return static_cast<Enumeration>(bytes.ConsumeIntegralInRange<std::uint32_t>(0, last));
    }

    // The three callbacks of key, mode and button reactors, set alike.
    template <class Reactor, class Callback>
    static void SetThree(Reactor& reactor, Callbacks callbacks, const Callback& callback) {
        if (callbacks == Callbacks::Defaults)
            return reactor.ClearAllCallbacks();
        const Callback chosen = callbacks == Callbacks::Acting ? callback : Callback();
        reactor.SetPressCallback(chosen);
        reactor.SetHoldCallback(chosen);
        reactor.SetReleaseCallback(chosen);
    }

    void MakeReactor() {
        if (pool.size() >= 64)
            return;
        switch (bytes.ConsumeIntegralInRange<int>(0, 5)) {
        case 0:
            return Keep(collector.CreateKeyReactor(Pick<Key>(80), Priority()),
                        [](IKeyReactor& r, auto act, Callbacks callbacks) {
                            SetThree(r, callbacks, KeyCallback([act](auto) { return act(); }));
                        });
        case 1:
            return Keep(collector.CreateModeReactor(Pick<Mode>(7)),
                        [](IModeReactor& r, auto act, Callbacks callbacks) {
                            SetThree(r, callbacks, ModeCallback([act] { act(); }));
                        });
        case 2:
            return Keep(collector.CreateButtonReactor(Pick<Button>(6), Priority()),
                        [](IButtonReactor& r, auto act, Callbacks callbacks) {
                            SetThree(r, callbacks,
                                     ButtonCallback([act](unsigned int, auto) { return act(); }));
                        });
        case 3:
            return Keep(collector.CreateCursorTracer(Priority()),
                        [](ICursorTracer& r, auto act, Callbacks callbacks) {
                            if (callbacks == Callbacks::Defaults)
                                return r.ClearAllCallbacks();
                            r.SetCallback(callbacks == Callbacks::Acting
                                              ? CursorCallback([act](auto, auto) { return act(); })
                                              : CursorCallback());
                        });
        case 4:
            return Keep(collector.CreateTextReactor(),
                        [](ITextReactor& r, auto act, Callbacks callbacks) {
                            if (callbacks == Callbacks::Defaults)
                                return r.ClearCallback();
                            r.SetCallback(callbacks == Callbacks::Acting
                                              ? TextCallback([act](const std::wstring&) { act(); })
                                              : TextCallback());
                        });
        default:
            return Keep(collector.CreateWindowReactor(Pick<WindowEvent>(5)),
                        [](IWindowReactor& r, auto act, Callbacks callbacks) {
                            if (callbacks == Callbacks::Defaults)
                                return r.ClearAllCallbacks();
                            r.SetCallback(callbacks == Callbacks::Acting
                                              ? WindowEventCallback([act] { act(); })
                                              : WindowEventCallback());
                        });
        }
    }

    void CheckRegistriesEmpty() {
        // Containers of an input may stay behind empty; no entry may.
        for (const auto& entries : probe.keyReactors())
            if (!entries.second.empty())
                Fail("a key reactor outlived its handles");
        for (const auto& entries : probe.buttonReactors())
            if (!entries.second.empty())
                Fail("a button reactor outlived its handles");
        for (const auto& entries : probe.windowReactors())
            if (!entries.second.empty())
                Fail("a window reactor outlived its handles");
        if (!probe.modeReactors().empty() || !probe.textReactors().empty() ||
            !probe.cursorTracers().empty())
            Fail("a mode reactor, text reactor or cursor tracer outlived its handles");
    }

    FuzzedDataProvider& bytes;
    Fakes::InputServices services;
    InputCollectorImpl collector;
    CollectorProbe probe{collector};
    std::vector<Slot> pool;
    std::set<int> dead;
    int nextToken = 0;
    int pollDepth = 0;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    if (SDL_Init(SDL_INIT_VIDEO) != 0)
        Fail(SDL_GetError());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // SDL starts with its own text input on; the collector's switch is what is exercised.
    SDL_StopTextInput();
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    FuzzedDataProvider bytes(data, size);
    Session(bytes).Run();
    return 0;
}
