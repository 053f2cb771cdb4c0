#include "sensor/LatestValues.h"

namespace ipncsdk::sensor {

void LatestValues::take(const std::vector<Reading>& readings) {
    const std::lock_guard lock(mutex_);
    for (const Reading& reading : readings) {
        Reading& known = readings_[reading.pid];
        if (known.pid != 0 && known.time == reading.time && known.value == reading.value &&
            known.normal == reading.normal)
            continue;
        known = reading;
        changed_.insert(reading.pid);
    }
}

std::optional<Reading> LatestValues::of(int pid) const {
    const std::lock_guard lock(mutex_);
    const auto found = readings_.find(pid);
    return found == readings_.end() ? std::nullopt : std::make_optional(found->second);
}

std::vector<Reading> LatestValues::takeChanged() {
    const std::lock_guard lock(mutex_);
    std::vector<Reading> changed;
    for (const int pid : changed_) {
        if (const auto found = readings_.find(pid); found != readings_.end())
            changed.push_back(found->second);
    }
    changed_.clear();
    return changed;
}

} // namespace ipncsdk::sensor
