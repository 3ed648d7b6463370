// SPDX-License-Identifier: Zlib
#include <host/FrameUtility.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Host {

namespace Detail {

/// What the frame utility knows of its tickers. The tickers point back at it weakly, so that a
/// ticker that outlives the frame utility finds nothing to leave.
struct TickSchedule {
    struct Entry {
        std::function<void(unsigned long long)>* callback;
        unsigned long long period;
        unsigned long long due;
    };

    FrameUtility::Clock clock;
    // Moved on by each pump when the clock follows the frames (a step other than 0).
    unsigned long long pumpStep = 0;
    unsigned long long pumpedTime = 0;
    // Keyed by a serial number that only grows, so iteration order is creation order and a
    // ticker that died during a pump cannot be confused with one made after it.
    std::map<std::uint64_t, Entry> entries;
    std::uint64_t nextSerial = 0;
    bool pumping = false;
    std::vector<std::uint64_t> dueSerials;
};

} // namespace Detail

namespace {

/// `a + b`, or the clock's last reading when that is beyond it: a huge period must not wrap
/// round to a time already past, which would fire at every pump.
unsigned long long SaturatingAdd(unsigned long long a, unsigned long long b) {
    const auto last = std::numeric_limits<unsigned long long>::max();
    return b > last - a ? last : a + b;
}

class Ticker final : public Common::ITicker {
public:
    Ticker(const std::shared_ptr<Detail::TickSchedule>& owner, unsigned long long period)
        : schedule(owner)
        , serial(owner->nextSerial++) {
        owner->entries.emplace(
            serial,
            Detail::TickSchedule::Entry{&callback, period, SaturatingAdd(owner->clock(), period)});
    }

    ~Ticker() override {
        if (const auto alive = schedule.lock())
            alive->entries.erase(serial);
    }

    void SetTickCallback(std::function<void(unsigned long long)> callback) override {
        this->callback = std::move(callback);
    }

private:
    std::function<void(unsigned long long)> callback;
    std::weak_ptr<Detail::TickSchedule> schedule;
    std::uint64_t serial;
};

/// Clears the re-entry mark however the pump ends.
class PumpScope {
public:
    explicit PumpScope(bool& pumping) : pumping(pumping) { pumping = true; }
    ~PumpScope() { pumping = false; }
    PumpScope(const PumpScope&) = delete;
    PumpScope& operator=(const PumpScope&) = delete;

private:
    bool& pumping;
};

FrameUtility::Clock SteadyClockFromNow() {
    const auto start = std::chrono::steady_clock::now();
    return [start] {
        return static_cast<unsigned long long>(
            std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                  start)
                .count());
    };
}

} // namespace

FrameUtility::FrameUtility(Clock clock) : schedule(std::make_shared<Detail::TickSchedule>()) {
    schedule->clock = clock ? std::move(clock) : SteadyClockFromNow();
}

FrameUtility::FrameUtility(std::optional<FramePace> pace) : FrameUtility() {
    if (!pace)
        return;
    if (pace->microsecondsPerPump == 0)
        throw std::invalid_argument("A frame utility that follows frames needs a step of at "
                                    "least one microsecond per pump");
    Detail::TickSchedule* const state = schedule.get();
    state->pumpStep = pace->microsecondsPerPump;
    // The schedule owns the clock, so the clock may point at it.
    state->clock = [state] { return state->pumpedTime; };
}

FrameUtility::~FrameUtility() = default;

Zenk::IntrudablePointer<Common::ITicker>
FrameUtility::MakeTicker(unsigned long long periodMicroseconds) {
    return Zenk::IntrudablePointer<Common::ITicker>(new Ticker(schedule, periodMicroseconds));
}

void FrameUtility::Pump() {
    if (schedule->pumping)
        throw std::logic_error("FrameUtility::Pump called from a tick callback");
    // Held for the whole pump: a callback may even destroy this frame utility.
    const auto state = schedule;
    const PumpScope scope(state->pumping);

    state->pumpedTime = SaturatingAdd(state->pumpedTime, state->pumpStep);
    const unsigned long long now = state->clock();
    // Chosen before any callback runs: a ticker made during this pump waits for its period.
    auto& due = state->dueSerials;
    due.clear();
    for (const auto& [serial, entry] : state->entries)
        if (entry.due <= now && *entry.callback)
            due.push_back(serial);

    for (const std::uint64_t serial : due) {
        const auto found = state->entries.find(serial);
        if (found == state->entries.end())
            continue; // dropped by an earlier callback of this pump
        auto& entry = found->second;
        entry.due = SaturatingAdd(entry.due, entry.period);
        if (entry.due <= now)
            entry.due = SaturatingAdd(now, entry.period);
        // A copy, because the callback may drop its own ticker or replace its own function, and
        // either would destroy the function while it runs.
        const auto callback = *entry.callback;
        if (callback)
            callback(now);
    }
}

std::optional<unsigned long long> FrameUtility::TimeToNextTick() const {
    std::optional<unsigned long long> earliest;
    for (const auto& [serial, entry] : schedule->entries)
        if (*entry.callback && (!earliest || entry.due < *earliest))
            earliest = entry.due;
    if (!earliest)
        return std::nullopt;
    const unsigned long long now = schedule->clock();
    return *earliest > now ? *earliest - now : 0;
}

std::size_t FrameUtility::TickerCount() const {
    return schedule->entries.size();
}

} // namespace Host
