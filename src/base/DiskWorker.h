#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace corvanta {

/// Does what waits for a disk in a thread of its own, so that a window does not: a disk that is busy with recordings
/// takes a second now and then until it has something for certain.
///
/// Any thread posts. Everything posted is done, at the latest when this object goes.
class DiskWorker final {
public:
    using Task = std::function<void()>;

    DiskWorker();
    /// Waits until everything is done.
    ~DiskWorker();
    DiskWorker(const DiskWorker&) = delete;
    DiskWorker& operator=(const DiskWorker&) = delete;

    /// Does `task` after `delay`. In place of one under the same name that has not begun, at that one's time. One
    /// task at a time, those that are due in the order of their times.
    void post(const std::string& name, std::chrono::milliseconds delay, Task task);
    /// Waits until everything that was posted is done, without its delay. Not in a task.
    void finish();

private:
    using Clock = std::chrono::steady_clock;
    struct Job {
        Task task;
        Clock::time_point due;
    };

    void run();

    std::mutex mutex_; ///< of all below
    std::condition_variable changed_;
    std::map<std::string, Job> jobs_; ///< by name, those that have not begun
    bool isBusy_ = false;
    int hurries_ = 0; ///< who waits for the end
    bool ends_ = false;
    std::thread thread_;
};

} // namespace corvanta
