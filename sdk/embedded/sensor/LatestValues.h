#pragma once

#include "sensor/Reading.h"

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace ipncsdk::sensor {

/// The newest reading of each input and the last value of each output. Thread-safe.
class LatestValues final : public ReadingSink {
public:
    void take(const std::vector<Reading>& readings) override;

    [[nodiscard]] std::optional<Reading> of(int pid) const;
    /// What has changed since the last call: value or state, or the time alone.
    std::vector<Reading> takeChanged();

private:
    mutable std::mutex mutex_;
    std::map<int, Reading> readings_; ///< guarded by mutex_
    std::set<int> changed_;           ///< guarded by mutex_
};

} // namespace ipncsdk::sensor
