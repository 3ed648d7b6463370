#include "reactors/ModeReactorImpl.h"

namespace Window {
namespace {

void Ignore() {}

} // namespace

ModeReactorImpl::ModeReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel)
    : ReactorID(collector, modalLevel)
    , releaseCallback(Ignore)
    , holdCallback(Ignore)
    , pressCallback(Ignore) {}

// Move-assignment destroys the function the field held before the setter returns.
void ModeReactorImpl::SetReleaseCallback(ModeCallback callback) {
    releaseCallback = std::move(callback);
}

void ModeReactorImpl::SetPressCallback(ModeCallback callback) {
    pressCallback = std::move(callback);
}

void ModeReactorImpl::SetHoldCallback(ModeCallback callback) {
    holdCallback = std::move(callback);
}

void ModeReactorImpl::ClearAllCallbacks() {
    pressCallback = Ignore;
    holdCallback = Ignore;
    releaseCallback = Ignore;
}

} // namespace Window
