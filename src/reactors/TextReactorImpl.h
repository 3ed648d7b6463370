// SPDX-License-Identifier: Zlib
#pragma once

#include "reactors/ReactorID.h"

#include <window/Reactors.h>

namespace Window {

/// A text reactor: receives each typed text as a wide string, at its own modal level, in the
/// order of ids among text reactors.
class TextReactorImpl : public ReactorID, public ITextReactor {
public:
    void SetCallback(TextCallback callback) override;
    void ClearCallback() override;

private:
    friend class InputCollectorImpl;

    TextReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel);
    ~TextReactorImpl() override;

    TextCallback callback;
};

} // namespace Window
