#include "FakeHub.h"

#include "media/sound/Talk.h"

#include <array>
#include <chrono>
#include <fstream>
#include <utility>

namespace ipncsdk::test {

using media::StreamError;

void HubScript::fail(const std::string& camera, StreamError error) {
    const std::lock_guard lock(mutex_);
    failures_[camera] = error;
}

StreamError HubScript::failureOf(const std::string& camera) const {
    const std::lock_guard lock(mutex_);
    const auto found = failures_.find(camera);
    return found == failures_.end() ? StreamError::None : found->second;
}

void HubScript::noteSubscription(const media::Subscription& subscription) {
    const std::lock_guard lock(mutex_);
    subscriptions_.push_back(subscription);
}

std::vector<media::Subscription> HubScript::subscriptions() const {
    const std::lock_guard lock(mutex_);
    return subscriptions_;
}

void HubScript::setOptions(media::HubOptions options) {
    const std::lock_guard lock(mutex_);
    options_ = std::move(options);
}

media::HubOptions HubScript::options() const {
    const std::lock_guard lock(mutex_);
    return options_;
}

struct FakeHub::Stream {
    media::Subscription subscription;
    std::shared_ptr<media::StreamListener> listener;
    std::recursive_mutex calling; ///< held during each call, so that others can wait for it
    std::atomic<bool> stopped{false};

    /// Makes a call unless the stream was stopped; false then.
    template <typename Call>
    bool tell(const Call& call) {
        const std::lock_guard lock(calling);
        if (stopped)
            return false;
        call(*listener);
        return true;
    }
};

FakeHub::FakeHub(std::shared_ptr<HubScript> script, media::HubOptions options)
    : script_(std::move(script)) {
    script_->setOptions(std::move(options));
}

FakeHub::~FakeHub() {
    stop();
    for (std::thread& thread : threads_)
        thread.join();
}

void FakeHub::stop() {
    stopped_ = true;
    const std::lock_guard lock(mutex_);
    for (auto& [id, stream] : streams_)
        stream->stopped = true;
}

int FakeHub::subscribe(const media::Subscription& subscription, std::shared_ptr<media::StreamListener> listener) {
    script_->noteSubscription(subscription);
    auto stream = std::make_shared<Stream>();
    stream->subscription = subscription;
    stream->listener = std::move(listener);
    const std::lock_guard lock(mutex_);
    streams_[++lastId_] = stream;
    ++script_->running;
    threads_.emplace_back([stream, script = script_] {
        serve(stream, *script);
        stream->listener.reset();
        --script->running;
    });
    return lastId_;
}

void FakeHub::serve(const std::shared_ptr<Stream>& stream, HubScript& script) {
    HubScript::Course& course = script.of(stream->subscription.quality);
    ++course.begun;
    stream->tell([](media::StreamListener& listener) { listener.onStage(media::OpenStage::Information); });
    while (course.held && !stream->stopped)
        std::this_thread::yield();
    StreamError error = script.failureOf(stream->subscription.camera);
    error = error == StreamError::None ? course.failure.load() : error;
    if (error != StreamError::None) {
        stream->tell([error](media::StreamListener& listener) { listener.onClosed(error); });
        return;
    }
    const int times = stream->subscription.quality == media::Quality::Main ? 2 : 1;
    if (stream->subscription.talk)
        stream->subscription.talk->open();
    stream->tell([times](media::StreamListener& listener) {
        listener.onOpened({width * times, height * times, 25, "LOOP"});
    });
    const std::array<std::uint8_t, 48> picture{1, 2, 3};
    const std::array<std::int16_t, 4> samples{1, -2, 3, -4};
    bool on = true;
    for (int number = 0; on; ++number) {
        if (script.lose || course.lose) {
            stream->tell([](media::StreamListener& listener) { listener.onClosed(StreamError::ConnectionLost); });
            return;
        }
        ++course.frames;
        on = stream->tell([&](media::StreamListener& listener) {
            if (stream->subscription.decoded)
                listener.onDecoded({picture.data(), width * times, height * times, {}});
            if (stream->subscription.coded)
                listener.onCoded({picture.data(), std::size_t{12}, number % 5 == 0, {}});
            if (stream->subscription.sound)
                listener.onSound({samples.data(), samples.size() / 2, 44100, 2});
        });
        std::this_thread::yield();
    }
}

void FakeHub::unsubscribe(int id) {
    std::shared_ptr<Stream> stream;
    {
        const std::lock_guard lock(mutex_);
        const auto found = streams_.find(id);
        if (found == streams_.end())
            return;
        stream = found->second;
        streams_.erase(found);
    }
    stream->stopped = true;
    const std::lock_guard lock(stream->calling);
}

StreamError FakeHub::snapshot(int id, const std::filesystem::path& file) {
    const std::lock_guard lock(mutex_);
    const auto found = streams_.find(id);
    if (found == streams_.end())
        return StreamError::NoPicture;
    std::ofstream out(file, std::ios::binary);
    out << (found->second->subscription.quality == media::Quality::Main ? "main" : "light");
    return out ? StreamError::None : StreamError::FileNotWritten;
}

StreamError FakeHub::preview(const media::Subscription& subscription, int pixels,
                             std::chrono::milliseconds /*timeout*/, std::vector<std::uint8_t>& jpeg) {
    script_->noteSubscription(subscription);
    if (script_->stall) {
        ++script_->stalled;
        while (!stopped_)
            std::this_thread::yield();
        return StreamError::TimedOut;
    }
    jpeg.assign(static_cast<std::size_t>(pixels), 7);
    return script_->failureOf(subscription.camera);
}

} // namespace ipncsdk::test
