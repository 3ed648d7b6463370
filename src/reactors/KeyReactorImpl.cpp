// SPDX-License-Identifier: Zlib
#include "reactors/KeyReactorImpl.h"

#include "reactors/LentCallback.h"

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

// A running callback of this reactor keeps its function until its call returns.
KeyReactorImpl::~KeyReactorImpl() {
    DisownCallback(releaseCallback);
    DisownCallback(holdCallback);
    DisownCallback(pressCallback);
}

void KeyReactorImpl::SetReleaseCallback(KeyCallback callback) {
    StoreCallback(releaseCallback, std::move(callback));
}

void KeyReactorImpl::SetPressCallback(KeyCallback callback) {
    StoreCallback(pressCallback, std::move(callback));
}

void KeyReactorImpl::SetHoldCallback(KeyCallback callback) {
    StoreCallback(holdCallback, std::move(callback));
}

void KeyReactorImpl::ClearAllCallbacks() {
    StoreCallback<KeyCallback>(pressCallback, NotConsumed);
    StoreCallback<KeyCallback>(holdCallback, NotConsumed);
    StoreCallback<KeyCallback>(releaseCallback, NotConsumed);
}

} // namespace Window
