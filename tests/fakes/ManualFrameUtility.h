// SPDX-License-Identifier: Zlib
#pragma once

#include <common/SFrameUtility.h>

#include <functional>
#include <stdexcept>
#include <vector>

namespace Fakes {

/// A ticker that fires only when the test says so.
class ManualTicker : public Common::ITicker {
public:
    void SetTickCallback(std::function<void(unsigned long long)> callback) override {
        if (refuse)
            throw std::runtime_error("ticker refuses its callback");
        this->callback = std::move(callback);
    }

    /// Runs one tick, as the frame utility would; exceptions reach the test.
    void Fire(unsigned long long now = 0) {
        if (callback)
            callback(now);
    }

    std::function<void(unsigned long long)> callback;
    bool refuse = false;
};

/// A frame utility that records the periods it was asked for and keeps its tickers reachable.
class ManualFrameUtility : public Common::SFrameUtility {
public:
    Zenk::IntrudablePointer<Common::ITicker> MakeTicker(unsigned long long period) override {
        periods.push_back(period);
        tickers.emplace_back(new ManualTicker);
        tickers.back()->refuse = refuseCallbacks;
        return tickers.back();
    }

    /// Fires the most recent ticker `count` times.
    void Tick(int count = 1) {
        for (int i = 0; i < count; ++i)
            tickers.back()->Fire();
    }

    std::vector<unsigned long long> periods;
    std::vector<Zenk::IntrudablePointer<ManualTicker>> tickers;
    bool refuseCallbacks = false; // the tickers made throw from SetTickCallback
};

} // namespace Fakes
