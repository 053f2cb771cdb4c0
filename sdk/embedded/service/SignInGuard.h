#pragma once

#include "base/Clock.h"

#include <chrono>
#include <map>
#include <string>

namespace ipncsdk::service {

/// Slows down the guessing of passwords: after `freeFailures` failures in a row for one number, the next attempts
/// for it are refused for a time that doubles with each further failure. Kept in memory only. One thread.
class SignInGuard final {
public:
    static constexpr int freeFailures = 5;
    static constexpr std::chrono::seconds firstWait{5};
    static constexpr std::chrono::seconds longestWait{300};
    /// A row of failures is forgotten when nothing happened for this long.
    static constexpr std::chrono::minutes memory{30};
    /// Numbers remembered at once; beyond it every number that is not remembered must wait, so that the memory
    /// can't be flooded to make it forget.
    static constexpr std::size_t mostNumbers = 10000;

    explicit SignInGuard(const Clock& clock);

    /// True when an attempt for this number may be made now.
    bool mayTry(const std::string& phone);
    void failed(const std::string& phone);
    void succeeded(const std::string& phone);

private:
    using Time = std::chrono::steady_clock::time_point;

    struct Row {
        int failures = 0;
        Time last;
        Time openAgain;
    };

    void forgetOld(Time now);

    const Clock& clock_;
    std::map<std::string, Row> rows_;
};

} // namespace ipncsdk::service
