#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace ipncsdk::api {

/// Runs tasks on threads of its own, begun in the order in which they were posted. Thread-safe.
class Worker final {
public:
    using Task = std::function<void()>;

    explicit Worker(int threads);
    /// As `finish`.
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// False when the worker has been told to finish; the task is not taken then.
    bool post(Task task);

    /// Takes no more tasks, runs those that wait (or, with `drop`, forgets them) and joins the threads. Not callable
    /// from inside a task.
    void finish(bool drop = false);

private:
    void work();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Task> tasks_; ///< guarded by mutex_
    bool finishing_ = false; ///< guarded by mutex_
    std::vector<std::thread> threads_;
};

} // namespace ipncsdk::api
