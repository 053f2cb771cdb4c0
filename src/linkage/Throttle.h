#pragma once

#include <QTimer>

#include <functional>

/// Does something when it is asked to, but not more often than once in a time: what is asked for sooner is done,
/// once, when that time is over. GUI thread.
class Throttle final {
public:
    /// `leading`: the first of several is done at once. Otherwise it, too, waits for the time.
    enum class Edge { Leading, Trailing };

    Throttle(int milliseconds, Edge edge, std::function<void()> act);
    Throttle(const Throttle&) = delete;
    Throttle& operator=(const Throttle&) = delete;
    ~Throttle() = default;

    void ask();
    /// Does at once what was asked for and waits; nothing when nothing does.
    void flush();

private:
    std::function<void()> act_;
    QTimer timer_;
    Edge edge_;
    bool waits_ = false; ///< something was asked for and is not done yet
};
