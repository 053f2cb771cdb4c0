#include "api/OutputDesk.h"

#include "base/Log.h"

#include <algorithm>
#include <string>

namespace ipncsdk::api {

namespace {

/// So many devices may hang before others have to wait for them.
constexpr int threadCount = 4;

} // namespace

OutputDesk::OutputDesk() {
    for (int i = 0; i < threadCount; ++i)
        threads_.emplace_back([this] { work(); });
}

OutputDesk::~OutputDesk() {
    stop();
}

void OutputDesk::use(sensor::OutputWriter& writer) {
    const std::lock_guard lock(mutex_);
    writer_ = &writer;
}

void OutputDesk::write(int pid, bool on) {
    {
        const std::lock_guard lock(mutex_);
        if (writer_ == nullptr || stopping_)
            return;
        waiting_[pid] = on;
    }
    changed_.notify_all();
}

void OutputDesk::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
}

void OutputDesk::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        auto next = waiting_.end();
        changed_.wait(lock, [&] {
            next = std::find_if(waiting_.begin(), waiting_.end(),
                                [this](const auto& entry) { return busy_.count(entry.first) == 0; });
            return next != waiting_.end() || (stopping_ && waiting_.empty());
        });
        if (next == waiting_.end())
            return;
        const int pid = next->first;
        const double value = next->second ? 1 : 0;
        sensor::OutputWriter* const writer = writer_;
        waiting_.erase(next);
        busy_.insert(pid);
        lock.unlock();
        const ServiceCode code = writer->write(pid, value);
        if (code != ServiceCode::Done)
            logLine("linkage can't switch output " + std::to_string(pid) + ": " + errorText(code));
        lock.lock();
        busy_.erase(pid);
        changed_.notify_all();
    }
}

} // namespace ipncsdk::api
