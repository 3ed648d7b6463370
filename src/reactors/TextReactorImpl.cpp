// SPDX-License-Identifier: Zlib
#include "reactors/TextReactorImpl.h"

#include "reactors/LentCallback.h"

namespace Window {
namespace {

void Ignore(const std::wstring&) {}

} // namespace

TextReactorImpl::TextReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel)
    : ReactorID(collector, modalLevel)
    , callback(Ignore) {}

// A running callback of this reactor keeps its function until its call returns.
TextReactorImpl::~TextReactorImpl() {
    DisownCallback(callback);
}

void TextReactorImpl::SetCallback(TextCallback callback) {
    StoreCallback(this->callback, std::move(callback));
}

void TextReactorImpl::ClearCallback() {
    StoreCallback<TextCallback>(callback, Ignore);
}

} // namespace Window
