#pragma once

#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace ipncsdk::api {

/// Decides which of the client's callbacks may run, and lets others wait until one has ended.
///
/// Every callback runs through a gate. A closed gate lets nothing in any more, and closing it waits for what is
/// inside on other threads. No lock is held while a callback runs.
class CallbackKeeper final {
public:
    class Gate final {
    private:
        friend class CallbackKeeper;
        bool open_ = true;
        std::vector<std::thread::id> inside_; ///< one entry a running call
    };

    CallbackKeeper() = default;
    CallbackKeeper(const CallbackKeeper&) = delete;
    CallbackKeeper& operator=(const CallbackKeeper&) = delete;

    /// Runs `callback` unless the gate or the keeper is closed; says whether it ran. Exceptions end here.
    bool run(Gate& gate, const std::function<void()>& callback);

    /// Closes a gate: when it returns true, no callback runs in it on another thread any more. Calls from inside the
    /// gate do not wait for themselves. False when waiting would never end, because a thread inside the gate is
    /// itself waiting, directly or through others, for this thread's callback; the gate is closed all the same.
    bool close(Gate& gate);

    /// Closes all gates, present and to come, and waits for every running callback. Not callable from inside one.
    void shut();

    /// True when the calling thread is inside one of the callbacks.
    [[nodiscard]] bool isInside() const;

private:
    /// The functions below want mutex_ to be held.
    [[nodiscard]] bool isRunning(std::thread::id thread) const;
    [[nodiscard]] bool hasOthers(const Gate& gate, std::thread::id self) const;
    [[nodiscard]] bool leadsBack(const Gate& gate, std::thread::id self, std::set<const Gate*>& seen) const;
    void leave(Gate& gate, std::thread::id self);

    mutable std::mutex mutex_;
    std::condition_variable left_;
    int waiters_ = 0;
    bool shut_ = false;
    int total_ = 0;                                    ///< callbacks that run
    std::map<std::thread::id, int> running_;           ///< callbacks a thread is inside of, nested ones counted;
                                                       ///< some are kept at 0, so that a picture costs no
                                                       ///< allocation
    std::map<std::thread::id, const Gate*> waitingAt_; ///< gates that threads inside callbacks wait for
};

} // namespace ipncsdk::api
