#include "reactors/WindowReactorImpl.h"

namespace Window {
namespace {

void Ignore() {}

} // namespace

WindowReactorImpl::WindowReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel)
    : ReactorID(collector, modalLevel)
    , callback(Ignore) {}

void WindowReactorImpl::SetCallback(WindowEventCallback callback) {
    this->callback = std::move(callback);
}

void WindowReactorImpl::ClearAllCallbacks() {
    callback = Ignore;
}

} // namespace Window
