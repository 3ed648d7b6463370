// SPDX-License-Identifier: Zlib
#include "ThreadLimit.h"

#include <sys/resource.h>
#include <unistd.h>

namespace ThreadLimit {

namespace {

rlimit before{};
bool wasRoot = false;

} // namespace

// A user over its process limit cannot start a thread, and root is only held to the limit while
// it acts as another user. Root acts as "nobody" and keeps root as its saved id, so that it can
// come back: the leak checker needs a thread of its own and the right to read its suppressions
// when the process ends.
bool Forbid() {
    getrlimit(RLIMIT_NPROC, &before);
    wasRoot = geteuid() == 0;
    if (wasRoot && setresuid(65534, 65534, 0) != 0)
        return false;
    const rlimit none{0, before.rlim_max};
    if (setrlimit(RLIMIT_NPROC, &none) == 0)
        return true;
    Allow();
    return false;
}

bool Allow() {
    setrlimit(RLIMIT_NPROC, &before);
    return !wasRoot || setresuid(0, 0, 0) == 0;
}

} // namespace ThreadLimit
