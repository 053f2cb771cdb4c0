#pragma once

#include "store/DatabaseFile.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace ipncsdk::api {

/// Asks a few times a second whether somebody else wrote to the store, on a thread of its own: the service worker may
/// be waiting for the store or for a client's callback, and a timer in it would have to be served between requests.
/// Rests while it is not active.
class StoreWatch final {
public:
    static constexpr std::chrono::milliseconds pause{250};

    /// `changed` runs on the watch's thread. Without a probe nothing is ever seen.
    StoreWatch(std::unique_ptr<store::ChangeProbe> probe, std::function<void()> changed);
    /// As `stop`.
    ~StoreWatch();
    StoreWatch(const StoreWatch&) = delete;
    StoreWatch& operator=(const StoreWatch&) = delete;

    /// Begins or stops to ask. What was written while it rested counts as a change. Any thread.
    void setActive(bool active);
    /// Ends the thread. Not callable from inside `changed`.
    void stop();

private:
    void watch();

    const std::unique_ptr<store::ChangeProbe> probe_;
    const std::function<void()> changed_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool active_ = false;   ///< guarded by mutex_
    bool stopping_ = false; ///< guarded by mutex_
    std::thread thread_;
};

} // namespace ipncsdk::api
