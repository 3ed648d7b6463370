// SPDX-License-Identifier: Zlib
#pragma once

#include <window/InputVocabulary.h>
#include <zenkbase/intrudable.h>
#include <zenkbase/two_dimensional_coordinate.h>

#include <functional>
#include <set>
#include <string>

/// \file
/// The reactors: small objects through which the engine asks to be called back on input.
///
/// The input collector makes them (`SInputCollector::Create...`) and hands them out as
/// `Zenk::IntrudablePointer`s; a reactor unregisters itself when its last handle goes. A new
/// reactor, and each callback after clearing, has a default that does nothing and consumes
/// nothing. Every operation of a reactor is called on the input thread (the one that calls
/// `QueryInputEvents` and runs the ticks) or inside a callback, and throws nothing. A setter keeps
/// its function until it is replaced or cleared; the one it replaces is destroyed before the
/// setter returns, or, if it is running, when it returns.
///
/// What "consumed" means, which tick calls which callback, in which order and on which thread,
/// and what a callback may do: the page \ref reactors (docs/reactors.md).

namespace Window {

/// A key's press, hold or release, with the modifiers held then (the callback's own copy).
/// Returns true when it consumed the event.
using KeyCallback = std::function<bool(std::set<Mode>)>;
/// A modifier's press, hold or release. Cannot consume.
using ModeCallback = std::function<void()>;
/// A mouse button's press, hold or release, or a wheel pulse, with the number 1 (always) and the
/// modifiers held then (the callback's own copy). Returns true when it consumed the event.
using ButtonCallback = std::function<bool(unsigned int, std::set<Mode>)>;
/// A cursor motion, with the new position in window pixels and the modifiers held then (the
/// callback's own copy). Returns true when it consumed the motion.
using CursorCallback = std::function<bool(Zenk::two_dimensional_coordinate<short>, std::set<Mode>)>;
/// The text of one text-input event, decoded from UTF-8 (UTF-16 code units on Windows). The string
/// belongs to the dispatch: copy what you keep.
using TextCallback = std::function<void(const std::wstring&)>;
/// A window event happened. Cannot consume.
using WindowEventCallback = std::function<void()>;

/// Reacts to one `Key`, at the modal level current when it was made.
struct IKeyReactor : Zenk::Intrudable {
    /// Sets what runs when the key goes up.
    virtual void SetReleaseCallback(KeyCallback callback) = 0;
    /// Sets what runs when the key goes down; system key repeat does not call it again.
    virtual void SetPressCallback(KeyCallback callback) = 0;
    /// Sets what runs once per tick while the key is held, from the tick of the press on.
    virtual void SetHoldCallback(KeyCallback callback) = 0;
    /// Restores the three defaults (return false); the reactor keeps its place, level and id.
    virtual void ClearAllCallbacks() = 0;
};

/// Reacts to one modifier key, at the modal level current when it was made. Cannot consume.
struct IModeReactor : Zenk::Intrudable {
    /// Sets what runs when the modifier goes up.
    virtual void SetReleaseCallback(ModeCallback callback) = 0;
    /// Sets what runs when the modifier goes down; system key repeat does not call it again.
    virtual void SetPressCallback(ModeCallback callback) = 0;
    /// Sets what runs once per tick while the modifier is held, from the tick of the press on.
    virtual void SetHoldCallback(ModeCallback callback) = 0;
    /// Restores the three defaults (do nothing); the reactor keeps its place, level and id.
    virtual void ClearAllCallbacks() = 0;
};

/// Reacts to one mouse button or wheel direction, at every modal level. The number is always 1.
/// Wheel directions call the press callback only, once per wheel event.
struct IButtonReactor : Zenk::Intrudable {
    /// Sets what runs when the button goes down, or for each wheel event in its direction.
    virtual void SetPressCallback(ButtonCallback callback) = 0;
    /// Sets what runs when the button goes up; never for a wheel direction.
    virtual void SetReleaseCallback(ButtonCallback callback) = 0;
    /// Sets what runs once per tick while the button is held; never for a wheel direction.
    virtual void SetHoldCallback(ButtonCallback callback) = 0;
    /// Restores the three defaults (return false); the reactor keeps its place and id.
    virtual void ClearAllCallbacks() = 0;
};

/// Follows the cursor at every modal level; called at once from `QueryInputEvents`.
struct ICursorTracer : Zenk::Intrudable {
    /// Sets what runs for each cursor motion that reaches this tracer.
    virtual void SetCallback(CursorCallback callback) = 0;
    /// Restores the default (return false); the tracer keeps its place and goes on recording
    /// the position.
    virtual void ClearAllCallbacks() = 0;
    /// The position last delivered to this tracer (0, 0 before the first), already the new one
    /// inside its callback; asks nobody.
    virtual Zenk::two_dimensional_coordinate<short> GetPosition() = 0;
};

/// Receives typed text while text input is on, at the modal level current when it was made.
/// The string belongs to the dispatch: copy what you keep.
struct ITextReactor : Zenk::Intrudable {
    /// Sets what runs for each piece of typed text.
    virtual void SetCallback(TextCallback callback) = 0;
    /// Restores the default (do nothing); the reactor keeps its place, level and id.
    virtual void ClearCallback() = 0;
};

/// Hears of one `WindowEvent`, at every modal level.
struct IWindowReactor : Zenk::Intrudable {
    /// Sets what runs each time the event happens.
    virtual void SetCallback(WindowEventCallback callback) = 0;
    /// Restores the default (do nothing); the reactor keeps its place and id.
    virtual void ClearAllCallbacks() = 0;
};

} // namespace Window
