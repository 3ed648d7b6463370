// SPDX-License-Identifier: Zlib
#include "WalkTrace.h"

#include <algorithm>

namespace InputLab {

WalkTrace::Id WalkTrace::Register(std::string kind, std::string name, std::string owner,
                                  unsigned short priority, std::optional<unsigned char> level) {
    entries.push_back({std::move(kind), std::move(name), std::move(owner), priority, level});
    return entries.size() - 1;
}

std::vector<WalkTrace::Id> WalkTrace::Order(Id id) const {
    std::vector<Id> order;
    for (Id other = 0; other < entries.size(); ++other)
        if (entries[other].kind == entries[id].kind && entries[other].name == entries[id].name)
            order.push_back(other);
    // Ascending priority, ties in creation order: ids grow with creation.
    std::stable_sort(order.begin(), order.end(),
                     [this](Id a, Id b) { return entries[a].priority < entries[b].priority; });
    return order;
}

void WalkTrace::Called(Id id, const char* action, bool consumed) {
    const Entry& entry = entries.at(id);
    // A walk visits each reactor once, in order: a call of another event, another action or a
    // reactor no later than the last one called belongs to the next walk.
    bool sameWalk = !calls.empty() && this->action == action;
    if (sameWalk) {
        const Entry& last = entries[calls.back().id];
        const auto order = Order(id);
        const auto position = [&order](Id which) {
            return std::find(order.begin(), order.end(), which) - order.begin();
        };
        sameWalk = last.kind == entry.kind && last.name == entry.name &&
                   position(calls.back().id) < position(id);
    }
    if (!sameWalk) {
        calls.clear();
        this->action = action;
        const std::string subject = entry.kind + ' ' + entry.name;
        const auto found = std::find(held.begin(), held.end(), subject);
        if (this->action == "press" && found == held.end())
            held.push_back(subject);
        else if (this->action == "release" && found != held.end())
            held.erase(found);
    }
    calls.push_back({id, consumed, modalLevel});
}

std::optional<Walk> WalkTrace::LastWalk() const {
    if (calls.empty())
        return std::nullopt;
    const Entry& first = entries[calls.front().id];
    Walk walk;
    walk.event = first.kind + ' ' + action + ' ' + first.name;
    if (first.level)
        walk.level = calls.front().level;
    bool consumed = false;
    auto next = calls.begin(); // the next call in the library's order
    for (const Id id : Order(calls.front().id)) {
        const Entry& entry = entries[id];
        WalkStep step{entry.owner, entry.priority, entry.level, WalkStep::Fate::NotReached};
        if (next != calls.end() && next->id == id) {
            step.fate = next->consumed ? WalkStep::Fate::Consumed : WalkStep::Fate::PassedOn;
            consumed = consumed || next->consumed;
            ++next;
        } else {
            // Nothing runs between this reactor and the next call, so the level then was the
            // level when the walk passed here; after the last call, it is the level now.
            const unsigned char level = next != calls.end() ? next->level : modalLevel;
            if (entry.level && *entry.level != level)
                step.fate = WalkStep::Fate::OtherLevel;
            else if (consumed)
                walk.stopped = true;
        }
        walk.steps.push_back(std::move(step));
    }
    return walk;
}

std::string WalkTrace::FateText(const WalkStep& step) {
    switch (step.fate) {
    case WalkStep::Fate::Consumed:
        return "consumed";
    case WalkStep::Fate::PassedOn:
        return "passed on";
    case WalkStep::Fate::OtherLevel:
        return "passed over: answers at level " + std::to_string(step.level.value_or(0));
    case WalkStep::Fate::NotReached:
        break;
    }
    return "not reached";
}

} // namespace InputLab
