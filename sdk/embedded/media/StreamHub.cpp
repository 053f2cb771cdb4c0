#include "media/StreamHub.h"

#include "media/JpegEncoder.h"
#include "media/SharedStream.h"
#include "media/WholeFile.h"
#include "media/backchannel/BackChannelReader.h"
#include "media/file/FileReader.h"
#include "media/loop/LoopReader.h"
#include "media/rtsp/RtspReader.h"

extern "C" {
#include <libavutil/log.h>
}

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace ipncsdk::media {

namespace {

/// How long a snapshot waits for a key frame where nobody takes pictures.
constexpr std::chrono::seconds snapshotPatience{3};

/// Equal keys share a stream.
struct StreamKey {
    bool talk = false; ///< the way to a network camera; then there is one of them, whatever follows below
    std::string camera;
    Quality quality = Quality::Light;
    Source source;
    friend bool operator==(const StreamKey&, const StreamKey&) = default;
};

/// Keeps a stream running without taking anything from it.
class SilentListener final : public StreamListener {
public:
    void onStage(OpenStage) override {}
    void onOpened(const StreamParameters&) override {}
    void onDecoded(const DecodedFrame&) override {}
    void onCoded(const CodedFrame&) override {}
    void onSound(const SoundBlock&) override {}
    void onClosed(StreamError) override {}
};

/// Joins streams that nobody uses any more, on a thread of its own: the last subscriber may leave from inside
/// a callback, where the stream's own thread cannot be joined.
class StreamReaper final {
public:
    StreamReaper()
        : thread_(&StreamReaper::work, this) {}
    ~StreamReaper() {
        {
            const std::lock_guard lock(mutex_);
            finishing_ = true;
            changed_.notify_all();
        }
        thread_.join();
    }
    StreamReaper(const StreamReaper&) = delete;
    StreamReaper& operator=(const StreamReaper&) = delete;

    void take(std::shared_ptr<SharedStream> stream) {
        const std::lock_guard lock(mutex_);
        streams_.push_back(std::move(stream));
        changed_.notify_all();
    }

private:
    void work() {
        std::unique_lock lock(mutex_);
        while (!finishing_ || !streams_.empty()) {
            if (streams_.empty()) {
                changed_.wait(lock);
                continue;
            }
            const std::shared_ptr<SharedStream> stream = std::move(streams_.front());
            streams_.pop_front();
            lock.unlock();
            stream->join();
            lock.lock();
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::shared_ptr<SharedStream>> streams_;
    bool finishing_ = false;
    std::thread thread_; // last, for it uses the others
};

} // namespace

class StreamHub::Impl final : public SharedStream::Owner {
public:
    explicit Impl(HubOptions options)
        : options_(std::move(options))
        , library_(options_.loopFolder, options_.log) {
        // The library's own lines would go to the program's standard error and may hold addresses with passwords.
        av_log_set_level(AV_LOG_QUIET);
    }
    ~Impl() { stop(); }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    struct Entry {
        std::shared_ptr<Subscriber> subscriber;
        std::shared_ptr<SharedStream> stream;
    };

    /// Returns the id and the stream; 0 and null once the hub has stopped.
    std::pair<Id, std::shared_ptr<SharedStream>> attach(const Subscription& subscription,
                                                        std::shared_ptr<StreamListener> listener);
    void unsubscribe(Id id);
    void stop();
    std::shared_ptr<SharedStream> streamOf(Id id);
    /// What to subscribe to for a preview: a running stream of the camera where there is one.
    Subscription previewSource(const Subscription& wanted);

private:
    struct Running {
        StreamKey key;
        std::shared_ptr<SharedStream> stream;
    };

    void ending(const SharedStream& stream) override;
    void finished(Id subscriberId) override;
    // The functions below want mutex_ to be held.
    std::unique_ptr<StreamReader> makeReader(const StreamKey& key);
    StreamKey keyOf(const Subscription& wanted) const;
    std::shared_ptr<TalkLine> lineOf(const std::string& camera);
    const Running* find(const Subscription& wanted) const;

    std::shared_ptr<Subscriber> detach(Id id);

    const HubOptions options_;
    LoopLibrary library_;
    const std::shared_ptr<BackChannels> backChannels_ = std::make_shared<BackChannels>();

    std::mutex stopMutex_; ///< held while `stop` works; taken before `mutex_`
    std::mutex mutex_;
    bool stopped_ = false;
    Id lastId_ = 0;
    std::map<Id, Entry> entries_;
    std::vector<Running> running_;                         ///< streams that may be joined by new subscribers
    std::map<std::string, std::weak_ptr<TalkLine>> lines_; ///< by camera
    std::unique_ptr<StreamReaper> reaper_ = std::make_unique<StreamReaper>();
};

std::unique_ptr<StreamReader> StreamHub::Impl::makeReader(const StreamKey& key) {
    if (const auto* loop = std::get_if<LoopSource>(&key.source)) {
        auto control = options_.loopControl ? options_.loopControl(key.camera) : nullptr;
        return std::make_unique<LoopReader>(library_, LoopKey{*loop, key.quality}, lineOf(key.camera),
                                            std::move(control));
    }
    if (const auto* file = std::get_if<FileSource>(&key.source)) {
        return std::make_unique<FileReader>(*file, key.camera,
                                            FileOptions{options_.firstPause, options_.longestPause});
    }
    const auto& source = std::get<RtspSource>(key.source);
    RtspOptions options{options_.socketDelegate, options_.firstPause, options_.longestPause, options_.networkTimeout,
                        backChannels_};
    if (key.talk) {
        return std::make_unique<BackChannelReader>(key.camera, source, std::move(options), lineOf(key.camera));
    }
    return std::make_unique<RtspReader>(key.camera, source, std::move(options));
}

/// Who talks to a network camera takes the way that is known to be one, through whichever of its addresses.
StreamKey StreamHub::Impl::keyOf(const Subscription& wanted) const {
    const bool talk = wanted.talk != nullptr && std::holds_alternative<RtspSource>(wanted.source);
    const auto way = talk ? backChannels_->wayTo(wanted.camera) : std::nullopt;
    return {talk, wanted.camera, wanted.quality, way ? Source(*way) : wanted.source};
}

std::pair<StreamHub::Id, std::shared_ptr<SharedStream>>
StreamHub::Impl::attach(const Subscription& subscription, std::shared_ptr<StreamListener> listener) {
    const std::lock_guard lock(mutex_);
    if (stopped_ || listener == nullptr) {
        return {0, nullptr};
    }
    const Id id = ++lastId_;
    auto line = subscription.talk == nullptr ? nullptr : lineOf(subscription.camera);
    auto subscriber = std::make_shared<Subscriber>(id, subscription, std::move(line), std::move(listener));
    const bool network = std::holds_alternative<RtspSource>(subscription.source);
    if (network || subscription.openTimeout) {
        subscriber->openBy = Clock::now() + subscription.openTimeout.value_or(options_.networkTimeout);
    }
    if (const Running* const known = find(subscription); known != nullptr) {
        known->stream->add(subscriber);
        entries_[id] = {std::move(subscriber), known->stream};
        return {id, known->stream};
    }
    const StreamKey key = keyOf(subscription);
    const char* quality = key.talk ? " (talk)" : key.quality == Quality::Main ? " (main)" : " (light)";
    auto stream =
        std::make_shared<SharedStream>(loggable(key.camera) + quality, makeReader(key), *this, options_.log);
    stream->add(subscriber);
    stream->start();
    entries_[id] = {std::move(subscriber), stream};
    running_.push_back({key, stream});
    return {id, stream};
}

std::shared_ptr<TalkLine> StreamHub::Impl::lineOf(const std::string& camera) {
    std::weak_ptr<TalkLine>& known = lines_[camera];
    auto line = known.lock();
    if (line == nullptr) {
        line = std::make_shared<TalkLine>();
        known = line;
        std::erase_if(lines_, [](const auto& entry) { return entry.second.expired(); });
    }
    return line;
}

/// The running stream that a subscription joins: the one that it names, or for those who want no pictures another one
/// of the same camera, so that a camera is not asked twice; null when there is none.
const StreamHub::Impl::Running* StreamHub::Impl::find(const Subscription& wanted) const {
    const StreamKey key = keyOf(wanted);
    const bool anyStream = (wanted.sound || wanted.talk != nullptr) && !wanted.decoded && !wanted.coded;
    const Running* other = nullptr;
    for (const Running& running : running_) {
        if (running.key == key || (key.talk && running.key.talk && running.key.camera == key.camera)) {
            return &running;
        }
        const bool serves =
            running.key.camera == key.camera && running.key.quality != key.quality && !running.key.talk && !key.talk;
        if (anyStream && serves && !(wanted.sound && running.stream->isSilent())) {
            other = &running;
        }
    }
    return other;
}

/// Takes a subscription out, and ends its stream when it was the last one; null when there is none.
std::shared_ptr<Subscriber> StreamHub::Impl::detach(Id id) {
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(id);
    if (found == entries_.end()) {
        return nullptr;
    }
    const Entry entry = std::move(found->second);
    entries_.erase(found);
    if (entry.stream->remove(id) == 0) {
        std::erase_if(running_, [&](const Running& running) { return running.stream == entry.stream; });
        entry.stream->requestStop();
        reaper_->take(entry.stream);
    }
    return entry.subscriber;
}

void StreamHub::Impl::unsubscribe(Id id) {
    if (const auto subscriber = detach(id)) {
        subscriber->close();
    }
}

void StreamHub::Impl::ending(const SharedStream& stream) {
    const std::lock_guard lock(mutex_);
    std::erase_if(running_, [&](const Running& running) { return running.stream.get() == &stream; });
}

void StreamHub::Impl::finished(Id subscriberId) {
    // The gate is closed too, so that the listener is let go now.
    unsubscribe(subscriberId);
}

std::shared_ptr<SharedStream> StreamHub::Impl::streamOf(Id id) {
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(id);
    return found == entries_.end() ? nullptr : found->second.stream;
}

Subscription StreamHub::Impl::previewSource(const Subscription& wanted) {
    Subscription source = wanted;
    source.decoded = false;
    source.coded = false;
    const std::lock_guard lock(mutex_);
    for (const Running& running : running_) {
        const bool same = running.key.source == wanted.source || running.key.quality != wanted.quality;
        if (running.key.camera == wanted.camera && same && !running.key.talk) {
            source.quality = running.key.quality;
            source.source = running.key.source;
            return source;
        }
    }
    source.quality = std::holds_alternative<LoopSource>(wanted.source) ? Quality::Light : wanted.quality;
    return source;
}

void StreamHub::Impl::stop() {
    const std::lock_guard stopping(stopMutex_);
    std::map<Id, Entry> entries;
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        entries.swap(entries_);
        running_.clear();
        for (const auto& [id, entry] : entries) {
            entry.stream->requestStop();
        }
    }
    std::vector<std::shared_ptr<SharedStream>> streams;
    for (const auto& [id, entry] : entries) {
        entry.subscriber->close();
        if (std::find(streams.begin(), streams.end(), entry.stream) == streams.end()) {
            streams.push_back(entry.stream);
        }
    }
    for (const auto& stream : streams) {
        stream->join();
    }
    // The streams that were left before are joined by the reaper's end.
    std::unique_ptr<StreamReaper> reaper;
    {
        const std::lock_guard lock(mutex_);
        reaper = std::move(reaper_);
    }
}

StreamHub::StreamHub(HubOptions options)
    : impl_(std::make_unique<Impl>(std::move(options))) {}

StreamHub::~StreamHub() = default;

void StreamHub::stop() {
    impl_->stop();
}

StreamHub::Id StreamHub::subscribe(const Subscription& subscription, std::shared_ptr<StreamListener> listener) {
    return impl_->attach(subscription, std::move(listener)).first;
}

void StreamHub::unsubscribe(Id id) {
    impl_->unsubscribe(id);
}

StreamError StreamHub::snapshot(Id id, const std::filesystem::path& file) {
    const auto stream = impl_->streamOf(id);
    if (stream == nullptr) {
        return StreamError::BadRequest;
    }
    Picture picture;
    if (const StreamError error = stream->copyPicture(snapshotPatience, false, picture); error != StreamError::None) {
        return error;
    }
    const std::vector<std::uint8_t> jpeg = encodeJpeg(picture);
    if (jpeg.empty()) {
        return StreamError::Internal;
    }
    return writeWholeFile(file, jpeg) ? StreamError::None : StreamError::FileNotWritten;
}

StreamError StreamHub::preview(const Subscription& subscription, int width, std::chrono::milliseconds timeout,
                               std::vector<std::uint8_t>& jpeg) {
    jpeg.clear();
    Subscription source = impl_->previewSource(subscription);
    source.openTimeout = timeout;
    const auto [id, stream] = impl_->attach(source, std::make_shared<SilentListener>());
    if (stream == nullptr) {
        return StreamError::Internal;
    }
    Picture picture;
    const StreamError error = stream->copyPicture(timeout, true, picture);
    impl_->unsubscribe(id);
    if (error != StreamError::None) {
        return error == StreamError::NoPicture ? StreamError::TimedOut : error;
    }
    jpeg = encodeJpeg(picture, width);
    return jpeg.empty() ? StreamError::Internal : StreamError::None;
}

} // namespace ipncsdk::media
