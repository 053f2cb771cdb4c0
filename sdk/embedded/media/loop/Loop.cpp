#include "media/loop/Loop.h"

namespace ipncsdk::media {

std::shared_ptr<const Gop> Loop::gop(std::size_t number, std::chrono::milliseconds patience) const {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, patience, [&] { return failed_ || number < gops_.size(); });
    return number < gops_.size() ? gops_[number] : nullptr;
}

bool Loop::failed() const {
    const std::lock_guard lock(mutex_);
    return failed_;
}

void Loop::append(std::shared_ptr<const Gop> gop) {
    const std::lock_guard lock(mutex_);
    gops_.push_back(std::move(gop));
    changed_.notify_all();
}

void Loop::fail() {
    const std::lock_guard lock(mutex_);
    failed_ = true;
    changed_.notify_all();
}

} // namespace ipncsdk::media
