// SPDX-License-Identifier: Zlib
#pragma once

// Forbidding a process to start threads, so that the paths taken when a worker thread cannot
// start are reached. One source per platform (ThreadLimitPosix.cpp, ThreadLimitWin32.cpp).

namespace ThreadLimit {

/// Forbids this process to start new threads; false when the platform or the process's rights
/// do not allow it (nothing is changed then). Call from the main thread, at most once at a time.
bool Forbid();

/// Lets the process start threads again after a successful `Forbid`; false when it could not
/// regain everything that `Forbid` gave up.
bool Allow();

} // namespace ThreadLimit
