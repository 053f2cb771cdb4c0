#pragma once

#include <atomic>
#include <memory>
#include <string>

namespace ipncsdk::media {

/// Looks a host name up without ever holding up whoever waits: the system's call cannot be broken off, so it runs on
/// a thread of its own, which is left to itself when the answer is no longer wanted. It owns all that it uses.
class Resolver final {
public:
    enum class State { Pending, Found, Unknown };

    /// Begins the look-up.
    explicit Resolver(const std::string& host);

    State state() const { return *state_; }

private:
    std::shared_ptr<std::atomic<State>> state_ = std::make_shared<std::atomic<State>>(State::Pending);
};

} // namespace ipncsdk::media
