#include "api/Worker.h"

#include "base/Log.h"

#include <exception>
#include <string>
#include <utility>

namespace ipncsdk::api {

Worker::Worker(int threads) {
    for (int i = 0; i < threads; ++i)
        threads_.emplace_back([this] { work(); });
}

Worker::~Worker() {
    finish();
}

bool Worker::post(Task task) {
    {
        const std::lock_guard lock(mutex_);
        if (finishing_)
            return false;
        tasks_.push_back(std::move(task));
    }
    changed_.notify_one();
    return true;
}

void Worker::finish(bool drop) {
    // Forgotten tasks are destroyed outside the lock: they hold callbacks of the client.
    std::deque<Task> forgotten;
    {
        const std::lock_guard lock(mutex_);
        finishing_ = true;
        if (drop)
            forgotten.swap(tasks_);
    }
    changed_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
}

void Worker::work() {
    while (true) {
        Task task;
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return finishing_ || !tasks_.empty(); });
            if (tasks_.empty())
                return;
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        try {
            task();
        } catch (const std::exception& error) {
            logLine(std::string("a task of the service failed: ") + error.what());
        }
    }
}

} // namespace ipncsdk::api
