// SPDX-License-Identifier: Zlib
#include "reactors/ButtonReactorImpl.h"

#include "reactors/LentCallback.h"

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

// A running callback of this reactor keeps its function until its call returns.
ButtonReactorImpl::~ButtonReactorImpl() {
    DisownCallback(releaseCallback);
    DisownCallback(holdCallback);
    DisownCallback(pressCallback);
}

void ButtonReactorImpl::SetPressCallback(ButtonCallback callback) {
    StoreCallback(pressCallback, std::move(callback));
}

void ButtonReactorImpl::SetReleaseCallback(ButtonCallback callback) {
    StoreCallback(releaseCallback, std::move(callback));
}

void ButtonReactorImpl::SetHoldCallback(ButtonCallback callback) {
    StoreCallback(holdCallback, std::move(callback));
}

// The reverse of the key reactor's order: release first.
void ButtonReactorImpl::ClearAllCallbacks() {
    StoreCallback<ButtonCallback>(releaseCallback, NotConsumed);
    StoreCallback<ButtonCallback>(holdCallback, NotConsumed);
    StoreCallback<ButtonCallback>(pressCallback, NotConsumed);
}

} // namespace Window
