// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace InputLab {

/// One reactor of a walk and what became of it.
struct WalkStep {
    enum class Fate {
        Consumed,   ///< called, and it returned true
        PassedOn,   ///< called, and it returned false
        OtherLevel, ///< passed over: it answers at another modal level than the walk's
        NotReached, ///< not called: the walk had stopped before it
    };

    std::string owner;
    unsigned short priority = 0;
    /// The modal level it answers at; none for reactors that answer at every level (buttons).
    std::optional<unsigned char> level;
    Fate fate = Fate::NotReached;
};

/// How the library walked the reactors of one key or button event, in the library's order
/// (priority, then creation).
struct Walk {
    std::string event; ///< "key press Down"
    /// The modal level the walk ran at; none for buttons, which answer at every level.
    std::optional<unsigned char> level;
    std::vector<WalkStep> steps;
    /// True when a consumer ended the walk before reactors of a later priority.
    bool stopped = false;
};

/// The priority walks of key and button events, pieced together from what the lab's own
/// reactors observed: every reactor is registered with its priority and level, and each call
/// of its press or release callback is recorded with what it returned and the modal level at
/// that moment. A reactor that was not called either answers at another level than the one
/// current when the walk passed it (a consumer may change the level mid-walk, as the game's
/// Escape does) or comes after the walk stopped. Engine main thread; pure bookkeeping, no
/// library call.
class WalkTrace {
public:
    using Id = std::size_t;

    /// `modalLevel` is the collector's level as the lab keeps it; it must outlive the trace.
    explicit WalkTrace(const unsigned char& modalLevel) : modalLevel(modalLevel) {}

    /// Registers a reactor to `kind` ("key", "button") `name` ("Down"), made in this order,
    /// owned by `owner` (shown in the walk). Returns the id its callbacks pass to `Called`.
    Id Register(std::string kind, std::string name, std::string owner, unsigned short priority,
                std::optional<unsigned char> level);

    /// Records that reactor `id` was called for `action` ("press", "release", or "pulse" for a
    /// wheel step, which is never held) and whether it
    /// consumed. A call that cannot belong to the walk being recorded starts a new one.
    void Called(Id id, const char* action, bool consumed);

    /// The last walk recorded, or none before the first call.
    std::optional<Walk> LastWalk() const;

    /// The keys and buttons pressed and not yet released ("key W", "button Left"), in the
    /// order they were pressed, as the reactors heard them.
    const std::vector<std::string>& Held() const noexcept { return held; }

    /// "consumed", "passed on", "passed over: answers at level 1", "not reached".
    static std::string FateText(const WalkStep& step);

private:
    struct Entry {
        std::string kind;
        std::string name;
        std::string owner;
        unsigned short priority;
        std::optional<unsigned char> level;
    };

    /// The reactors of `id`'s event in the library's order.
    std::vector<Id> Order(Id id) const;

    struct Call {
        Id id;
        bool consumed;
        unsigned char level; // the modal level when it was called
    };

    const unsigned char& modalLevel;
    std::vector<Entry> entries;
    // The walk being recorded: its action and the calls made so far.
    std::string action;
    std::vector<Call> calls;
    std::vector<std::string> held;
};

} // namespace InputLab
