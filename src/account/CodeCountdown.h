#pragma once

#include <QString>

/// The time for which a verification code is valid, and no other one can be asked for. Counts what it is told:
/// whoever owns it calls `tick` once a second while it runs.
class CodeCountdown final {
public:
    static constexpr int Start = 61; ///< so that the first tick shows 60

    /// A code has been asked for.
    void start() { left_ = Start; }
    void tick();

    bool wasStarted() const { return left_ != NeverStarted; }
    bool isRunning() const { return left_ > 0; }
    bool isOver() const { return left_ == 0; }
    /// What the button reads: its first text, then the seconds, at the end that another code can be asked for.
    QString buttonText() const;

private:
    static constexpr int NeverStarted = -1;

    int left_ = NeverStarted; ///< s
};
