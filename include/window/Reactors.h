#pragma once

#include <window/InputVocabulary.h>
#include <zenkbase/intrudable.h>
#include <zenkbase/two_dimensional_coordinate.h>

#include <functional>
#include <set>
#include <string>

// The reactors: small objects through which the engine asks to be called back on input.
//
// A reactor is made by the input collector (`SInputCollector::Create...`) and handed out as a
// `Zenk::IntrudablePointer`; it unregisters itself when its last handle goes. Callbacks are
// stored by value and called on the ticker's thread (cursor tracers: on the thread that calls
// `QueryInputEvents`). A `bool` result of true means "consumed": reactors of a later priority
// are not called for that event. Setters and clearing must not overlap a dispatch, so call them
// on the engine's input thread or from inside a callback. A new reactor, and every callback
// after clearing, has a default that does nothing and returns false. Storing an empty
// std::function makes the next dispatch that reaches it throw std::bad_function_call.
//
// A callback may create reactors and drop any reactor, its own included, and replace its own
// callbacks; a replaced function that is running is destroyed when it returns. What a callback
// captures must not poll or tick from its destructor: a reactor's callbacks are destroyed
// before it leaves the registries.

namespace Window {

using KeyCallback = std::function<bool(std::set<Mode>)>;
using ModeCallback = std::function<void()>;
using ButtonCallback = std::function<bool(unsigned int, std::set<Mode>)>;
using CursorCallback = std::function<bool(Zenk::two_dimensional_coordinate<short>, std::set<Mode>)>;
using TextCallback = std::function<void(const std::wstring&)>;
using WindowEventCallback = std::function<void()>;

/// Reacts to one `Key`, at the modal level current when it was made.
struct IKeyReactor : Zenk::Intrudable {
    /// The key went up.
    virtual void SetReleaseCallback(KeyCallback callback) = 0;
    /// The key went down (system key repeat does not call it again).
    virtual void SetPressCallback(KeyCallback callback) = 0;
    /// Once per tick while the key is held, from the tick of the press on.
    virtual void SetHoldCallback(KeyCallback callback) = 0;
    /// Restores the three defaults; the reactor keeps its place.
    virtual void ClearAllCallbacks() = 0;
};

/// Reacts to one modifier key, at the modal level current when it was made. Cannot consume.
struct IModeReactor : Zenk::Intrudable {
    virtual void SetReleaseCallback(ModeCallback callback) = 0;
    virtual void SetPressCallback(ModeCallback callback) = 0;
    virtual void SetHoldCallback(ModeCallback callback) = 0;
    virtual void ClearAllCallbacks() = 0;
};

/// Reacts to one mouse button or wheel direction, at every modal level. The number is always 1.
/// Wheel directions call the press callback only, once per wheel event.
struct IButtonReactor : Zenk::Intrudable {
    virtual void SetPressCallback(ButtonCallback callback) = 0;
    virtual void SetReleaseCallback(ButtonCallback callback) = 0;
    virtual void SetHoldCallback(ButtonCallback callback) = 0;
    virtual void ClearAllCallbacks() = 0;
};

/// Follows the cursor at every modal level; called at once from `QueryInputEvents`.
struct ICursorTracer : Zenk::Intrudable {
    virtual void SetCallback(CursorCallback callback) = 0;
    virtual void ClearAllCallbacks() = 0;
    /// The position last delivered to this tracer (0, 0 before the first); asks nobody.
    virtual Zenk::two_dimensional_coordinate<short> GetPosition() = 0;
};

/// Receives typed text while text input is on, at the modal level current when it was made.
/// The string belongs to the dispatch: copy what you keep.
struct ITextReactor : Zenk::Intrudable {
    virtual void SetCallback(TextCallback callback) = 0;
    virtual void ClearCallback() = 0;
};

/// Hears of one `WindowEvent`, at every modal level.
struct IWindowReactor : Zenk::Intrudable {
    virtual void SetCallback(WindowEventCallback callback) = 0;
    virtual void ClearAllCallbacks() = 0;
};

} // namespace Window
