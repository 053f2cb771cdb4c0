#include "api/CallbackKeeper.h"

#include "base/Log.h"

#include <algorithm>
#include <exception>
#include <string>

namespace ipncsdk::api {

namespace {

/// Threads whose entry is kept while they are inside no callback.
constexpr std::size_t mostKept = 256;

} // namespace

bool CallbackKeeper::run(Gate& gate, const std::function<void()>& callback) {
    const auto self = std::this_thread::get_id();
    {
        const std::lock_guard lock(mutex_);
        if (shut_ || !gate.open_)
            return false;
        gate.inside_.push_back(self);
        ++running_[self];
        ++total_;
    }
    try {
        callback();
    } catch (const std::exception& error) {
        logLine(std::string("a callback of the client threw an exception: ") + error.what());
    } catch (...) {
        logLine("a callback of the client threw an exception");
    }
    const std::lock_guard lock(mutex_);
    leave(gate, self);
    return true;
}

bool CallbackKeeper::close(Gate& gate) {
    const auto self = std::this_thread::get_id();
    std::unique_lock lock(mutex_);
    gate.open_ = false;
    while (hasOthers(gate, self)) {
        std::set<const Gate*> seen;
        if (leadsBack(gate, self, seen))
            return false;
        // A thread may wait at one gate at a time, so the entry is its own.
        waitingAt_[self] = &gate;
        ++waiters_;
        left_.wait(lock);
        --waiters_;
        waitingAt_.erase(self);
    }
    return true;
}

void CallbackKeeper::shut() {
    std::unique_lock lock(mutex_);
    shut_ = true;
    ++waiters_;
    left_.wait(lock, [this] { return total_ == 0; });
    --waiters_;
}

bool CallbackKeeper::isInside() const {
    const std::lock_guard lock(mutex_);
    return isRunning(std::this_thread::get_id());
}

bool CallbackKeeper::isRunning(std::thread::id thread) const {
    const auto running = running_.find(thread);
    return running != running_.end() && running->second > 0;
}

bool CallbackKeeper::hasOthers(const Gate& gate, std::thread::id self) const {
    return std::any_of(gate.inside_.begin(), gate.inside_.end(), [self](std::thread::id id) { return id != self; });
}

bool CallbackKeeper::leadsBack(const Gate& gate, std::thread::id self, std::set<const Gate*>& seen) const {
    if (!isRunning(self) || !seen.insert(&gate).second)
        return false;
    for (const std::thread::id inside : gate.inside_) {
        if (inside == self)
            continue;
        const auto waiting = waitingAt_.find(inside);
        if (waiting == waitingAt_.end())
            continue;
        const Gate& next = *waiting->second;
        if (std::find(next.inside_.begin(), next.inside_.end(), self) != next.inside_.end())
            return true;
        if (leadsBack(next, self, seen))
            return true;
    }
    return false;
}

void CallbackKeeper::leave(Gate& gate, std::thread::id self) {
    gate.inside_.erase(std::find(gate.inside_.begin(), gate.inside_.end(), self));
    --total_;
    const auto running = running_.find(self);
    if (--running->second == 0 && running_.size() > mostKept)
        running_.erase(running);
    if (waiters_ > 0)
        left_.notify_all();
}

} // namespace ipncsdk::api
