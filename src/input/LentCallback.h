#pragma once

#include <zenkbase/intrudable_pointer.h>

#include <utility>

namespace Window {

/// One call of a reactor's callback, made safe against what the callback may do to its reactor.
///
/// For the length of the call the reactor is pinned by a counted handle, so dropping its last
/// handle inside the callback destroys it only after the callback has returned; and the callback
/// is lent out of its field into this object, so a setter or a clear inside the callback does not
/// destroy the function that is running. When the call ends the function goes back into its
/// field, unless the callback stored a new one meanwhile (then the lent one is destroyed here).
/// A field that was empty stays empty, and calling it throws std::bad_function_call.
template <class Reactor, class Function> class LentCallback {
public:
    LentCallback(Reactor* reactor, Function Reactor::*field) noexcept : pin(reactor), field(field) {
        function.swap(reactor->*field);
    }

    ~LentCallback() {
        Function& slot = pin.Get()->*field;
        if (!slot)
            slot.swap(function);
    }

    LentCallback(const LentCallback&) = delete;
    LentCallback& operator=(const LentCallback&) = delete;

    template <class... Arguments> decltype(auto) operator()(Arguments&&... arguments) {
        return function(std::forward<Arguments>(arguments)...);
    }

private:
    Zenk::IntrudablePointer<Reactor> pin;
    Function Reactor::*field;
    Function function;
};

} // namespace Window
