#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <vector>

namespace ipncsdk::linkage {

/// Tells once, after a while, that something has stopped being well. What was never well is not told: it is nothing
/// new. Times are given with each call.
template <typename Key>
class FaultWatch final {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit FaultWatch(std::chrono::seconds patience)
        : patience_(patience) {}

    void note(const Key& key, bool well, Time now) {
        if (well) {
            states_[key] = State();
            waiting_.erase(key);
            return;
        }
        const auto found = states_.find(key);
        if (found == states_.end() || found->second.failing)
            return;
        found->second.failing = true;
        waiting_[key] = now + patience_;
    }

    /// What is due to be told; each once until it was well again.
    std::vector<Key> due(Time now) {
        std::vector<Key> keys;
        for (auto each = waiting_.begin(); each != waiting_.end();) {
            if (each->second > now) {
                ++each;
                continue;
            }
            keys.push_back(each->first);
            each = waiting_.erase(each);
        }
        return keys;
    }

    /// Forgets what is not there any more.
    void forget(const Key& key) {
        states_.erase(key);
        waiting_.erase(key);
    }

private:
    struct State {
        bool failing = false;
    };
    const std::chrono::seconds patience_;
    std::map<Key, State> states_; ///< of all that has ever been well
    std::map<Key, Time> waiting_; ///< what fails and has not been told yet
};

} // namespace ipncsdk::linkage
