// SPDX-License-Identifier: Zlib
// Taking a dying reactor out of the registries. The caller knows only the id, so all six
// registries are searched at once, one task each; no two tasks share a registry, which is why no
// lock is needed. While a dispatch walk runs, entries are nulled instead of erased (see the class
// comment) and the outermost walk erases them when it ends.

#include "input/InputCollectorImpl.h"
#include "reactors/ButtonReactorImpl.h"
#include "reactors/CursorTracerImpl.h"
#include "reactors/KeyReactorImpl.h"
#include "reactors/ModeReactorImpl.h"
#include "reactors/TextReactorImpl.h"
#include "reactors/WindowReactorImpl.h"

#include <algorithm>
#include <future>

namespace Window {
namespace {

// Multimap registries: the first entry of `id` is erased, or nulled while a walk runs.
template <class Multimap> bool RemoveFromMultimap(Multimap& entries, long long id, bool walking) {
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        if (entry->second == nullptr || entry->second->id != id)
            continue;
        if (walking)
            entry->second = nullptr;
        else
            entries.erase(entry);
        return true;
    }
    return false;
}

// Vector registries: the later entries move up one place, so the order of the others stays.
template <class Vector> bool RemoveFromVector(Vector& entries, long long id, bool walking) {
    const auto found = std::find_if(entries.begin(), entries.end(), [id](const auto* reactor) {
        return reactor != nullptr && reactor->id == id;
    });
    if (found == entries.end())
        return false;
    if (walking)
        *found = nullptr;
    else
        entries.erase(found);
    return true;
}

// Registries keyed by input: search every inner container in the outer map's order. A key whose
// container the removal empties leaves the map; an empty container that was there before stays.
template <class Outer, class RemoveInner>
bool RemoveNested(Outer& outer, long long id, bool walking, RemoveInner removeInner) {
    for (auto entry = outer.begin(); entry != outer.end(); ++entry) {
        if (!removeInner(entry->second, id, walking))
            continue;
        if (entry->second.empty())
            outer.erase(entry);
        return true;
    }
    return false;
}

// Erases nulled entries; a container emptied by that leaves its outer map.
template <class Container> bool EraseDead(Container& entries) {
    const auto before = entries.size();
    if constexpr (std::is_pointer_v<typename Container::value_type>) {
        entries.erase(std::remove(entries.begin(), entries.end(), nullptr), entries.end());
    } else {
        for (auto entry = entries.begin(); entry != entries.end();)
            entry = entry->second == nullptr ? entries.erase(entry) : std::next(entry);
    }
    return entries.size() != before;
}

template <class Outer> void EraseDeadNested(Outer& outer) {
    for (auto entry = outer.begin(); entry != outer.end();) {
        const bool erased = EraseDead(entry->second);
        entry = erased && entry->second.empty() ? outer.erase(entry) : std::next(entry);
    }
}

} // namespace

void InputCollectorImpl::RemoveReactor(long long id) {
    // Each task starts at once on a worker thread. The futures are destroyed in reverse order
    // when this scope ends, each waiting for its task; that is the only wait. Should a start
    // fail, the unwinding waits for the tasks already started, and the rest never run.
    const auto start = [this, id](Registry registry) {
        return std::async(std::launch::async, [this, id, registry] { RemoveFrom(registry, id); });
    };
    const std::future<void> cursors = start(Cursors);
    const std::future<void> texts = start(Texts);
    const std::future<void> keys = start(Keys);
    const std::future<void> windows = start(Windows);
    const std::future<void> buttons = start(Buttons);
    const std::future<void> modes = start(Modes);
}

void InputCollectorImpl::RemoveReactorInPlace(long long id) noexcept {
    for (const Registry registry : {Cursors, Texts, Keys, Windows, Buttons, Modes})
        RemoveFrom(registry, id);
}

void InputCollectorImpl::RemoveFrom(Registry registry, long long id) noexcept {
    const bool walking = walkDepth > 0;
    bool found = false;
    switch (registry) {
    case Cursors:
        found = RemoveFromMultimap(cursorTracers, id, walking);
        break;
    case Texts: {
        // The only registry searched by its key.
        const auto entry = textReactors.find(id);
        found = entry != textReactors.end() && entry->second != nullptr;
        if (found) {
            if (walking)
                entry->second = nullptr;
            else
                textReactors.erase(entry);
        }
        break;
    }
    case Keys:
        found = RemoveNested(keyReactors, id, walking,
                             RemoveFromMultimap<std::multimap<unsigned short, KeyReactorImpl*>>);
        break;
    case Windows:
        found = RemoveNested(windowReactors, id, walking,
                             RemoveFromVector<std::vector<WindowReactorImpl*>>);
        break;
    case Buttons:
        found = RemoveNested(buttonReactors, id, walking,
                             RemoveFromMultimap<std::multimap<unsigned short, ButtonReactorImpl*>>);
        break;
    case Modes:
        found = RemoveNested(modeReactors, id, walking,
                             RemoveFromVector<std::vector<ModeReactorImpl*>>);
        break;
    case RegistryCount:
        break;
    }
    if (found && walking)
        tombstones[registry] = true;
}

void InputCollectorImpl::Compact() noexcept {
    if (tombstones[Cursors])
        EraseDead(cursorTracers);
    if (tombstones[Texts])
        EraseDead(textReactors);
    if (tombstones[Keys])
        EraseDeadNested(keyReactors);
    if (tombstones[Windows])
        EraseDeadNested(windowReactors);
    if (tombstones[Buttons])
        EraseDeadNested(buttonReactors);
    if (tombstones[Modes])
        EraseDeadNested(modeReactors);
    tombstones.fill(false);
}

} // namespace Window
