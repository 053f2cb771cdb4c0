#include "base/DiskWorker.h"

#include <algorithm>
#include <utility>

namespace corvanta {

DiskWorker::DiskWorker()
    : thread_([this] { run(); }) {}

DiskWorker::~DiskWorker() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void DiskWorker::post(const std::string& name, std::chrono::milliseconds delay, Task task) {
    {
        const std::lock_guard lock(mutex_);
        const auto [job, isNew] = jobs_.try_emplace(name);
        job->second.task = std::move(task);
        if (isNew)
            job->second.due = Clock::now() + delay;
    }
    changed_.notify_all();
}

void DiskWorker::finish() {
    std::unique_lock lock(mutex_);
    ++hurries_;
    changed_.notify_all();
    changed_.wait(lock, [this] { return jobs_.empty() && !isBusy_; });
    --hurries_;
}

void DiskWorker::run() {
    std::unique_lock lock(mutex_);
    while (!ends_ || !jobs_.empty()) {
        const auto next = std::min_element(jobs_.begin(), jobs_.end(),
                                           [](const auto& a, const auto& b) { return a.second.due < b.second.due; });
        if (next == jobs_.end()) {
            changed_.wait(lock);
            continue;
        }
        if (!ends_ && hurries_ == 0 && Clock::now() < next->second.due) {
            const Clock::time_point due = next->second.due; // the job may be another one when this is over
            changed_.wait_until(lock, due);
            continue;
        }
        const Task task = std::move(next->second.task);
        jobs_.erase(next);
        isBusy_ = true;
        lock.unlock();
        task();
        lock.lock();
        isBusy_ = false;
        changed_.notify_all();
    }
}

} // namespace corvanta
