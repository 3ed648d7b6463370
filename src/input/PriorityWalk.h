// SPDX-License-Identifier: Zlib
#pragma once

#include <map>

namespace Window {

/// The walk rule shared by keys, buttons and cursor tracers: reactors by ascending priority, ties
/// in creation order; after a call returned true (consumed), the walk ends at the first change of
/// priority, so the rest of a consumer's own group still runs.
///
/// `skip` passes a reactor over without any effect on the walk (the modal level of key
/// reactors); `call` calls one reactor and returns whether it consumed. Null entries are reactors
/// that died during the walk. The next entry is found only after `call` returns, so the walk
/// holds its place in the live registry. Returns true when the stop rule ended the walk.
template <class Reactor, class Skip, class Call>
bool PriorityWalk(const std::multimap<unsigned short, Reactor*>& reactors, Skip skip, Call call) {
    unsigned short lastPriority = 0;
    bool consumed = false;
    for (auto entry = reactors.begin(); entry != reactors.end(); ++entry) {
        Reactor* reactor = entry->second;
        if (reactor == nullptr || skip(*reactor))
            continue;
        if (entry->first != lastPriority && consumed)
            return true;
        if (call(reactor))
            consumed = true;
        lastPriority = entry->first;
    }
    return false;
}

} // namespace Window
