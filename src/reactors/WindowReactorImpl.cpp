// SPDX-License-Identifier: Zlib
#include "reactors/WindowReactorImpl.h"

#include "reactors/LentCallback.h"

namespace Window {
namespace {

void Ignore() {}

} // namespace

WindowReactorImpl::WindowReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel)
    : ReactorID(collector, modalLevel)
    , callback(Ignore) {}

// A running callback of this reactor keeps its function until its call returns.
WindowReactorImpl::~WindowReactorImpl() {
    DisownCallback(callback);
}

void WindowReactorImpl::SetCallback(WindowEventCallback callback) {
    StoreCallback(this->callback, std::move(callback));
}

void WindowReactorImpl::ClearAllCallbacks() {
    StoreCallback<WindowEventCallback>(callback, Ignore);
}

} // namespace Window
