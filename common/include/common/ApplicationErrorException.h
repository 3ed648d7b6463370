#pragma once

#include <common/export.h>

#include <exception>
#include <string>

namespace Common {

/// The window library's one exception: a finished, human-readable message.
///
/// Exported from the library (type information and virtual table) so that a host in another
/// module catches it by type; its functions stay inside, so a host catches it by reference.
/// `what()` is the message; the `std::exception` base holds nothing.
class WINDOW_API ApplicationErrorException : public std::exception {
public:
    WINDOW_LOCAL explicit ApplicationErrorException(const std::string& message);
    WINDOW_LOCAL ~ApplicationErrorException() override;

    /// The message's character data; valid as long as the exception object lives.
    WINDOW_LOCAL const char* what() const noexcept override;

    std::string message;
};

} // namespace Common
