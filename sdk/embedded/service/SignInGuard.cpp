#include "service/SignInGuard.h"

#include <algorithm>
#include <iterator>

namespace ipncsdk::service {

SignInGuard::SignInGuard(const Clock& clock)
    : clock_(clock) {}

bool SignInGuard::mayTry(const std::string& phone) {
    const Time now = clock_.steadyNow();
    forgetOld(now);
    const auto found = rows_.find(phone);
    if (found == rows_.end())
        return rows_.size() < mostNumbers;
    return now >= found->second.openAgain;
}

void SignInGuard::failed(const std::string& phone) {
    const Time now = clock_.steadyNow();
    Row& row = rows_[phone];
    ++row.failures;
    row.last = now;
    row.openAgain = now;
    if (row.failures < freeFailures)
        return;
    std::chrono::seconds wait = firstWait;
    for (int i = freeFailures; i < row.failures && wait < longestWait; ++i)
        wait *= 2;
    row.openAgain = now + std::min(wait, longestWait);
}

void SignInGuard::succeeded(const std::string& phone) {
    rows_.erase(phone);
}

void SignInGuard::forgetOld(Time now) {
    std::erase_if(rows_, [now](const auto& entry) { return now - entry.second.last > memory; });
}

} // namespace ipncsdk::service
