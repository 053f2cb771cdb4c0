#pragma once

#include <memory>
#include <string>

namespace corvanta::platform {

/// Keeps the system and the display from going to sleep for as long as it lives.
///
/// Windows: the execution state of the thread that made it, which must live as long. Linux: inhibitors of the
/// session's screen saver, of its power manager and of the login manager, as far as they are there; they hang on bus
/// connections of this object, so they end with the process however it ends.
///
/// Made and destroyed on one thread. Making it takes at most `longestWaitMs`, also when a service hangs.
class KeepAwake final {
public:
    static constexpr int longestWaitMs = 300;

    KeepAwake();
    ~KeepAwake();
    KeepAwake(const KeepAwake&) = delete;
    KeepAwake& operator=(const KeepAwake&) = delete;

    /// True if at least one service has agreed.
    [[nodiscard]] bool active() const;

    /// One line for the debug stream: who agreed, or why nobody did. UTF-8.
    [[nodiscard]] std::string description() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace corvanta::platform
