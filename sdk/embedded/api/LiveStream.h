#pragma once

#include "api/Request.h"
#include "api/VideoHub.h"
#include "api/Worker.h"
#include "device/NetworkCameras.h"
#include "media/Stream.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::api {

/// What one video request shows: the stream that delivers and, while that is being changed, the one that is to
/// follow.
///
/// A subscription in the hub is a leg. At any time at most one leg is the current one, whose events become messages
/// of the request, and at most one is the next one, whose events are only remembered until its first picture (or,
/// where access units are wanted, its first key frame) is there. With that it becomes the current one, and the one
/// before is retired: nothing of it passes any more, and it is unsubscribed on the service worker.
///
/// The messages of a request are sent one at a time, whatever thread they come from: a leg's thread waits for the
/// turn while another one is inside the client's callback. It gives up as soon as the request ends or its leg is no
/// longer the current one, so whoever ends a leg may wait for its thread.
///
/// Kept alive by the listeners of its legs. Thread-safe, but `open` and `change` belong to the service worker.
class LiveStream final : public std::enable_shared_from_this<LiveStream> {
public:
    struct Parts {
        RequestTable& requests;
        device::NetworkCameras& cameras;
        VideoHub& hub;
        Worker& service; ///< unsubscribes retired legs, and runs results
    };
    /// Gets the outcome of a change once, on the service worker.
    using Result = std::function<void(media::StreamError outcome)>;

    /// `wishes` say which camera and what of it; which quality and source are shown comes with each leg.
    LiveStream(std::shared_ptr<Request> request, const Parts& parts, media::Subscription wishes);
    /// Says how many coded frames the client got: what was recorded can be held against it.
    ~LiveStream();
    LiveStream(const LiveStream&) = delete;
    LiveStream& operator=(const LiveStream&) = delete;

    [[nodiscard]] const media::Subscription& wishes() const { return wishes_; }
    /// False for those who only listen or talk: there is nothing to take a picture of, nor to be exchanged.
    [[nodiscard]] bool isWatched() const { return wishes_.decoded || wishes_.coded; }

    /// Begins the first leg; `mainStream` is what messages call "hd".
    void open(const media::Subscription& subscription, bool mainStream);
    /// Makes another stream follow the current one. A change that is still under way ends with `Replaced`.
    void change(const media::Subscription& subscription, bool mainStream, Result result);
    /// The hub's id of the current leg; 0 when there is none.
    [[nodiscard]] int hubId() const;
    /// Ends everything: no leg's message is begun any more, and a change under way ends with `outcome`. Returns what
    /// the caller has to unsubscribe.
    std::vector<int> end(media::StreamError outcome);

private:
    struct Leg {
        int number = 0; ///< from 1, never used twice; 0 in a change that gives the current leg another name
        int hubId = 0;  ///< 0 until the hub has told it
        bool mainStream = false;
        media::Quality quality = media::Quality::Light;
        media::Source source;
        std::optional<media::StreamParameters> parameters; ///< once it has opened
        Result result; ///< of the change that brought it, until the client has been told of it
    };
    /// Work for the service worker, posted once `mutex_` is free: what it holds may do anything when it is let go.
    using Tasks = std::vector<Worker::Task>;
    class Listener;
    class Turn;

    // What the listeners report; `leg` is their leg's number.
    void stage(int leg, media::OpenStage stage);
    void opened(int leg, const media::StreamParameters& parameters);
    void picture(int leg, const media::DecodedFrame& frame);
    void coded(int leg, const media::CodedFrame& frame);
    void sound(int leg, const media::SoundBlock& sound);
    void closed(int leg, media::StreamError reason);

    void subscribe(const media::Subscription& subscription, int leg);
    void close(media::StreamError reason);
    void post(Tasks tasks);

    // The functions below want mutex_ to be held.
    [[nodiscard]] bool isCurrent(int leg) const { return current_ && current_->number == leg; }
    [[nodiscard]] bool isRenaming() const { return next_ && next_->number == 0; }
    Leg* find(int leg);
    /// Makes the next leg the current one.
    void takeOver(Tasks& tasks);
    void rename();
    void dropNext(media::StreamError outcome, Tasks& tasks);
    void unsubscribeLater(int hubId, Tasks& tasks);
    static void answer(Result& result, media::StreamError outcome, Tasks& tasks);

    const std::shared_ptr<Request> request_;
    const Parts parts_;
    const media::Subscription wishes_;
    std::string text_;                 ///< of the message being sent; belongs to whoever has the turn
    std::uint64_t codedDelivered_ = 0; ///< likewise

    mutable std::mutex mutex_;
    std::condition_variable turn_; ///< the turn is free, a leg was retired, or the request ended
    // All guarded by mutex_.
    bool taken_ = false; ///< somebody has the turn
    bool ended_ = false;
    int lastLeg_ = 0;
    std::optional<Leg> current_;
    std::optional<Leg> next_;
    media::StreamError lost_ = media::StreamError::None; ///< why there is no current leg
    std::vector<int> retired_; ///< hub ids to be unsubscribed once nothing of them is under way
};

} // namespace ipncsdk::api
