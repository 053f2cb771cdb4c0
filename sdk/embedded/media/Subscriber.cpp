#include "media/Subscriber.h"

namespace ipncsdk::media {

Subscriber::Subscriber(int newId, bool wantsDecoded, bool wantsCoded, std::shared_ptr<StreamListener> listener)
    : id(newId)
    , decoded(wantsDecoded)
    , coded(wantsCoded)
    , listener_(std::move(listener)) {}

std::shared_ptr<StreamListener> Subscriber::enter() {
    const std::lock_guard lock(mutex_);
    if (listener_ != nullptr) {
        inside_ = true;
        caller_ = std::this_thread::get_id();
    }
    return listener_;
}

void Subscriber::leave() {
    const std::lock_guard lock(mutex_);
    inside_ = false;
    left_.notify_all();
}

void Subscriber::close() {
    // The listener is let go outside the lock, for its destructor may do anything.
    std::shared_ptr<StreamListener> listener;
    std::unique_lock lock(mutex_);
    listener = std::move(listener_);
    listener_ = nullptr;
    if (caller_ != std::this_thread::get_id()) {
        left_.wait(lock, [this] { return !inside_; });
    }
    lock.unlock();
}

} // namespace ipncsdk::media
