#include "reactors/TextReactorImpl.h"

namespace Window {
namespace {

void Ignore(const std::wstring&) {}

} // namespace

TextReactorImpl::TextReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel)
    : ReactorID(collector, modalLevel)
    , callback(Ignore) {}

void TextReactorImpl::SetCallback(TextCallback callback) {
    this->callback = std::move(callback);
}

void TextReactorImpl::ClearCallback() {
    callback = Ignore;
}

} // namespace Window
