// SPDX-License-Identifier: Zlib
#include "reactors/ModeReactorImpl.h"

#include "reactors/LentCallback.h"

namespace Window {
namespace {

void Ignore() {}

} // namespace

ModeReactorImpl::ModeReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel)
    : ReactorID(collector, modalLevel)
    , releaseCallback(Ignore)
    , holdCallback(Ignore)
    , pressCallback(Ignore) {}

// A running callback of this reactor keeps its function until its call returns.
ModeReactorImpl::~ModeReactorImpl() {
    DisownCallback(releaseCallback);
    DisownCallback(holdCallback);
    DisownCallback(pressCallback);
}

void ModeReactorImpl::SetReleaseCallback(ModeCallback callback) {
    StoreCallback(releaseCallback, std::move(callback));
}

void ModeReactorImpl::SetPressCallback(ModeCallback callback) {
    StoreCallback(pressCallback, std::move(callback));
}

void ModeReactorImpl::SetHoldCallback(ModeCallback callback) {
    StoreCallback(holdCallback, std::move(callback));
}

void ModeReactorImpl::ClearAllCallbacks() {
    StoreCallback<ModeCallback>(pressCallback, Ignore);
    StoreCallback<ModeCallback>(holdCallback, Ignore);
    StoreCallback<ModeCallback>(releaseCallback, Ignore);
}

} // namespace Window
