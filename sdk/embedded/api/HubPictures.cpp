#include "api/HubPictures.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace ipncsdk::api {

namespace {

constexpr std::chrono::milliseconds look{100};

media::Subscription decoded(media::Subscription subscription) {
    subscription.decoded = true;
    return subscription;
}

} // namespace

class HubPictures::Grabber final : public media::StreamListener {
public:
    void onStage(media::OpenStage /*stage*/) override {}
    void onOpened(const media::StreamParameters& /*parameters*/) override {}
    void onCoded(const media::CodedFrame& /*frame*/) override {}
    void onSound(const media::SoundBlock& /*sound*/) override {}
    void onDecoded(const media::DecodedFrame& frame) override {
        {
            const std::lock_guard lock(mutex_);
            if (!std::exchange(wanted_, false))
                return;
            picture_.resize(frame.width, frame.height);
            std::copy_n(frame.data, picture_.samples.size(), picture_.samples.begin());
            picture_.time = frame.time;
            there_ = true;
        }
        came_.notify_all();
    }
    void onClosed(media::StreamError /*reason*/) override {
        {
            const std::lock_guard lock(mutex_);
            closed_ = true;
        }
        came_.notify_all();
    }

    std::optional<media::Picture> next(std::chrono::milliseconds timeout, const std::atomic<bool>& stopping) {
        const auto end = std::chrono::steady_clock::now() + timeout;
        std::unique_lock lock(mutex_);
        wanted_ = true;
        there_ = false;
        while (!there_ && !closed_ && !stopping && std::chrono::steady_clock::now() < end)
            came_.wait_for(lock, look);
        wanted_ = false;
        return there_ ? std::make_optional(picture_) : std::nullopt;
    }

private:
    std::mutex mutex_;
    std::condition_variable came_;
    // Guarded by mutex_.
    media::Picture picture_;
    bool wanted_ = false;
    bool there_ = false;
    bool closed_ = false;
};

HubPictures::HubPictures(VideoHub& hub, media::Subscription subscription, const std::atomic<bool>& stopping)
    : hub_(hub)
    , stopping_(stopping)
    , grabber_(std::make_shared<Grabber>())
    , id_(hub_.subscribe(decoded(std::move(subscription)), grabber_)) {}

HubPictures::~HubPictures() {
    hub_.unsubscribe(id_);
}

std::optional<media::Picture> HubPictures::next(std::chrono::milliseconds timeout) {
    return grabber_->next(timeout, stopping_);
}

} // namespace ipncsdk::api
