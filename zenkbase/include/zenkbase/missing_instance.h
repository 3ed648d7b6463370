// SPDX-License-Identifier: Zlib
#pragma once

#include <zenkbase/export.h>

#include <string>

namespace Zenk {

/// Thrown when a module asks the instance storage for a service that no host has registered.
///
/// Deliberately not a `std::exception`: a `catch (const std::exception&)` does not see it, so
/// a missing service cannot be mistaken for an ordinary failure and swallowed. The text is
/// always the same; the type of the missing service is not part of it.
struct ZENK_API MissingInstance {
    /// Always this text; it names no service.
    std::string message{"ERROR: zenkbase\\singleton:__LINE__ No instance!"};
};

} // namespace Zenk
