#include "api/StoreWatch.h"

#include <utility>

namespace ipncsdk::api {

StoreWatch::StoreWatch(std::unique_ptr<store::ChangeProbe> probe, std::function<void()> changed)
    : probe_(std::move(probe))
    , changed_(std::move(changed)) {
    if (probe_)
        thread_ = std::thread([this] { watch(); });
}

StoreWatch::~StoreWatch() {
    stop();
}

void StoreWatch::setActive(bool active) {
    {
        const std::lock_guard lock(mutex_);
        if (active_ == active)
            return;
        active_ = active;
    }
    wake_.notify_all();
}

void StoreWatch::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (thread_.joinable())
        thread_.join();
}

void StoreWatch::watch() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        wake_.wait(lock, [this] { return active_ || stopping_; });
        wake_.wait_for(lock, pause, [this] { return stopping_; });
        if (stopping_ || !active_)
            continue;
        lock.unlock();
        if (probe_->changed())
            changed_();
        lock.lock();
    }
}

} // namespace ipncsdk::api
