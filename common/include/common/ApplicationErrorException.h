// SPDX-License-Identifier: Zlib
#pragma once

#include <common/export.h>

#include <exception>
#include <string>

/// What the engine's modules share: the host's service interfaces, which modules find in the
/// instance storage, and the window library's exception.
namespace Common {

/// The window library's one exception: a finished, human-readable message.
///
/// Exported from the library (type information, virtual table, destructor and `what`) so that a
/// host in another module catches it by type, by reference or by value. Only the library makes
/// one, so its constructor stays inside.
/// `what()` is the message; the `std::exception` base holds nothing.
class WINDOW_API ApplicationErrorException : public std::exception {
public:
    /// Keeps `message`. Made only inside the library (not exported); any thread.
    WINDOW_LOCAL explicit ApplicationErrorException(const std::string& message);
    ~ApplicationErrorException() override;

    /// The message's character data; valid as long as the exception object lives.
    const char* what() const noexcept override;

    std::string message; ///< The finished text that `what()` returns.
};

} // namespace Common
