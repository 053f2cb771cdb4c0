#include "api/LiveStream.h"

#include "api/VideoMessages.h"
#include "base/Log.h"
#include "media/sound/Talk.h"

#include <utility>
#include <variant>

namespace ipncsdk::api {

using media::StreamError;

/// Passes on what happens on one leg.
class LiveStream::Listener final : public media::StreamListener {
public:
    Listener(std::shared_ptr<LiveStream> live, int leg)
        : live_(std::move(live))
        , leg_(leg) {}
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    void onStage(media::OpenStage stage) override { live_->stage(leg_, stage); }
    void onOpened(const media::StreamParameters& parameters) override { live_->opened(leg_, parameters); }
    void onDecoded(const media::DecodedFrame& frame) override { live_->picture(leg_, frame); }
    void onCoded(const media::CodedFrame& frame) override { live_->coded(leg_, frame); }
    void onSound(const media::SoundBlock& sound) override { live_->sound(leg_, sound); }
    void onClosed(StreamError reason) override { live_->closed(leg_, reason); }

private:
    const std::shared_ptr<LiveStream> live_;
    const int leg_;
};

/// A leg's turn to send messages, waited for. Where the client does not know yet what it is going to see, "avopen" is
/// sent first, and the change that led to it is answered when the turn ends.
class LiveStream::Turn final {
public:
    enum class For {
        Report,  ///< something that is told of the current leg alone
        Opening, ///< "avopen" in any case
        Frame,   ///< in the middle of a stream
        Start    ///< a frame that a stream may begin with: here the next leg takes over
    };

    Turn(LiveStream& live, int leg, For purpose)
        : live_(live) {
        std::unique_lock lock(live.mutex_);
        bool isNews = purpose == For::Opening;
        if (purpose == For::Start && leg != 0 && live.next_ && live.next_->number == leg) {
            live.takeOver(tasks_);
            isNews = true;
        }
        live.turn_.wait(lock, [&] { return !live.taken_ || !live.isCurrent(leg); });
        if (!live.isCurrent(leg))
            return;
        live.taken_ = held_ = true;
        if ((purpose == For::Start || purpose == For::Opening) && live.isRenaming()) {
            live.rename();
            isNews = true;
        }
        // Whatever was retired has left the client's callback, or the turn would not be free.
        for (const int hubId : std::exchange(live.retired_, {}))
            live.unsubscribeLater(hubId, tasks_);
        if (isNews)
            announce(lock);
    }
    ~Turn() {
        if (held_) {
            answer(result_, StreamError::None, tasks_);
            const std::lock_guard lock(live_.mutex_);
            live_.taken_ = false;
            live_.turn_.notify_all();
        }
        live_.post(std::move(tasks_));
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    /// False when the leg may not send anything any more.
    explicit operator bool() const { return held_; }

private:
    void announce(std::unique_lock<std::mutex>& lock) {
        Leg& leg = *live_.current_;
        result_ = std::exchange(leg.result, nullptr);
        if (!leg.parameters)
            return;
        live_.text_ = openText(live_.request_->id(), *leg.parameters, leg.mainStream);
        lock.unlock();
        live_.request_->respond(live_.text_);
    }

    LiveStream& live_;
    bool held_ = false;
    Result result_;
    Tasks tasks_;
};

LiveStream::LiveStream(std::shared_ptr<Request> request, const Parts& parts, media::Subscription wishes)
    : request_(std::move(request))
    , parts_(parts)
    , wishes_(std::move(wishes)) {}

LiveStream::~LiveStream() {
    if (wishes_.coded)
        logLine("request " + std::to_string(request_->id()) + " of " + wishes_.camera + " ended after " +
                std::to_string(codedDelivered_) + " coded frames");
}

void LiveStream::open(const media::Subscription& subscription, bool mainStream) {
    int number = 0;
    {
        const std::lock_guard lock(mutex_);
        if (ended_)
            return;
        number = ++lastLeg_;
        current_ = Leg{number, 0, mainStream, subscription.quality, subscription.source, {}, nullptr};
    }
    subscribe(subscription, number);
}

void LiveStream::change(const media::Subscription& subscription, bool mainStream, Result result) {
    Tasks tasks;
    int number = 0;
    {
        const std::lock_guard lock(mutex_);
        if (ended_) {
            answer(result, StreamError::Stopped, tasks);
        } else if (current_ && current_->mainStream == mainStream) {
            dropNext(StreamError::Replaced, tasks);
            answer(result, StreamError::None, tasks);
        } else if (next_ && next_->mainStream == mainStream) {
            // What was begun goes on, for the later one.
            answer(next_->result, StreamError::Replaced, tasks);
            next_->result = std::move(result);
        } else {
            dropNext(StreamError::Replaced, tasks);
            const bool sameStream =
                current_ && current_->quality == subscription.quality && current_->source == subscription.source;
            number = sameStream ? 0 : ++lastLeg_;
            next_ = Leg{number, 0, mainStream, subscription.quality, subscription.source, {}, std::move(result)};
        }
    }
    post(std::move(tasks));
    if (number != 0)
        subscribe(subscription, number);
}

void LiveStream::subscribe(const media::Subscription& subscription, int leg) {
    const int hubId = parts_.hub.subscribe(subscription, std::make_shared<Listener>(shared_from_this(), leg));
    {
        const std::lock_guard lock(mutex_);
        if (Leg* const known = find(leg); known != nullptr) {
            known->hubId = hubId;
            return;
        }
    }
    // It came to its end meanwhile.
    parts_.hub.unsubscribe(hubId);
}

int LiveStream::hubId() const {
    const std::lock_guard lock(mutex_);
    return current_ ? current_->hubId : 0;
}

std::vector<int> LiveStream::end(StreamError outcome) {
    // The hub may be told later; whoever wants to talk next need not wait for that.
    if (wishes_.talk)
        wishes_.talk->end();
    Tasks tasks;
    std::vector<int> hubIds;
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
        hubIds = std::exchange(retired_, {});
        for (std::optional<Leg>* leg : {&current_, &next_}) {
            if (!*leg)
                continue;
            if ((*leg)->hubId != 0)
                hubIds.push_back((*leg)->hubId);
            answer((*leg)->result, outcome, tasks);
            leg->reset();
        }
        turn_.notify_all();
    }
    post(std::move(tasks));
    return hubIds;
}

void LiveStream::stage(int leg, media::OpenStage stage) {
    if (const Turn turn(*this, leg, Turn::For::Report); turn)
        request_->respond(stateText(request_->id(), stage));
}

void LiveStream::opened(int leg, const media::StreamParameters& parameters) {
    parts_.cameras.setReachable(wishes_.camera, true);
    {
        const std::lock_guard lock(mutex_);
        if (Leg* const known = find(leg); known != nullptr)
            known->parameters = parameters;
        if (!isCurrent(leg))
            return;
    }
    const Turn turn(*this, leg, Turn::For::Opening);
}

void LiveStream::picture(int leg, const media::DecodedFrame& frame) {
    if (!wishes_.decoded)
        return;
    // Where access units are wanted as well, these decide when a stream begins.
    if (const Turn turn(*this, leg, wishes_.coded ? Turn::For::Frame : Turn::For::Start); turn) {
        writePictureText(text_, request_->id(), frame);
        request_->respond(text_);
    }
}

void LiveStream::coded(int leg, const media::CodedFrame& frame) {
    if (!wishes_.coded)
        return;
    if (const Turn turn(*this, leg, frame.keyFrame ? Turn::For::Start : Turn::For::Frame); turn) {
        writeCodedText(text_, request_->id(), frame);
        codedDelivered_ += request_->respond(text_) ? 1U : 0U;
    }
}

void LiveStream::sound(int leg, const media::SoundBlock& sound) {
    if (!wishes_.sound)
        return;
    if (const Turn turn(*this, leg, Turn::For::Frame); turn) {
        writeSoundText(text_, request_->id(), sound);
        request_->respond(text_);
    }
}

void LiveStream::closed(int leg, StreamError reason) {
    Tasks tasks;
    bool last = false;
    {
        const std::lock_guard lock(mutex_);
        if (isCurrent(leg)) {
            lost_ = reason;
            current_.reset();
            if (isRenaming())
                dropNext(reason, tasks);
            last = !next_;
        } else if (next_ && next_->number == leg) {
            dropNext(reason, tasks);
            last = !current_;
        }
        ended_ = ended_ || last;
        reason = lost_;
    }
    post(std::move(tasks));
    // Nobody has the turn: the current leg's thread is this one, or has closed it before.
    if (last)
        close(reason);
}

void LiveStream::close(StreamError reason) {
    // A camera may take no second connection for talk and show its pictures all the same.
    const bool unreachable =
        !wishes_.talk && (reason == StreamError::AddressUnreachable || reason == StreamError::TimedOut);
    if (unreachable && !std::holds_alternative<media::LoopSource>(wishes_.source))
        parts_.cameras.setReachable(wishes_.camera, false);
    if (!request_->end())
        return;
    // The request stays in the table while its last callback runs, so that a stop waits for it.
    request_->respond(closeText(request_->id(), reason));
    parts_.requests.take(request_->id());
}

void LiveStream::post(Tasks tasks) {
    for (Worker::Task& task : tasks)
        parts_.service.post(std::move(task));
}

LiveStream::Leg* LiveStream::find(int leg) {
    if (isCurrent(leg))
        return &*current_;
    return next_ && next_->number == leg ? &*next_ : nullptr;
}

void LiveStream::takeOver(Tasks& tasks) {
    if (current_) {
        answer(current_->result, StreamError::Replaced, tasks);
        if (current_->hubId != 0)
            retired_.push_back(current_->hubId);
    }
    current_ = std::exchange(next_, std::nullopt);
    // Whoever waited for the turn on behalf of the leg before gives up.
    turn_.notify_all();
}

void LiveStream::rename() {
    current_->mainStream = next_->mainStream;
    current_->result = std::move(next_->result);
    next_.reset();
}

void LiveStream::dropNext(StreamError outcome, Tasks& tasks) {
    if (!next_)
        return;
    answer(next_->result, outcome, tasks);
    unsubscribeLater(next_->hubId, tasks);
    next_.reset();
}

void LiveStream::unsubscribeLater(int hubId, Tasks& tasks) {
    // Everything that the task needs outlives the worker.
    if (hubId != 0)
        tasks.emplace_back([&hub = parts_.hub, hubId] { hub.unsubscribe(hubId); });
}

void LiveStream::answer(Result& result, StreamError outcome, Tasks& tasks) {
    if (result)
        tasks.emplace_back([tell = std::exchange(result, nullptr), outcome] { tell(outcome); });
}

} // namespace ipncsdk::api
