#pragma once

#include <zenkbase/intrudable_pointer.h>

#include <utility>

namespace Window {

/// One call of a reactor's callback, made safe against what the callback may do to its reactor.
///
/// For the length of the call the reactor is pinned by a counted handle, so dropping its last
/// handle inside the callback destroys it only after the callback has returned. The callback is
/// lent out of its field into this object, so a setter or a clear inside the callback does not
/// destroy the function that is running; meanwhile the field holds a stand-in that forwards to
/// the lent function, so a nested dispatch that reaches the same reactor (a tracer's callback
/// that polls again) still calls it. When the call ends, the function goes back into its field
/// unless the callback stored something else there meanwhile, an empty function included; the
/// lent one is then destroyed here, after the call, not inside the setter.
template <class Reactor, class Function> class LentCallback {
public:
    LentCallback(Reactor* reactor, Function Reactor::*field) : pin(reactor), field(field) {
        Function& slot = reactor->*field;
        function.swap(slot);
        slot = Forward{&function}; // one pointer: stored in place, nothing allocated
    }

    ~LentCallback() {
        Function& slot = pin.Get()->*field;
        const Forward* standIn = slot.template target<Forward>();
        if (standIn != nullptr && standIn->lent == &function)
            slot.swap(function);
    }

    LentCallback(const LentCallback&) = delete;
    LentCallback& operator=(const LentCallback&) = delete;

    /// Calls the lent function; an empty one throws std::bad_function_call.
    template <class... Arguments> decltype(auto) operator()(Arguments&&... arguments) {
        return function(std::forward<Arguments>(arguments)...);
    }

private:
    struct Forward {
        Function* lent;
        template <class... Arguments> decltype(auto) operator()(Arguments&&... arguments) const {
            return (*lent)(std::forward<Arguments>(arguments)...);
        }
    };

    Zenk::IntrudablePointer<Reactor> pin;
    Function Reactor::*field;
    Function function;
};

} // namespace Window
