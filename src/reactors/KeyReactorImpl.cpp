#include "reactors/KeyReactorImpl.h"

namespace Window {
namespace {

// Stateless, so a reactor is callable from the start and never consumes by default.
bool NotConsumed(const std::set<Mode>&) {
    return false;
}

} // namespace

KeyReactorImpl::KeyReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel)
    : ReactorID(collector, modalLevel)
    , releaseCallback(NotConsumed)
    , holdCallback(NotConsumed)
    , pressCallback(NotConsumed) {}

// Move-assignment destroys the function the field held before the setter returns.
void KeyReactorImpl::SetReleaseCallback(KeyCallback callback) {
    releaseCallback = std::move(callback);
}

void KeyReactorImpl::SetPressCallback(KeyCallback callback) {
    pressCallback = std::move(callback);
}

void KeyReactorImpl::SetHoldCallback(KeyCallback callback) {
    holdCallback = std::move(callback);
}

void KeyReactorImpl::ClearAllCallbacks() {
    pressCallback = NotConsumed;
    holdCallback = NotConsumed;
    releaseCallback = NotConsumed;
}

} // namespace Window
