#include "reactors/ButtonReactorImpl.h"

namespace Window {
namespace {

bool NotConsumed(unsigned int, const std::set<Mode>&) {
    return false;
}

} // namespace

ButtonReactorImpl::ButtonReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel)
    : ReactorID(collector, modalLevel)
    , releaseCallback(NotConsumed)
    , holdCallback(NotConsumed)
    , pressCallback(NotConsumed) {}

void ButtonReactorImpl::SetPressCallback(ButtonCallback callback) {
    pressCallback = std::move(callback);
}

void ButtonReactorImpl::SetReleaseCallback(ButtonCallback callback) {
    releaseCallback = std::move(callback);
}

void ButtonReactorImpl::SetHoldCallback(ButtonCallback callback) {
    holdCallback = std::move(callback);
}

// The reverse of the key reactor's order: release first.
void ButtonReactorImpl::ClearAllCallbacks() {
    releaseCallback = NotConsumed;
    holdCallback = NotConsumed;
    pressCallback = NotConsumed;
}

} // namespace Window
