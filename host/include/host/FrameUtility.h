// SPDX-License-Identifier: Zlib
#pragma once

#include <common/SFrameUtility.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

namespace Host {

namespace Detail {
struct TickSchedule;
}

/// How far a frame utility whose clock follows the frames moves its clock at each pump.
struct FramePace {
    /// Microseconds added to the clock by each pump; one frame's period, usually.
    unsigned long long microsecondsPerPump = 0;
};

/// The frame utility service: periodic tickers that fire only inside `Pump`, on the thread that
/// pumps, never on a thread of their own.
///
/// Threading contract: `MakeTicker`, `Pump`, `SetTickCallback` and dropping a ticker's handles
/// all happen on one thread, the engine's loop thread, which also calls the input collector's
/// `QueryInputEvents`. A tick therefore never overlaps `QueryInputEvents` or any other call of
/// the window library, which has no lock of its own; nothing here has a lock either.
///
/// Timing: a ticker made at time t is first due at t + period and then every period. `Pump`
/// calls each due ticker once; periods missed while the loop was late are dropped, not made up
/// in a burst, and the next one is due a whole period after the pump. So the tick rate is the
/// lower of the ticker's rate and the pump rate. A period of 0 fires at every pump; one that
/// ends beyond the clock's range never fires.
///
/// Lifetime: a ticker stops when its last handle goes. A ticker may outlive its frame utility
/// (the input collector keeps its ticker to the end of the process); it then never fires again.
class FrameUtility final : public Common::SFrameUtility {
public:
    /// Microseconds on a monotonic clock; only differences matter.
    using Clock = std::function<unsigned long long()>;

    /// A frame utility timed by `clock`, or, when it is empty, by the steady clock counted from
    /// this construction. A test passes a clock that it moves by hand.
    explicit FrameUtility(Clock clock = {});

    /// A frame utility whose clock follows the frames instead of the wall clock when `pace` is
    /// given: the clock starts at 0 and each `Pump` moves it on by `pace->microsecondsPerPump`
    /// before it looks for due tickers. The ticks then depend only on how many frames were
    /// pumped, so that a replay of recorded input takes exactly the course of the recording,
    /// however fast the machine is. Without `pace`, as `FrameUtility()`.
    /// Throws `std::invalid_argument` for a step of 0, which would never let a ticker fall due.
    explicit FrameUtility(std::optional<FramePace> pace);
    ~FrameUtility() override;

    FrameUtility(const FrameUtility&) = delete;
    FrameUtility& operator=(const FrameUtility&) = delete;

    /// A new ticker with the given period, first due one period from now; it fires once it has a
    /// callback. The caller owns the handle, which is never empty. Loop thread.
    Zenk::IntrudablePointer<Common::ITicker>
    MakeTicker(unsigned long long periodMicroseconds) override;

    /// Calls the callback of every ticker that is due, with the current clock reading, in the
    /// order the tickers were made. A ticker made or dropped by a callback is seen at once: a
    /// dropped one is not called, a new one waits for its first period. Loop thread.
    /// An exception from a callback leaves this pump at once and reaches the caller; tickers
    /// not yet called stay due for the next pump. Throws `std::logic_error` ("FrameUtility::Pump
    /// called from a tick callback") when called from inside a tick.
    void Pump();

    /// Microseconds from now until the next ticker with a callback is due (0 when one is due
    /// already), or nothing when no ticker has a callback. Lets a loop sleep until it must pump.
    /// Loop thread.
    std::optional<unsigned long long> TimeToNextTick() const;

    /// The number of live tickers, with or without a callback. Loop thread.
    std::size_t TickerCount() const;

private:
    std::shared_ptr<Detail::TickSchedule> schedule;
};

} // namespace Host
