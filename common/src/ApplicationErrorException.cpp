// SPDX-License-Identifier: Zlib
#include <common/ApplicationErrorException.h>

namespace Common {

ApplicationErrorException::ApplicationErrorException(const std::string& message)
    : message(message) {}

// Out of line on purpose: this is the key function, so the type information and virtual table
// live in the window library alone and every module that catches the type compares against them.
ApplicationErrorException::~ApplicationErrorException() = default;

const char* ApplicationErrorException::what() const noexcept {
    return message.c_str();
}

} // namespace Common
