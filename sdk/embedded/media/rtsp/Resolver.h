#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace ipncsdk::media {

/// Looks a host name up without ever holding up whoever waits: the system's call cannot be broken off, so it runs on
/// a thread of its own, which is left to itself when the answer is no longer wanted. It owns all that it uses.
class Resolver final {
public:
    enum class State { Pending, Found, Unknown };

    /// Begins the look-up.
    explicit Resolver(const std::string& host);

    State state() const { return answer_->state; }
    /// Numeric addresses, the best first; only once the state is `Found`.
    const std::vector<std::string>& addresses() const { return answer_->addresses; }

private:
    struct Answer {
        std::vector<std::string> addresses; ///< written before `state`
        std::atomic<State> state{State::Pending};
    };

    std::shared_ptr<Answer> answer_ = std::make_shared<Answer>();
};

} // namespace ipncsdk::media
