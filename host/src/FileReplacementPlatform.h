// SPDX-License-Identifier: Zlib
#pragma once

#include "FileReplacement.h"

#include <filesystem>
#include <string>
#include <system_error>

/// What file replacement asks of the operating system. FileReplacement.cpp holds what is the same
/// everywhere; exactly one of FileReplacementPosix.cpp and FileReplacementWin32.cpp, chosen by
/// CMake, defines the functions below and `ReplaceContent` of FileReplacement.h, whose steps
/// (how a temporary file is made, flushed and given the old mode) have no portable common part
/// worth the indirection. Neither platform file tests which system it is built for.
namespace Host::Detail {

/// `path` in double quotes, with what a terminal would not show escaped. Portable.
std::string Quoted(const std::filesystem::path& path);

/// "<what> "<file>": <the system's words for `code`>", the reason of a write failure. Portable.
std::string SystemReason(const std::string& what, const std::filesystem::path& file,
                         std::error_code code);

/// Opens (making it if need be) the lock file `name` beside `target` and blocks until this
/// process holds it exclusively. Throws the `WriteFailure` of `shown` when the file cannot be
/// opened or locked, having closed what it opened. Platform.
LockHandle OpenLocked(const std::filesystem::path& shown, const std::filesystem::path& target,
                      const std::filesystem::path& name);

/// Releases the lock of `OpenLocked` and closes its file. Platform.
void CloseLocked(LockHandle lock) noexcept;

} // namespace Host::Detail
