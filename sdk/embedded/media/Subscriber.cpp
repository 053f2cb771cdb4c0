#include "media/Subscriber.h"

namespace ipncsdk::media {

Subscriber::Subscriber(int newId, const Subscription& wishes, std::shared_ptr<TalkLine> line,
                       std::shared_ptr<StreamListener> listener)
    : id(newId)
    , decoded(wishes.decoded)
    , coded(wishes.coded)
    , sound(wishes.sound)
    , talk(wishes.talk)
    , line_(std::move(line))
    , listener_(std::move(listener)) {}

StreamError Subscriber::refusalOf(const StreamParameters& parameters) const {
    if (sound && !decoded && !coded && !parameters.sound) {
        return StreamError::NoSound;
    }
    if (talk == nullptr) {
        return StreamError::None;
    }
    if (!parameters.talk) {
        return StreamError::NoTalk;
    }
    return line_->begin(talk) ? StreamError::None : StreamError::TalkBusy;
}

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
    if (talk != nullptr) {
        talk->end();
    }
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
