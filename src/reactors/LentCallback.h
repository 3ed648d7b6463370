// SPDX-License-Identifier: Zlib
#pragma once

#include <cassert>
#include <new>
#include <utility>

// The re-entry protocol lives with the reactors, whose callback fields it lends: the collector's
// dispatch reaches it here, as it reaches the reactors themselves, and a reactor needs nothing
// from the collector's folder but the removal that its destructor asks for.

namespace Window {

/// One call of a reactor's callback, made safe against whatever the callback does meanwhile:
/// drop its reactor or any other, store a new or an empty function in its own field or in
/// another's, make reactors, poll again, or change the modal level.
///
/// The function is lent: moved out of its field into this frame, and called here, so that it
/// lives until the call returns whatever becomes of the field or of the reactor. While it is
/// lent, the field holds a stand-in that forwards to it: a nested dispatch that reaches the same
/// field (a tracer's callback that polls again) calls the running function.
///
/// Afterwards the function goes back into its field, unless the field let go of the stand-in:
/// a setter or a clear stored something else (`StoreCallback`), or the reactor is dying
/// (`DisownCallback` in its destructor, before its fields go). Either tells the frame through the
/// stand-in, so nothing is pinned and the frame never asks the reactor whether it still exists;
/// the lent function is then destroyed here, after the call. A frame that had lent another
/// frame's stand-in (the same field reached again by a nested dispatch) passes the news on.
///
/// On the path of an event this costs two moves of the function and the placing of the
/// stand-in, a few plain stores each; no atomic, no allocation, no call besides the callback.
template <class Function> class LentCallback {
public:
    explicit LentCallback(Function& slot) : slot(slot), function(std::move(slot)) {
        // Not a use after the move: the moved-from state holds nothing, so this frees nothing,
        // and its storage takes the stand-in.
        slot.~Function(); // NOLINT(bugprone-use-after-move)
        try {
            ::new (&slot) Function(StandIn{this}); // one pointer: stored in place in practice
        } catch (...) {
            ::new (&slot) Function(std::move(function));
            throw;
        }
    }

    ~LentCallback() {
        if (disowned) {
            Disown(function); // an outer frame's stand-in, lent by a nested dispatch: tell it
            return;
        }
        assert(slot.template target<StandIn>() != nullptr &&
               slot.template target<StandIn>()->frame == this);
        // The stand-in is trivially destructible: its storage is reused without destroying it.
        ::new (&slot) Function(std::move(function));
    }

    LentCallback(const LentCallback&) = delete;
    LentCallback& operator=(const LentCallback&) = delete;

    /// Calls the lent function; an empty one throws std::bad_function_call.
    template <class... Arguments> decltype(auto) operator()(Arguments&&... arguments) {
        return function(std::forward<Arguments>(arguments)...);
    }

    /// Tells the frame whose stand-in `field` holds, if any, that the field lets go of it.
    static void Disown(Function& field) noexcept {
        if (StandIn* standIn = field.template target<StandIn>())
            standIn->frame->disowned = true;
    }

private:
    struct StandIn {
        LentCallback* frame;
        template <class... Arguments> decltype(auto) operator()(Arguments&&... arguments) const {
            return frame->function(std::forward<Arguments>(arguments)...);
        }
    };

    Function& slot;
    Function function;
    bool disowned = false;
};

/// Stores `value` in a reactor's callback field. The function the field held is destroyed before
/// this returns, unless it is running: then it dies when its call returns. Every setter and clear
/// stores through this.
template <class Function> void StoreCallback(Function& field, Function value) noexcept {
    LentCallback<Function>::Disown(field);
    field = std::move(value);
}

/// Called by a reactor's destructor for each callback field before the fields are destroyed, so
/// that a running callback's frame knows that its field is gone.
template <class Function> void DisownCallback(Function& field) noexcept {
    LentCallback<Function>::Disown(field);
}

} // namespace Window
