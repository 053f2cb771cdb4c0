#include "api/DeviceWatch.h"

#include <utility>

namespace ipncsdk::api {

DeviceWatch::DeviceWatch(std::function<bool()> look)
    : look_(std::move(look))
    , thread_([this] { watch(); }) {}

DeviceWatch::~DeviceWatch() {
    stop();
}

void DeviceWatch::wake() {
    {
        const std::lock_guard lock(mutex_);
        awake_ = true;
    }
    changed_.notify_all();
}

void DeviceWatch::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable())
        thread_.join();
}

void DeviceWatch::watch() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        changed_.wait(lock, [this] { return awake_ || stopping_; });
        changed_.wait_for(lock, pause, [this] { return stopping_; });
        if (stopping_)
            return;
        awake_ = false;
        lock.unlock();
        const bool again = look_();
        lock.lock();
        awake_ = awake_ || again;
    }
}

} // namespace ipncsdk::api
