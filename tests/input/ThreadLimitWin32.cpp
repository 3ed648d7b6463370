// SPDX-License-Identifier: Zlib
#include "ThreadLimit.h"

namespace ThreadLimit {

// Windows limits the processes of a job, never the threads of a process: a process cannot forbid
// itself threads.
bool Forbid() {
    return false;
}

bool Allow() {
    return true;
}

} // namespace ThreadLimit
