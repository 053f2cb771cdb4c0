#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace ipncsdk::api {

/// Looks after devices that are in the middle of something, on a thread of its own. Rests while none is.
class DeviceWatch final {
public:
    static constexpr std::chrono::milliseconds pause{100};

    /// `look` runs on the watch's thread; true means that it wants to look again.
    explicit DeviceWatch(std::function<bool()> look);
    /// As `stop`.
    ~DeviceWatch();
    DeviceWatch(const DeviceWatch&) = delete;
    DeviceWatch& operator=(const DeviceWatch&) = delete;

    /// Something has begun. Any thread.
    void wake();
    /// Ends the thread. Not callable from inside `look`.
    void stop();

private:
    void watch();

    const std::function<bool()> look_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool awake_ = false;    ///< guarded by mutex_
    bool stopping_ = false; ///< guarded by mutex_
    std::thread thread_;
};

} // namespace ipncsdk::api
